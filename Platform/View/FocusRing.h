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

/// Draws a focus ring inside the edge of `rect`. If the radius is half of the rectangle's side or
/// more, the ring is a circle. Restores the painter's state.
void drawFocusRing(QPainter &painter, const QRectF &rect, const QColor &color, FocusRing ring = {});

/// Draws a dashed line inside the edge of `rect`, as a place for something to be dropped. Restores
/// the painter's state.
void drawWell(QPainter &painter, const QRectF &rect, const QColor &color);

} // namespace Pellarvine::detail
