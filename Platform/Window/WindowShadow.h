// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

QT_FORWARD_DECLARE_CLASS(QPainter)
QT_FORWARD_DECLARE_CLASS(QRect)

/// The shadow of a window with round corners, in a margin around the window.
namespace Pellarvine::detail::WindowShadow {

/// On each side, where the shadow ends, in device-independent pixels. All of it takes the pointer,
/// to resize the window: no more of what lies behind should be lost.
inline constexpr int margin = 20;
inline constexpr int cornerRadius = 8;

/// Draws it into a rectangle that the margin is part of.
void draw(QPainter &painter, const QRect &rect, bool isActive);

} // namespace Pellarvine::detail::WindowShadow
