// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/NavigationController.h>
#include <pellarvine/Pellarvine/NavigationPlacement.h>
#include <pellarvine/Pellarvine/PushSegue.h>

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isRegistered = (NS::StoryboardSegue::registerClass<PushSegue>(), true);

} // namespace

PushSegue::~PushSegue() = default;

void PushSegue::perform()
{
    NavigationController *const navigation = findNavigationController();
    auto *const destination = qobject_cast<NS::ViewController *>(destinationController());
    if (!destination)
        return;
    destination->view(); // what it throws leaves everything as it was
    place(destination, navigation);
    navigation->setNavigationStack(navigation->navigationStack() << destination);
}

} // namespace Pellarvine
