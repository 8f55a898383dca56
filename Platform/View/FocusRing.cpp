// SPDX-License-Identifier: MIT
#include "View/FocusRing.h"

#include <QPainter>

namespace Pellarvine::detail {

void drawFocusRing(QPainter &painter, const QRectF &rect, const QColor &color, FocusRing ring)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, ring.width));
    painter.setBrush(Qt::NoBrush);
    const double inset = ring.width / 2;
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), ring.radius, ring.radius);
    painter.restore();
}

void drawWell(QPainter &painter, const QRectF &rect, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(color, 1);
    pen.setDashPattern({ 4, 3 });
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    constexpr double radius = FocusRing().radius;
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

} // namespace Pellarvine::detail
