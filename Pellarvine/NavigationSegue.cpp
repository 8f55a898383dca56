// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/NavigationController.h>
#include <pellarvine/Pellarvine/NavigationSegue.h>
#include <pellarvine/Platform/Failure.h>

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isRegistered =
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
    fatalError("Could not find navigation controller");
}

} // namespace Pellarvine
