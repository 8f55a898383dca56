// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSViewController.h>

QT_FORWARD_DECLARE_CLASS(QString)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace NS {

/// Makes the controller `identifier` of the receiver's storyboard, and has its view fill the given
/// one:
///
///     NS::ViewController *const inspector =
///             NS::instantiateViewControllerWithIdentifier(this, u"inspector"_s, sidePanel);
///     if (inspector)
///         addChildViewController(inspector);
///
/// It is nobody's child yet: that is for the caller to decide, who owns it until then. Null if the
/// receiver is from no storyboard, and if the scene is no view controller. Throws
/// `UnknownIdentifierError` for a scene that the storyboard does not have, and what loading the
/// view throws. `receiver` and `pinInsideSubview` may not be null. Main thread only.
PELLARVINE_EXPORT ViewController *
instantiateViewControllerWithIdentifier(const ViewController *receiver, const QString &identifier,
                                        QWidget *pinInsideSubview);

} // namespace NS
