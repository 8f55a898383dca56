// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSLayoutConstraint.h>

/// @file
/// Tells why a widget is where it is, for tests and for debugging. Main thread only.
///
///     EXPECT_FALSE(NS::hasAmbiguousLayout(field));
///     for (const auto &constraint : NS::constraintsAffectingLayout(field, Qt::Horizontal))
///         qDebug() << constraint->description();
namespace NS {

/// Whether constraints and size hints do not determine the place or the size of the widget. The
/// layout then chooses the values nearest to 0. False for a widget that constraints do not place.
/// Takes longer than a layout pass.
[[nodiscard]] PELLARVINE_EXPORT bool hasAmbiguousLayout(const QWidget *widget);

/// Moves or resizes a widget whose layout is ambiguous to another frame that satisfies the
/// constraints as well. Widgets and guides that depend on it follow. The second call, or the next
/// layout pass, moves it back. Does nothing for other widgets. For debugging, from a key or a
/// timer.
PELLARVINE_EXPORT void exerciseAmbiguity(QWidget *widget);

/// The active constraints that determine the place and the size of the widget in one direction, in
/// the order of activation. A constraint that could change without moving the widget, such as an
/// inequality that holds with a margin, is not among them. Empty for a widget that constraints do
/// not place.
[[nodiscard]] PELLARVINE_EXPORT QList<std::shared_ptr<LayoutConstraint>>
constraintsAffectingLayout(const QWidget *widget, Qt::Orientation orientation);

} // namespace NS
