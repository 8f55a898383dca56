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

/// Manages a view, which it makes when view() is first called. A controller can have child
/// controllers, and show their views in its own.
///
///     class ListViewController : public NS::ViewController
///     {
///         void loadView() override { setView(new QListWidget); }
///         void viewDidLoad() override { fill(static_cast<QListWidget *>(view())); }
///     };
///
/// A controller owns its children and its view. If the view has a parent widget, that owns it too;
/// nothing is deleted twice. The controller outlives a view that is deleted, unless it is a QObject
/// child of the view, which it then does not own. Main thread only.
class PELLARVINE_EXPORT ViewController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QWidget *view READ view WRITE setView NOTIFY viewChanged)
    Q_PROPERTY(bool viewLoaded READ isViewLoaded NOTIFY viewChanged)
    Q_PROPERTY(QString nibName READ nibName CONSTANT)

public:
    explicit ViewController(QObject *parent = nullptr);
    /// With a view from the interface file of that name or path, as `NS::Nib` finds it. This
    /// controller is the file's owner.
    explicit ViewController(const QString &nibName, QObject *parent = nullptr);
    ~ViewController() override;

    QString title() const; ///< default: the window title of the interface file, or empty
    void setTitle(const QString &title);
    QString nibName() const; ///< empty if the view is from no interface file

    // The view

    /// Returns the view and loads it in the first call. Null only if the parent widget of the view
    /// has deleted it. Throws the exceptions of loadView() and of the storyboard; the next call
    /// tries again.
    QWidget *view();
    /// Sets the view. The previous one is deleted if it has no parent widget.
    void setView(QWidget *view);
    /// True from just before viewDidLoad() on, and after setView() was called from outside
    /// loadView(). Remains true when the view is deleted.
    bool isViewLoaded() const;
    /// Called once, after loadView().
    virtual void viewDidLoad();

    // The following are called when the view is shown and hidden: by itself, with a parent, or by
    // being added or removed. They are called in this order and in pairs, for containers before
    // their children. Minimising a window calls none, nor does deleting a visible view. An
    // exception in one of them is printed as a warning. They may hide, remove and delete
    // controllers; the views of those are deleted later then.

    /// The view is about to be shown.
    virtual void viewWillAppear();
    /// The view is shown. Called by the event loop, and at the latest before the view disappears.
    virtual void viewDidAppear();
    /// The view is about to be hidden or removed; it still has its place.
    virtual void viewWillDisappear();
    /// The view and its children are hidden.
    virtual void viewDidDisappear();

    // The tree of controllers

    ViewController *parentViewController() const; ///< null at the top
    QList<ViewController *> childViewControllers() const; ///< in the order of addition
    /// Appends a child controller, and removes it from its previous parent. `child` is not null,
    /// not this controller and not above it. The caller places its view.
    void addChildViewController(ViewController *child);
    /// Removes this controller from its parent. It then has no owner. Does nothing at the top.
    void removeFromParentViewController();

    // The storyboard

    std::shared_ptr<Storyboard> storyboard() const; ///< that made this controller, or null
    QString sceneIdentifier() const; ///< of the scene that it was made from, or empty
    /// Performs the segue of that name from this controller. Throws `UnknownIdentifierError` if
    /// there is none, and the exceptions of loading the destination; nothing has changed then.
    void performSegue(const QString &identifier, QObject *sender = nullptr);
    /// Called before a segue that `sender` triggers. If it returns false, nothing happens. Not
    /// called by performSegue(). Default: true.
    virtual bool shouldPerformSegue(const QString &identifier, QObject *sender);
    /// Called before a segue is performed. The destination exists, and its view is not loaded: pass
    /// it the model here.
    virtual void prepareForSegue(StoryboardSegue *segue, QObject *sender);
    /// Called before a segue that goes back removes this controller. Return false to stay, for
    /// example with unsaved changes. Default: true.
    virtual bool canUnwind(StoryboardSegue *segue);
    /// Called before a segue goes back to this controller. Nothing is removed yet: take results
    /// from its source here.
    virtual void prepareForUnwind(StoryboardSegue *segue);

Q_SIGNALS:
    void titleChanged(const QString &title);
    void viewChanged(QWidget *view);
    void childViewControllersChanged(); ///< a child was added, removed or destroyed

protected:
    /// Makes the view and passes it to setView(). Loads the interface file if there is one, else
    /// makes a plain widget.
    virtual void loadView();

private:
    friend class Storyboard;
    friend class ViewWatch;
    struct Private;
    std::unique_ptr<Private> d;
};

/// The controller that owns `view`, or null. `view` may be null.
PELLARVINE_EXPORT ViewController *viewController(const QWidget *view);

} // namespace NS
