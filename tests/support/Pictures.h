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

/// The colours of the picture's pixels.
inline QSet<QRgb> colorsIn(const QImage &image)
{
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    }
    return colors;
}

/// The pixels of a screen of that scale that a rectangle of device-independent pixels covers.
inline QRect pixelsOf(const QRect &rect, double scale)
{
    const QPoint start = (QPointF(rect.topLeft()) * scale).toPoint();
    const QPoint end = (QPointF(rect.bottomRight() + QPoint(1, 1)) * scale).toPoint();
    return { start, end - QPoint(1, 1) };
}

/// Fails unless a line of that colour is along the inner side of all edges of the rectangle, in
/// pixels, and blends with no pixel beside it. Round corners are not checked. A dashed line has
/// gaps.
inline void expectOutline(const QImage &image, const QRect &rect, const QColor &color,
                          int thickness, bool isDashed = false)
{
    // A painter rounds places to 1/64 of a pixel.
    const auto isNear = [](const QColor &one, const QColor &other) {
        constexpr int tolerance = 8;
        return std::abs(one.red() - other.red()) <= tolerance
               && std::abs(one.green() - other.green()) <= tolerance
               && std::abs(one.blue() - other.blue()) <= tolerance;
    };
    for (const Qt::Edge edge : { Qt::LeftEdge, Qt::RightEdge, Qt::TopEdge, Qt::BottomEdge }) {
        const bool isColumn = edge == Qt::LeftEdge || edge == Qt::RightEdge;
        const int length = isColumn ? rect.height() : rect.width();
        const auto colorAt = [&](int depth, int along) {
            switch (edge) {
            case Qt::LeftEdge:
                return image.pixelColor(rect.left() + depth, rect.top() + along);
            case Qt::RightEdge:
                return image.pixelColor(rect.right() - depth, rect.top() + along);
            case Qt::TopEdge:
                return image.pixelColor(rect.left() + along, rect.top() + depth);
            default:
                return image.pixelColor(rect.left() + along, rect.bottom() - depth);
            }
        };
        int inked = 0;
        int blended = 0;
        for (int i = length / 3; i < length * 2 / 3; ++i) {
            for (int depth = 0; depth < thickness; ++depth)
                inked += isNear(colorAt(depth, i), color) ? 1 : 0;
            blended += isNear(colorAt(-1, i), colorAt(-2, i)) ? 0 : 1;
            blended += isNear(colorAt(thickness, i), colorAt(thickness + 1, i)) ? 0 : 1;
        }
        const int whole = thickness * (length * 2 / 3 - length / 3);
        EXPECT_TRUE(isDashed ? inked >= whole / 4 : inked == whole)
                << "edge " << edge << ": " << inked << " of " << whole << " pixels, "
                << colorAt(0, length / 2).name().toStdString() << " in place of "
                << color.name().toStdString();
        EXPECT_EQ(blended, 0) << "edge " << edge;
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
