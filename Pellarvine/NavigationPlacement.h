// SPDX-License-Identifier: MIT
// Not API: functions that the segues of a navigation controller share.
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

/// The navigation controller that the segue changes. Null, with a warning, if the source is in none
/// because its view is being loaded or it is being removed. A source that is in none for another
/// reason stops the process.
NavigationController *navigationControllerOf(const NavigationSegue &segue);

/// The controllers with views in the content view, the lowest first: children of the navigation
/// controller, and controllers in its stack. Without those that the program has hidden, and those
/// that are being removed.
QList<NS::ViewController *> screens(const NavigationController *navigation);

/// Whether the view was hidden by a call, and not only with its parent.
bool isHiddenByCall(const QWidget *view);

/// Whether the controller can be shown in the navigation controller. Prints a warning if not: if it
/// is or contains the navigation controller, if its view has been destroyed, or while it is being
/// removed.
bool canBePlaced(NS::ViewController *controller, const NavigationController *navigation);

/// Makes the controller a child, and pins its view in the content view, above all others. Without a
/// content view, stops the process. Callbacks may delete objects or navigate. Returns false if they
/// have deleted one of the two, or removed the controller again.
bool place(NS::ViewController *controller, NavigationController *navigation);

/// The last controllers of the stack, whose views are above that of `controller`. Callbacks may
/// have pushed them while it was placed.
QList<NS::ViewController *> pushedAbove(NS::ViewController *controller,
                                        const NavigationController *navigation);

} // namespace Pellarvine::detail
