// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <pellarvine/Platform/NSGraphicsContext.h>
#include <pellarvine/Platform/NSView.h>

#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

namespace Pellarvine::detail {

/// Calls `view.draw(dirtyRect)` for a paint event, with a current graphics context whose y grows
/// upwards from the view's lower edge.
template <typename View>
void paintUpwards(View &view, const QPaintEvent &event)
{
    QPainter painter(&view);
    painter.translate(0, view.height());
    painter.scale(1, -1);
    const NS::GraphicsContext context(painter);
    view.draw(NS::flipped(QRectF(event.rect()), view.height()));
}

} // namespace Pellarvine::detail
