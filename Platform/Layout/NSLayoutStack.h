// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSLayoutConstraint.h>

#include <optional>

/// @file
/// A row or a column of widgets, by constraints:
///
///     QList constraints = NS::stack({ cancel, save }, Qt::Horizontal, {},
///                                   NS::LayoutAttribute::firstBaseline);
///     constraints += { NS::trailingAnchor(save).constraintEqualToAnchor(
///                              NS::trailingAnchor(panel), -16),
///                      NS::bottomAnchor(save).constraintEqualToAnchor(
///                              NS::bottomAnchor(panel), -16) };
///     NS::LayoutConstraint::activateConstraints(constraints);
namespace NS {

/// Returns constraints, not yet active, that place each view behind the one before it: from the
/// leading to the trailing side, or downwards. `spacing`, in device-independent pixels, lies
/// between two views; without a value it is `systemSpacing`. Across the axis, `alignment` aligns an
/// edge, a centre or a baseline of all views. `notAnAttribute` aligns both edges, so that all are
/// equally wide or high. Warns of an alignment along the axis, and returns no constraints then.
///
/// Constraints on the first and the last view decide where the stack is and how long. The views
/// need a common ancestor, but not the same parent. A hidden view keeps its place. To close the
/// gap, to add a view or to change the order, deactivate the constraints and stack the views again.
/// No view may be null. Main thread only.
[[nodiscard]] PELLARVINE_EXPORT QList<std::shared_ptr<LayoutConstraint>>
stack(const QList<QWidget *> &views, Qt::Orientation axis, std::optional<double> spacing = {},
      LayoutAttribute alignment = LayoutAttribute::notAnAttribute);

} // namespace NS
