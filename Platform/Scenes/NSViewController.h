// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QList>
#include <QObject>
#include <QString>
#include <QWidget>

#include <memory>

namespace NS {

class Storyboard;
class StoryboardSegue;

/// The object behind a view: it makes the view when that is first asked for and stands in a tree of
/// controllers, in which a container shows the views of its children.
///
///     class ListViewController : public NS::ViewController
///     {
///         void loadView() override { setView(new QListWidget); }
///         void viewDidLoad() override { fill(static_cast<QListWidget *>(view())); }
///     };
///
/// A controller owns its children and its view. A view that is given a parent widget belongs to
/// that too; whichever ends first, nothing is destroyed twice. A controller whose view is gone
/// stays for whoever owns it. Main thread only.
class PELLARVINE_EXPORT ViewController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QWidget *view READ view WRITE setView NOTIFY viewChanged)
    Q_PROPERTY(bool viewLoaded READ isViewLoaded NOTIFY viewChanged)
    Q_PROPERTY(QString nibName READ nibName CONSTANT)

public:
    explicit ViewController(QObject *parent = nullptr);
    /// With a view from the interface file of that name, or at that path, which NS::Nib finds. This
    /// controller is the file's owner.
    explicit ViewController(const QString &nibName, QObject *parent = nullptr);
    ~ViewController() override;

    /// Default: empty.
    QString title() const;
    void setTitle(const QString &title);
    /// Empty if the view is from no interface file.
    QString nibName() const;

    // The view

    /// Never null, unless the view was destroyed by its parent: the first call loads it. Throws
    /// what loadView() and the storyboard do, and the next call then tries again.
    QWidget *view();
    /// Takes the view; the one before it is deleted if it has no parent widget.
    void setView(QWidget *view);
    /// True from just before viewDidLoad() on, or once setView() was called with a view from
    /// outside of loadView(). Stays true when the view is gone.
    bool isViewLoaded() const;
    /// Called once, after loadView().
    virtual void viewDidLoad();

    // Called when the view is shown and hidden: by itself, with a parent, by being added or
    // removed. They come in this order and in pairs, for containers before their children.
    // Minimising a window hides nothing. For a view that is destroyed while it is visible, none is
    // called. An exception that a callback lets out is printed as a warning.

    /// It is about to be seen.
    virtual void viewWillAppear();
    /// It has been shown, and the event loop has come round; at the latest before it disappears.
    virtual void viewDidAppear();
    /// It is being hidden or taken away, and still where it was.
    virtual void viewWillDisappear();
    /// It and all in it are hidden.
    virtual void viewDidDisappear();

    // The tree of controllers

    /// The controller that this one is a child of; null at the top.
    ViewController *parentViewController() const;
    /// In the order in which they were added.
    QList<ViewController *> childViewControllers() const;
    /// Makes the controller the last child, taking it from where it was. Neither null nor this
    /// controller nor one above it. Its view is for the caller to place.
    void addChildViewController(ViewController *child);
    /// Afterwards nobody owns the controller. Does nothing at the top.
    void removeFromParentViewController();

    // The storyboard

    /// The one that this controller comes from; null if it comes from none.
    std::shared_ptr<Storyboard> storyboard() const;
    /// Of the scene in the storyboard that this controller was made from; empty if it was not.
    QString sceneIdentifier() const;
    /// Walks the segue of that name that begins at this controller. Throws
    /// `UnknownIdentifierError` if there is none, and what loading the destination throws; nothing
    /// has changed then.
    void performSegue(const QString &identifier, QObject *sender = nullptr);
    /// Whether a segue that `sender` triggers may be walked: true unless overridden. Not asked by
    /// performSegue().
    virtual bool shouldPerformSegue(const QString &identifier, QObject *sender);
    /// The destination is made, its view not loaded: the moment to hand over what it shows.
    virtual void prepareForSegue(StoryboardSegue *segue, QObject *sender);
    /// Whether this controller may be taken away by a segue that goes back to one below it: true
    /// unless overridden, for example because something is not saved.
    virtual bool canUnwind(StoryboardSegue *segue);
    /// The segue goes back to this controller, and nothing has been taken away yet: the moment to
    /// ask its source for results.
    virtual void prepareForUnwind(StoryboardSegue *segue);

Q_SIGNALS:
    void titleChanged(const QString &title);
    void viewChanged(QWidget *view);
    void childViewControllersChanged(); ///< a child was added, removed or destroyed

protected:
    /// Makes the view and hands it to setView(): from the interface file if there is one, else a
    /// plain widget, unless overridden.
    virtual void loadView();

private:
    friend class Storyboard;
    friend class ViewWatch;
    struct Private;
    std::unique_ptr<Private> d;
};

/// The controller whose view that is; null if it is nobody's. `view` may be null.
PELLARVINE_EXPORT ViewController *viewController(const QWidget *view);

} // namespace NS
