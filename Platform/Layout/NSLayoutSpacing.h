// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <Qt>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// The distance that the style keeps between two controls, as Qt's layouts use it:
///
///     NS::topAnchor(field).constraintEqualToAnchor(
///             NS::bottomAnchor(label), NS::systemSpacing(label, field, Qt::Vertical));
namespace NS {

/// In device-independent pixels: the style's spacing of layouts, or, in a style that leaves it to
/// the kinds of controls, that between two of these. 0 if the style says neither. It is the style's
/// at the time of the call: constraints do not follow a later one. No widget may be null.
[[nodiscard]] PELLARVINE_EXPORT double systemSpacing(const QWidget *view, const QWidget *next,
                                                     Qt::Orientation axis);

} // namespace NS
