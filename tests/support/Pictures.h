// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QWidget>
#include <gtest/gtest.h>

/// The colour behind whatever a test paints: what keeps it is clear.
inline const QColor ground(Qt::darkCyan);

/// What the widget and its children look like on a screen of that scale, before `ground`.
inline QImage picture(QWidget &widget, double scale)
{
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(ground);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// Fails unless every pixel of the rectangle, in units with y downwards, has the colour, give or
/// take one of 255 steps.
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
