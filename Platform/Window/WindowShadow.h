// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

QT_FORWARD_DECLARE_CLASS(QPainter)
QT_FORWARD_DECLARE_CLASS(QRect)

/// The shadow of a window with round corners, in a margin around the window.
namespace Pellarvine::detail::WindowShadow {

/// The width of the shadow on each side, in device-independent pixels. It takes clicks that were
/// meant for windows behind it, so it is no wider than it has to be.
inline constexpr int margin = 20;
inline constexpr int cornerRadius = 8;

/// Draws it into a rectangle that the margin is part of.
void draw(QPainter &painter, const QRect &rect, bool isActive);

} // namespace Pellarvine::detail::WindowShadow
