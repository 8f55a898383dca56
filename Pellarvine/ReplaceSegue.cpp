// SPDX-License-Identifier: MIT
#include "Pellarvine/ReplaceSegue.h"

#include "Pellarvine/NavigationController.h"
#include "Pellarvine/NavigationPlacement.h"

#include <QPointer>

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isRegistered =
        (NS::StoryboardSegue::registerClass<ReplaceSegue>(), true);

} // namespace

ReplaceSegue::~ReplaceSegue() = default;

void ReplaceSegue::perform()
{
    NavigationController *const navigation = findNavigationController();
    auto *const destination = qobject_cast<NS::ViewController *>(destinationController());
    if (!destination)
        return;
    destination->view(); // what it throws leaves everything as it was
    QList<QPointer<NS::ViewController>> removed;
    const QList<NS::ViewController *> stack = navigation->navigationStack();
    for (NS::ViewController *const controller : stack) {
        if (controller->parentViewController())
            removed.append(controller);
        controller->removeFromParentViewController();
        QWidget *const view = controller->isViewLoaded() ? controller->view() : nullptr;
        if (view)
            view->setParent(nullptr);
    }
    detail::place(destination, navigation);
    navigation->setNavigationStack({ destination });
    for (const QPointer<NS::ViewController> &controller : std::as_const(removed)) {
        if (controller && !controller->parent() && controller != navigation)
            controller->deleteLater();
    }
}

} // namespace Pellarvine
