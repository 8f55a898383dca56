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
/// `goBack()` and `UnwindSegue` go back to what lies below, which is as it was left; a way for the
/// user is for the program to offer, by backAction(), by an `UnwindSegue` at a button, or by
/// `backInputEnabled`. Nothing moves. Views below the top stay, and show
/// through one that paints no background; they are disabled until they are the top again or leave.
/// The keyboard focus goes to what is pushed and stays inside when it is replaced; a screen reader
/// is told what has come.
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

    /// Bottom first. Empty until the first viewWillAppear(), push or replace. A controller that is
    /// destroyed leaves it.
    QList<NS::ViewController *> navigationStack() const;
    /// Sets the list alone: neither children nor views are touched. No controller is null.
    void setNavigationStack(const QList<NS::ViewController *> &stack);

    /// The last of the stack; null if that is empty.
    NS::ViewController *topViewController() const;
    /// How many the stack has.
    int depth() const;

    /// Whether a view lies below the uppermost in the content view. After this controller was shown
    /// again that can be true for a stack of one: what was pushed still lies there.
    bool canGoBack() const;
    /// Goes back by one, as `UnwindSegue` does from the uppermost controller to the one below it.
    /// False if there is none. An exception that the program's code lets out is printed as a
    /// warning.
    Q_INVOKABLE bool goBack();
    /// Goes back when it is triggered, and is enabled while that is possible: for a menu, or for a
    /// QToolButton's setDefaultAction(). It belongs to this controller and is made by the first
    /// call.
    QAction *backAction();
    /// Whether Alt+Left, the mouse's Back button and Esc go back while the focus, or the pointer,
    /// is inside this controller's view. Esc does so only if no widget has taken it. Default:
    /// false.
    bool isBackInputEnabled() const;
    void setBackInputEnabled(bool isEnabled);

    /// Where the views are placed; null until it is set or this controller's view first appears.
    /// To push or replace without one stops the process.
    QWidget *contentView() const;
    void setContentView(QWidget *view);

    void viewDidLoad() override;

    /// Without a content view, this controller's own view becomes it. Else the stack becomes the
    /// one controller that comes next in the chain of responders after the content view's first
    /// subview; without a subview or such a controller, it stays. That is meant to happen each
    /// time: what has been pushed leaves the stack when this controller is shown again.
    void viewWillAppear() override;

Q_SIGNALS:
    void navigationStackChanged(const QList<NS::ViewController *> &stack);
    void contentViewChanged(QWidget *view);
    void canGoBackChanged(bool canGoBack);
    void backInputEnabledChanged(bool isEnabled);
    /// The controller's view has been covered by another: the moment to stop what only a viewer
    /// needs.
    void viewCovered(NS::ViewController *controller);
    /// The view that covered the controller's has gone.
    void viewUncovered(NS::ViewController *controller);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
