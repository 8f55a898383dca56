// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSViewController.h>

QT_FORWARD_DECLARE_CLASS(QString)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace NS {

/// Makes the controller `identifier` of the receiver's storyboard, and lets its view fill the given
/// one:
///
///     NS::ViewController *const inspector =
///             NS::instantiateViewControllerWithIdentifier(this, u"inspector"_s, sidePanel);
///     if (inspector)
///         addChildViewController(inspector);
///
/// The caller owns the controller until it adds it to a parent. Null if the receiver is from no
/// storyboard, or if the scene is not a view controller. Throws `UnknownIdentifierError` if the
/// storyboard has no such scene, and the exceptions of loading the view. `receiver` and
/// `pinInsideSubview` are not null. Main thread only.
PELLARVINE_EXPORT ViewController *
instantiateViewControllerWithIdentifier(const ViewController *receiver, const QString &identifier,
                                        QWidget *pinInsideSubview);

} // namespace NS
