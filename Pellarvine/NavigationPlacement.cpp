// SPDX-License-Identifier: MIT
#include "Pellarvine/NavigationPlacement.h"

#include "Base/Failure.h"
#include "Pellarvine/NSView+AutoLayout.h"
#include "Pellarvine/NavigationController.h"

namespace Pellarvine::detail {

void place(NS::ViewController *controller, NavigationController *navigation)
{
    navigation->addChildViewController(controller);
    QWidget *const contentView = navigation->contentView();
    if (!contentView)
        fatalError("The navigation controller has no content view");
    NS::addAndPin(contentView, controller->view());
}

} // namespace Pellarvine::detail
