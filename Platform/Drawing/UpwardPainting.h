// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Drawing/NSGeometry.h"
#include "Drawing/NSGraphicsContext.h"

#include <QPaintEvent>
#include <QPainter>

namespace Pellarvine::detail {

/// Turns the painter's y around, in a space of that height: for painters what `NS::flipped` is for
/// rectangles, and its own inverse as well.
inline void flip(QPainter &painter, double height)
{
    painter.translate(0, height);
    painter.scale(1, -1);
}

/// Calls `view.draw(dirtyRect)` for a paint event, with a current graphics context whose y grows
/// upwards from the view's lower edge.
template <typename View>
void paintUpwards(View &view, const QPaintEvent &event)
{
    QPainter painter(&view);
    flip(painter, view.height());
    const NS::GraphicsContext context(painter);
    view.draw(NS::flipped(QRectF(event.rect()), view.height()));
}

} // namespace Pellarvine::detail
