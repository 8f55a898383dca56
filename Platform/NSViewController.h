// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QList>
#include <QObject>
#include <QString>
#include <QWidget>

#include <memory>

namespace NS {

/// The object behind a view: it makes the view when that is first asked for and stands in a tree of
/// controllers, in which a container shows the views of its children.
///
///     class ListViewController : public NS::ViewController
///     {
///         void loadView() override { setView(new QListWidget); }
///         void viewDidLoad() override { fill(); }
///     };
///
/// A controller owns its children and its view. A view that is given a parent widget belongs to
/// that; whichever ends first, nothing is destroyed twice. Main thread only.
class PELLARVINE_EXPORT ViewController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QWidget *view READ view WRITE setView NOTIFY viewChanged)
    Q_PROPERTY(bool viewLoaded READ isViewLoaded NOTIFY viewChanged)

public:
    explicit ViewController(QObject *parent = nullptr);
    ~ViewController() override;

    /// Empty unless set.
    QString title() const;
    void setTitle(const QString &title);

    /// Never null, unless the view was destroyed by its parent: the first call loads it.
    QWidget *view();
    /// Takes the view; the one before it is deleted if it has no parent widget.
    void setView(QWidget *view);
    bool isViewLoaded() const;

    /// The controller that this one is a child of; null at the top.
    ViewController *parentViewController() const;
    /// In the order in which they were added.
    QList<ViewController *> childViewControllers() const;

    /// Makes the controller the last child, taking it from where it was. Neither null nor this
    /// controller nor one above it. Its view is for the caller to place.
    void addChildViewController(ViewController *child);
    /// Afterwards nobody owns the controller. Does nothing at the top.
    void removeFromParentViewController();

Q_SIGNALS:
    void titleChanged(const QString &title);
    void viewChanged(QWidget *view);
    void childViewControllersChanged();

protected:
    /// Makes the view and hands it to setView(). A plain widget unless overridden.
    virtual void loadView();
    /// Called once, after loadView().
    virtual void viewDidLoad();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
