// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
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
