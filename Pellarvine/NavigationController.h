// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSViewController.h>

#include <QList>
#include <QMetaType>
#include <QWidget>

#include <memory>

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
/// There is no way back but a replace, and nothing moves. Views below the top stay, and show
/// through one that paints no background; they are disabled until they are the top again or leave.
/// The keyboard focus goes to what is pushed and stays inside when it is replaced; a screen reader
/// is told what has come.
class PELLARVINE_EXPORT NavigationController : public NS::ViewController
{
    Q_OBJECT
    Q_PROPERTY(QList<NS::ViewController *> navigationStack READ navigationStack WRITE
                       setNavigationStack NOTIFY navigationStackChanged)
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

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
