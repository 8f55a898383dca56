// SPDX-License-Identifier: MIT
#include "Pellarvine/NavigationSegue.h"

#include "Base/Failure.h"
#include "Pellarvine/NavigationController.h"

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isNavigationSegueRegistered =
        (NS::StoryboardSegue::registerClass<NavigationSegue>(), true);

} // namespace

NavigationSegue::~NavigationSegue() = default;

NavigationController *NavigationSegue::findNavigationController() const
{
    auto *controller = qobject_cast<NS::ViewController *>(sourceController());
    while (controller) {
        if (auto *const navigation = qobject_cast<NavigationController *>(controller))
            return navigation;
        controller = controller->parentViewController();
    }
    detail::fatalError("Could not find navigation controller");
}

} // namespace Pellarvine
