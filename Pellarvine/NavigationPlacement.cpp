// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/NSView+AutoLayout.h>
#include <pellarvine/Pellarvine/NavigationController.h>
#include <pellarvine/Pellarvine/NavigationPlacement.h>
#include <pellarvine/Platform/Failure.h>

namespace Pellarvine {

void place(NS::ViewController *controller, NavigationController *navigation)
{
    navigation->addChildViewController(controller);
    QWidget *const contentView = navigation->contentView();
    if (!contentView)
        fatalError("The navigation controller has no content view");
    NS::addAndPin(contentView, controller->view());
}

} // namespace Pellarvine
