// SPDX-License-Identifier: MIT
#include "Pellarvine/ReplaceSegue.h"

#include "Pellarvine/NavigationController.h"
#include "Pellarvine/NavigationDeparture.h"
#include "Pellarvine/NavigationPlacement.h"

#include <QPointer>

#include <algorithm>

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isReplaceSegueRegistered =
        (NS::StoryboardSegue::registerClass<ReplaceSegue>(), true);

} // namespace

ReplaceSegue::~ReplaceSegue() = default;

void ReplaceSegue::perform()
{
    const QPointer<NavigationController> navigation = detail::navigationControllerOf(*this);
    const QPointer<NS::ViewController> destination =
            qobject_cast<NS::ViewController *>(destinationController());
    if (!navigation || !destination)
        return;
    destination->view(); // may throw; nothing has changed yet
    if (!detail::canBePlaced(destination, navigation))
        return;
    detail::Departure departure(navigation);
    // Controllers that callbacks push meanwhile are removed as well.
    while (navigation) {
        const QList<NS::ViewController *> stack = navigation->navigationStack();
        const auto next = std::find_if(stack.begin(), stack.end(), [&](const auto *controller) {
            return !departure.hasTaken(controller);
        });
        if (next == stack.end())
            break;
        departure.takeAway(*next);
    }
    if (navigation && destination && detail::place(destination, navigation))
        navigation->setNavigationStack(QList { destination.data() }
                                       + detail::pushedAbove(destination, navigation));
}

} // namespace Pellarvine
