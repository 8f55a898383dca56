// SPDX-License-Identifier: MIT
#include "Pellarvine/NavigationPlacement.h"

#include "Base/Failure.h"
#include "Pellarvine/NSView+AutoLayout.h"
#include "Pellarvine/NavigationController.h"
#include "Pellarvine/NavigationDeparture.h"
#include "Pellarvine/NavigationSegue.h"
#include "Scenes/NSViewControllerPrivate.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

NavigationController *navigationControllerOf(const NavigationSegue &segue)
{
    const auto *const source = qobject_cast<NS::ViewController *>(segue.sourceController());
    QString reason;
    for (const NS::ViewController *outer = source; outer; outer = outer->parentViewController()) {
        if (qobject_cast<const NavigationController *>(outer))
            return segue.findNavigationController();
        if (isLoadingView(outer))
            reason = u"is not in a navigation controller before its view is loaded"_s;
        else if (Departure::isLeaving(outer))
            reason = u"is leaving its navigation controller"_s;
    }
    if (reason.isEmpty())
        return segue.findNavigationController(); // stops the process
    printWarning(u"The segue \"%1\" of %2 does nothing: its source %3"_s
                         .arg(segue.identifier(),
                              QString::fromUtf8(source->metaObject()->className()), reason)
                         .toStdString());
    return nullptr;
}

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
    for (QObject *const child : contentView->children()) { // the lowest first
        auto *const view = qobject_cast<QWidget *>(child);
        if (!view || view->isWindow() || isHiddenByCall(view))
            continue;
        NS::ViewController *const controller = NS::viewController(view);
        const bool isScreen =
                controller
                && (controller->parentViewController() == navigation
                    || (stack.contains(controller) && !Departure::isLeaving(controller)));
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
    if (Departure::isLeaving(controller)) {
        printWarning("A navigation controller cannot show a controller that is leaving it");
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
    if (!placed || !container || placed->parentViewController() != container)
        return false;
    const QPointer<QWidget> contentView = container->contentView();
    if (!contentView)
        fatalError("The navigation controller has no content view");
    const QPointer<QWidget> view = placed->view();
    if (!view)
        return false;
    if (view->parentWidget() == contentView)
        view->raise();
    NS::addAndPin(contentView, view);
    return placed && container && placed->parentViewController() == container && view && contentView
           && view->parentWidget() == contentView;
}

QList<NS::ViewController *> pushedAbove(NS::ViewController *controller,
                                        const NavigationController *navigation)
{
    const QList<NS::ViewController *> all = screens(navigation);
    const QList<NS::ViewController *> stack = navigation->navigationStack();
    const qsizetype place = all.indexOf(controller);
    qsizetype first = stack.size();
    while (place >= 0 && first > 0 && all.indexOf(stack[first - 1]) > place)
        --first;
    return stack.sliced(first);
}

} // namespace Pellarvine::detail
