// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/ColorPanelIcons.h"

#include <QPainter>
#include <QPainterPath>

namespace Pellarvine::detail {

void drawWheel(QPainter &painter, const QColor &ink)
{
    QConicalGradient gradient(8, 8, 0);
    for (int i = 0; i <= 6; ++i)
        gradient.setColorAt(i / 6.0, QColor::fromHsvF(float(i % 6) / 6, 0.85F, 0.95F));
    painter.setBrush(gradient);
    painter.setPen(QPen(ink, 1));
    painter.drawEllipse(QPointF(8, 8), 6, 6);
}

void drawSliders(QPainter &painter, const QColor &ink)
{
    painter.setPen(QPen(ink, 1.25, Qt::SolidLine, Qt::RoundCap));
    constexpr double knobs[] = { 10.5, 5, 8.5 };
    for (int i = 0; i < 3; ++i) {
        const double y = 3.5 + 4.5 * i;
        painter.drawLine(QPointF(2, y), QPointF(14, y));
        painter.setBrush(ink);
        painter.drawEllipse(QPointF(knobs[i], y), 1.5, 1.5);
    }
}

void drawTiles(QPainter &painter, const QColor &)
{
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 9; ++i) {
        painter.setBrush(QColor::fromHsvF(float(i) / 9, 0.7F, 0.9F));
        const QPoint place(i % 3, i / 3);
        painter.drawRoundedRect(QRectF(QPointF(2, 2) + 4.25 * QPointF(place), QSizeF(3.5, 3.5)), 1,
                                1);
    }
}

void drawPipette(QPainter &painter, const QColor &ink)
{
    painter.translate(8, 8);
    painter.rotate(45);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawRoundedRect(QRectF(-2, -8, 4, 5.5), 2, 2);
    painter.drawRoundedRect(QRectF(-3.5, -3.25, 7, 1.75), 0.75, 0.75);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 1.25, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath glass(QPointF(-1.5, -1));
    glass.lineTo(-1.5, 4.5);
    glass.lineTo(0, 7.5);
    glass.lineTo(1.5, 4.5);
    glass.lineTo(1.5, -1);
    painter.drawPath(glass);
}

} // namespace Pellarvine::detail
