// SPDX-License-Identifier: MIT
// Not API: what the segues of a navigation controller have in common.
#pragma once

#include <QList>
#include <QWidget>

namespace NS {
class ViewController;
}

namespace Pellarvine {
class NavigationController;
class NavigationSegue;
} // namespace Pellarvine

namespace Pellarvine::detail {

/// The navigation controller that the segue is to change. Null, with a warning, if its source lies
/// in none at this moment, because its view is being loaded or it is being taken away; a source
/// that lies in none for another reason stops the process.
NavigationController *navigationControllerOf(const NavigationSegue &segue);

/// The controllers whose views lie in the content view, the lowest first: children of the
/// navigation controller, and what its stack has. Views that the program has hidden do not count,
/// and neither does what is being taken away.
QList<NS::ViewController *> screens(const NavigationController *navigation);

/// Whether the view was hidden by a call, not only with what it lies in.
bool isHiddenByCall(const QWidget *view);

/// Whether the controller can be shown in the navigation controller: not if it is that itself or
/// around it, not if its view has been destroyed, and not while it is being taken away. Prints a
/// warning if not.
bool canBePlaced(NS::ViewController *controller, const NavigationController *navigation);

/// Makes the controller a child, and pins its view in the content view, above all others. Without a
/// content view, stops the process. The program is told of all that and may delete what it likes,
/// or navigate: false if one of the two is gone, or if the controller has been taken away again.
bool place(NS::ViewController *controller, NavigationController *navigation);

/// The last controllers of the stack, those whose views lie above that of this one. The program may
/// have pushed them while this one was placed.
QList<NS::ViewController *> pushedAbove(NS::ViewController *controller,
                                        const NavigationController *navigation);

} // namespace Pellarvine::detail
