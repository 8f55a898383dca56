// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// Paints the layout over a widget, to find out why a widget is where it is:
///
///     NS::setShowsLayout(panel, true);
///
/// The environment variable `PELLARVINE_LAYOUT_DEBUG=1` does so in each window with constraints,
/// without a change to the program.
namespace NS {

/// Paints over the widget and its descendants: a frame around the aligned part of each widget with
/// constraints, a dashed frame for each guide, and a line on each baseline with constraints. An
/// arrow with a text leads from the actual to the required place for each constraint that does not
/// hold, and for each widget that gets less room than it asks for. The picture follows all changes
/// and takes neither clicks nor the keyboard focus. No widget may be null. Main thread only.
PELLARVINE_EXPORT void setShowsLayout(QWidget *widget, bool shows);
/// Default: false.
[[nodiscard]] PELLARVINE_EXPORT bool showsLayout(const QWidget *widget);

} // namespace NS
