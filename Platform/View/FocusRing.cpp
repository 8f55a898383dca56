// SPDX-License-Identifier: MIT
#include "View/FocusRing.h"

#include "Drawing/PixelAlignment.h"

#include <QPainter>

#include <algorithm>

namespace Pellarvine::detail {

void drawFocusRing(QPainter &painter, const QRectF &rect, const QColor &color, FocusRing ring)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const bool isCircle = 2 * ring.radius >= std::min(rect.width(), rect.height());
    const double inset = ring.width / 2;
    const Outline line =
            isCircle // which would not stay round
                    ? Outline { rect.adjusted(inset, inset, -inset, -inset), ring.width }
                    : outlineInside(rect, ring.width, painter.deviceTransform());
    painter.setPen(QPen(color, line.thickness));
    painter.drawRoundedRect(line.middle, ring.radius, ring.radius);
    painter.restore();
}

void drawWell(QPainter &painter, const QRectF &rect, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const Outline line = outlineInside(rect, 1, painter.deviceTransform());
    QPen pen(color, line.thickness);
    pen.setDashPattern({ 4, 3 });
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    constexpr double radius = FocusRing().radius;
    painter.drawRoundedRect(line.middle, radius, radius);
    painter.restore();
}

} // namespace Pellarvine::detail
