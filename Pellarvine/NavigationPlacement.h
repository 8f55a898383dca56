// SPDX-License-Identifier: MIT
// Not API: what the segues of a navigation controller have in common.
#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

namespace NS {
class ViewController;
}

namespace Pellarvine {
class NavigationController;
}

namespace Pellarvine::detail {

/// The controllers whose views lie in the content view, the lowest first: children of the
/// navigation controller, and what its stack has. Views that the program has hidden do not count.
QList<NS::ViewController *> screens(const NavigationController *navigation);

/// Whether the view was hidden by a call, not only with what it lies in.
bool isHiddenByCall(const QWidget *view);

/// Whether the controller can be shown in the navigation controller: not if it is that itself or
/// around it, and not if its view has been destroyed. Prints a warning if not.
bool canBePlaced(NS::ViewController *controller, const NavigationController *navigation);

/// Makes the controller a child, and pins its view in the content view, above all others. Without a
/// content view, stops the process. The program is told of all that and may delete what it likes:
/// false if one of the two is gone.
bool place(NS::ViewController *controller, NavigationController *navigation);

/// Takes each controller from its parent, and its view from where it lies. Returns those that were
/// children.
QList<QPointer<NS::ViewController>>
takeAway(const QList<QPointer<NS::ViewController>> &controllers);

/// Deletes those that nobody has taken as a QObject child, once the event loop has come round.
void deleteUnowned(const QList<QPointer<NS::ViewController>> &controllers);

} // namespace Pellarvine::detail
