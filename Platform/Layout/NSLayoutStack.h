// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSLayoutConstraint.h>

#include <optional>

/// @file
/// Widgets in a row or a column, by constraints:
///
///     QList constraints = NS::stack({ cancel, save }, Qt::Horizontal, {},
///                                   NS::LayoutAttribute::firstBaseline);
///     constraints += { NS::trailingAnchor(save).constraintEqualToAnchor(
///                              NS::trailingAnchor(panel), -16),
///                      NS::bottomAnchor(save).constraintEqualToAnchor(
///                              NS::bottomAnchor(panel), -16) };
///     NS::LayoutConstraint::activateConstraints(constraints);
namespace NS {

/// Constraints by which each view follows the one before it, not yet active: from the leading side
/// to the trailing one, or downwards. `spacing`, in device-independent pixels, lies between two;
/// without a value it is `systemSpacing`. Across the axis the views have `alignment` in common, an
/// edge, a centre or a baseline; with `notAnAttribute` both edges, which makes them equally wide or
/// high. Warns of an alignment along the axis and makes no constraints then.
///
/// The stack is about the views alone: where it lies, and how long it is, further constraints on
/// the first and the last view say. The views need a common ancestor, but not the same parent. A
/// hidden view keeps its place. To close the gap, deactivate the constraints and stack the views
/// that are left; likewise for another view, or another order. No view may be null.
[[nodiscard]] PELLARVINE_EXPORT QList<std::shared_ptr<LayoutConstraint>>
stack(const QList<QWidget *> &views, Qt::Orientation axis, std::optional<double> spacing = {},
      LayoutAttribute alignment = LayoutAttribute::notAnAttribute);

} // namespace NS
