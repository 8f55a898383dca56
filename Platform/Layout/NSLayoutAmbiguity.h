// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSLayoutConstraint.h>

/// @file
/// Tells why a widget stands where it stands, for tests and for the search for a fault:
///
///     EXPECT_FALSE(NS::hasAmbiguousLayout(field));
///     for (const auto &constraint : NS::constraintsAffectingLayout(field, Qt::Horizontal))
///         qDebug() << constraint->description();
namespace NS {

/// Whether constraints and size hints leave the place or the size of the widget open, so that it
/// could as well be elsewhere: it then stands at 0, or as near to it as it can. False for a widget
/// that constraints do not place. Takes longer than a layout pass.
[[nodiscard]] PELLARVINE_EXPORT bool hasAmbiguousLayout(const QWidget *widget);

/// Moves or resizes a widget whose layout is ambiguous, by a distance that can be seen, to where its
/// constraints allow it as well. What depends on it follows. The second call, or the next layout
/// pass, moves it back. Does nothing for other widgets. A debugging aid, for a key or a timer.
PELLARVINE_EXPORT void exerciseAmbiguity(QWidget *widget);

/// The active constraints on which the place and the size of the widget in one direction depend, in
/// the order in which they became active. Those that could change without moving it, such as an
/// inequality that holds with room to spare, are not among them. Empty for a widget that
/// constraints do not place.
[[nodiscard]] PELLARVINE_EXPORT QList<std::shared_ptr<LayoutConstraint>>
constraintsAffectingLayout(const QWidget *widget, Qt::Orientation orientation);

} // namespace NS
