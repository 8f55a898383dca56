// SPDX-License-Identifier: MIT
#include "Pellarvine/PushSegue.h"

#include "Pellarvine/NavigationController.h"
#include "Pellarvine/NavigationPlacement.h"

#include <QPointer>

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isRegistered = (NS::StoryboardSegue::registerClass<PushSegue>(), true);

} // namespace

PushSegue::~PushSegue() = default;

void PushSegue::perform()
{
    const QPointer<NavigationController> navigation = findNavigationController();
    const QPointer<NS::ViewController> destination =
            qobject_cast<NS::ViewController *>(destinationController());
    if (!destination)
        return;
    destination->view(); // what it throws leaves everything as it was
    if (detail::canBePlaced(destination, navigation) && detail::place(destination, navigation))
        navigation->setNavigationStack(navigation->navigationStack() << destination);
}

} // namespace Pellarvine
