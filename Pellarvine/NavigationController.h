// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSViewController.h>

#include <QList>
#include <QMetaType>
#include <QWidget>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QAction)

namespace Pellarvine {

/// Shows a stack of view controllers in one content view, each on top of the ones before it.
/// `PushSegue` and `ReplaceSegue` change the stack, most often from a storyboard:
///
///     <scene identifier="mail" class="Pellarvine::NavigationController" interface="Mail.ui">
///       <outlet property="contentView" object="content"/>
///     </scene>
///     <embed source="mail" destination="list" container="content"/>
///     <segue class="Pellarvine::PushSegue" source="list" destination="letter"
///            object="letters" signal="activated"/>
///
/// `goBack()` and `UnwindSegue` go back to the view below, which has kept its state. The program
/// offers the user a way back by backAction(), by an `UnwindSegue` at a button, or by
/// `backInputEnabled`. There is no animation. Views below the uppermost stay in place: they show
/// through a view without a background, and are disabled. The keyboard focus moves to the pushed
/// view. Screen readers announce it. Main thread only.
class PELLARVINE_EXPORT NavigationController : public NS::ViewController
{
    Q_OBJECT
    Q_PROPERTY(QList<NS::ViewController *> navigationStack READ navigationStack WRITE
                       setNavigationStack NOTIFY navigationStackChanged)
    Q_PROPERTY(NS::ViewController *topViewController READ topViewController NOTIFY
                       navigationStackChanged)
    Q_PROPERTY(int depth READ depth NOTIFY navigationStackChanged)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY canGoBackChanged)
    Q_PROPERTY(bool backInputEnabled READ isBackInputEnabled WRITE setBackInputEnabled NOTIFY
                       backInputEnabledChanged)
    Q_PROPERTY(QWidget *contentView READ contentView WRITE setContentView NOTIFY contentViewChanged)

public:
    /// With an empty stack and no content view.
    explicit NavigationController(QObject *parent = nullptr);
    /// With a view from the interface file of that name, which may connect the content view.
    explicit NavigationController(const QString &nibName, QObject *parent = nullptr);
    ~NavigationController() override;

    /// The stack, bottom first. Empty until the first viewWillAppear(), push or replace. A
    /// destroyed controller is removed.
    QList<NS::ViewController *> navigationStack() const;
    /// Sets the list only: children and views do not change. No controller is null.
    void setNavigationStack(const QList<NS::ViewController *> &stack);

    /// The last controller of the stack, or null.
    NS::ViewController *topViewController() const;
    /// The number of controllers in the stack.
    int depth() const;

    /// Whether the content view has a view below the uppermost. This can be true for a stack of one
    /// after this controller was hidden and shown again, because the pushed views remain.
    bool canGoBack() const;
    /// Goes back by one, as an `UnwindSegue` from the uppermost controller to the one below.
    /// Returns false if there is none, or if canUnwind() of the uppermost refuses. An exception of
    /// the program's code is printed as a warning.
    Q_INVOKABLE bool goBack();
    /// An action that goes back, enabled while that is possible: for a menu or
    /// QToolButton::setDefaultAction(). Made by the first call and owned by this controller.
    QAction *backAction();
    /// Whether Alt+Left, the mouse's Back button and Esc go back while the focus, or the pointer,
    /// is inside this controller's view. Esc does so only if no widget has taken it. Default:
    /// false.
    bool isBackInputEnabled() const;
    void setBackInputEnabled(bool isEnabled);

    /// The view that contains the controllers' views. Null until it is set or this controller's
    /// view first appears. A push or replace without it stops the process.
    QWidget *contentView() const;
    void setContentView(QWidget *view);

    void viewDidLoad() override;

    /// Without a content view, uses this controller's own view. Otherwise the stack becomes the one
    /// controller that follows the content view's first subview in the responder chain; it is
    /// unchanged if there is no such controller. This is intended and happens each time: pushed
    /// controllers leave the stack when this controller is shown again.
    void viewWillAppear() override;

Q_SIGNALS:
    void navigationStackChanged(const QList<NS::ViewController *> &stack);
    void contentViewChanged(QWidget *view);
    void canGoBackChanged(bool canGoBack);
    void backInputEnabledChanged(bool isEnabled);
    /// The controller's view is covered by another. Stop work that is of use only while it is seen.
    void viewCovered(NS::ViewController *controller);
    /// The view above the controller's was removed.
    void viewUncovered(NS::ViewController *controller);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
