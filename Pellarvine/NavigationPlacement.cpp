// SPDX-License-Identifier: MIT
#include "Pellarvine/NavigationPlacement.h"

#include "Base/Failure.h"
#include "Pellarvine/NSView+AutoLayout.h"
#include "Pellarvine/NavigationController.h"

namespace Pellarvine::detail {

bool isHiddenByCall(const QWidget *view)
{
    return view->testAttribute(Qt::WA_WState_ExplicitShowHide)
           && view->testAttribute(Qt::WA_WState_Hidden);
}

QList<NS::ViewController *> screens(const NavigationController *navigation)
{
    QList<NS::ViewController *> found;
    const QWidget *const contentView = navigation->contentView();
    if (!contentView)
        return found;
    const QList<NS::ViewController *> stack = navigation->navigationStack();
    for (QObject *const child : contentView->children()) { // in the order in which they are stacked
        auto *const view = qobject_cast<QWidget *>(child);
        if (!view || view->isWindow() || isHiddenByCall(view))
            continue;
        NS::ViewController *const controller = NS::viewController(view);
        const bool isScreen =
                controller
                && (controller->parentViewController() == navigation || stack.contains(controller));
        if (isScreen)
            found.append(controller);
    }
    return found;
}

bool canBePlaced(NS::ViewController *controller, const NavigationController *navigation)
{
    const NS::ViewController *outer = navigation;
    while (outer && outer != controller)
        outer = outer->parentViewController();
    const QWidget *const contentView = navigation->contentView();
    const QWidget *const view = controller->view();
    if (!view) {
        printWarning("A navigation controller cannot show a view that has been destroyed");
        return false;
    }
    const bool isAround =
            outer || (contentView && (view == contentView || view->isAncestorOf(contentView)));
    if (isAround)
        printWarning("A navigation controller cannot show itself or a controller around it");
    return !isAround;
}

bool place(NS::ViewController *controller, NavigationController *navigation)
{
    const QPointer<NS::ViewController> placed = controller;
    const QPointer<NavigationController> container = navigation;
    navigation->addChildViewController(controller);
    if (!placed || !container)
        return false;
    QWidget *const contentView = container->contentView();
    if (!contentView)
        fatalError("The navigation controller has no content view");
    QWidget *const view = placed->view();
    if (!view)
        return false;
    if (view->parentWidget() == contentView)
        view->raise();
    NS::addAndPin(contentView, view);
    return placed && container;
}

QList<QPointer<NS::ViewController>> takeAway(const QList<QPointer<NS::ViewController>> &controllers)
{
    QList<QPointer<NS::ViewController>> children;
    for (const QPointer<NS::ViewController> &controller : controllers) {
        if (!controller)
            continue;
        if (controller->parentViewController())
            children.append(controller);
        controller->removeFromParentViewController();
        QWidget *const view =
                controller && controller->isViewLoaded() ? controller->view() : nullptr;
        if (view)
            view->setParent(nullptr);
    }
    return children;
}

void deleteUnowned(const QList<QPointer<NS::ViewController>> &controllers)
{
    for (const QPointer<NS::ViewController> &controller : controllers) {
        if (controller && !controller->parent())
            controller->deleteLater();
    }
}

} // namespace Pellarvine::detail
