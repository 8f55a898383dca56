// SPDX-License-Identifier: MIT
// Not API: what a push and a replace have in common.
#pragma once

namespace NS {
class ViewController;
}

namespace Pellarvine {
class NavigationController;
}

namespace Pellarvine::detail {

/// Makes the controller a child, and pins its view in the content view, above all others. Without a
/// content view, stops the process.
void place(NS::ViewController *controller, NavigationController *navigation);

} // namespace Pellarvine::detail
