// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QSet>
#include <QWidget>
#include <gtest/gtest.h>

/// The colour behind the widgets that a test paints. A pixel of this colour was not painted.
inline const QColor ground(Qt::darkCyan);

/// A picture of the widget and its children on `ground`, at that scale.
inline QImage picture(QWidget &widget, double scale)
{
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(ground);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// The pixels of a screen of that scale that a rectangle of device-independent pixels covers.
inline QRect pixelsOf(const QRect &rect, double scale)
{
    const QPoint start = (QPointF(rect.topLeft()) * scale).toPoint();
    const QPoint end = (QPointF(rect.bottomRight() + QPoint(1, 1)) * scale).toPoint();
    return { start, end - QPoint(1, 1) };
}

/// Fails unless a line of that colour runs along the inner side of all edges of the rectangle, in
/// pixels, and blends with no pixel beside it. Round corners are not looked at. A dashed line has
/// gaps.
inline void expectOutline(const QImage &image, const QRect &rect, const QColor &color,
                          int thickness, bool isDashed = false)
{
    const auto colorsAt = [&](Qt::Edge edge, int depth) {
        const bool isColumn = edge == Qt::LeftEdge || edge == Qt::RightEdge;
        const int length = isColumn ? rect.height() : rect.width();
        QSet<QRgb> colors;
        for (int i = length / 3; i < length * 2 / 3; ++i) {
            const QPoint place =
                    edge == Qt::LeftEdge    ? QPoint(rect.left() + depth, rect.top() + i)
                    : edge == Qt::RightEdge ? QPoint(rect.right() - depth, rect.top() + i)
                    : edge == Qt::TopEdge   ? QPoint(rect.left() + i, rect.top() + depth)
                                            : QPoint(rect.left() + i, rect.bottom() - depth);
            colors.insert(image.pixel(place));
        }
        return colors;
    };
    for (const Qt::Edge edge : { Qt::LeftEdge, Qt::RightEdge, Qt::TopEdge, Qt::BottomEdge }) {
        for (int depth = 0; depth < thickness; ++depth) {
            const QSet<QRgb> colors = colorsAt(edge, depth);
            EXPECT_TRUE(colors.contains(color.rgb()) && (isDashed || colors.size() == 1))
                    << "edge " << edge << " at " << depth << " of " << thickness << ": "
                    << QColor(*colors.begin()).name().toStdString() << " in place of "
                    << color.name().toStdString();
        }
        EXPECT_EQ(colorsAt(edge, -1), colorsAt(edge, -2)) << "edge " << edge;
        EXPECT_EQ(colorsAt(edge, thickness), colorsAt(edge, thickness + 1)) << "edge " << edge;
    }
}

/// Fails unless each pixel of the rectangle has the colour, within one of 255 steps. The rectangle
/// is in device-independent pixels with y downwards.
inline void expectFilled(const QImage &image, const QRect &rect, const QColor &color)
{
    const int scale = qRound(image.devicePixelRatio());
    const QRect pixels(rect.topLeft() * scale, rect.size() * scale);
    ASSERT_TRUE(image.rect().contains(pixels));
    const auto isNear = [](int one, int other) {
        return std::abs(one - other) <= 1;
    };
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            const QColor found = image.pixelColor(x, y);
            ASSERT_TRUE(isNear(found.red(), color.red()) && isNear(found.green(), color.green())
                        && isNear(found.blue(), color.blue()))
                    << found.name().toStdString() << ", not " << color.name().toStdString()
                    << ", at " << x << ", " << y << " at scale " << scale;
        }
    }
}
