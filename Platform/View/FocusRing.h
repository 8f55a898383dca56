// SPDX-License-Identifier: MIT
// Not API: how widgets that draw themselves show the keyboard's focus, or that they take a drop.
#pragma once

#include <QColor>
#include <QRectF>

QT_FORWARD_DECLARE_CLASS(QPainter)

namespace Pellarvine::detail {

/// The line of a focus ring, in device-independent pixels.
struct FocusRing
{
    double width = 2;
    double radius = 4; ///< of the corners, at the middle of the line
};

/// Draws a ring whose line lies inside the edge of `rect`. A radius of half the rectangle's side or
/// more makes it a circle. Leaves the painter as it was.
void drawFocusRing(QPainter &painter, const QRectF &rect, const QColor &color, FocusRing ring = {});

/// Draws a dashed line inside the edge of `rect`, where something can be put. Leaves the painter as
/// it was.
void drawWell(QPainter &painter, const QRectF &rect, const QColor &color);

} // namespace Pellarvine::detail
