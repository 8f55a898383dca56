// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <Qt>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// The spacing of the style between two controls, as Qt's layouts use it:
///
///     NS::topAnchor(field).constraintEqualToAnchor(
///             NS::bottomAnchor(label), NS::systemSpacing(label, field, Qt::Vertical));
namespace NS {

/// In device-independent pixels: the layout spacing of the style, or, if that depends on the kinds
/// of controls, the spacing between these two. 0 if the style has neither. A constraint made with
/// it does not follow a later change of the style. No widget may be null. Main thread only.
[[nodiscard]] PELLARVINE_EXPORT double systemSpacing(const QWidget *view, const QWidget *next,
                                                     Qt::Orientation axis);

} // namespace NS
