// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// Shows what constraints do, to find out why a widget stands where it stands. In a running program
/// the environment variable `PELLARVINE_LAYOUT_DEBUG=1` shows it in each window with constraints.
namespace NS {

/// Paints over the widget, and all in it, what their constraints make of them: a frame around the
/// aligned part of each widget, a dashed one for each guide, a line on the baselines that
/// constraints are about, and an arrow with a text for each wish that is not fulfilled, from where
/// something is to where it is wanted.
/// The picture follows all changes and takes neither clicks nor the keyboard's focus.
PELLARVINE_EXPORT void setShowsLayout(QWidget *widget, bool shows);
/// Default: false.
[[nodiscard]] PELLARVINE_EXPORT bool showsLayout(const QWidget *widget);

} // namespace NS
