// SPDX-License-Identifier: MIT
#include "Pellarvine/PushSegue.h"

#include "Pellarvine/NavigationController.h"
#include "Pellarvine/NavigationPlacement.h"

#include <QPointer>

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isPushSegueRegistered =
        (NS::StoryboardSegue::registerClass<PushSegue>(), true);

} // namespace

PushSegue::~PushSegue() = default;

void PushSegue::perform()
{
    const QPointer<NavigationController> navigation = detail::navigationControllerOf(*this);
    const QPointer<NS::ViewController> destination =
            qobject_cast<NS::ViewController *>(destinationController());
    if (!navigation || !destination)
        return;
    destination->view(); // may throw; nothing has changed yet
    if (!detail::canBePlaced(destination, navigation) || !detail::place(destination, navigation))
        return;
    QList<NS::ViewController *> stack = navigation->navigationStack();
    stack.insert(stack.size() - detail::pushedAbove(destination, navigation).size(), destination);
    navigation->setNavigationStack(stack);
}

} // namespace Pellarvine
