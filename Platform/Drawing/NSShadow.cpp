// SPDX-License-Identifier: MIT
#include "Drawing/NSShadow.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

namespace NS {

namespace {

constexpr double largestBlurRadius = 512; // points
constexpr double mostShadowPixels = 1 << 22;
constexpr double largestShadowSide = 16384; // pixels
constexpr double largestDeviation = 16; // pixels

// Three box blurs approximate a Gaussian. Returns how many pixels on each side every one of them
// covers; see P. Kovesi, "Fast Almost-Gaussian Filtering", 2010.
std::array<int, 3> averagingRadii(double deviation)
{
    constexpr int count = 3;
    const double variance = deviation * deviation;
    const double ideal = std::sqrt(12 * variance / count + 1);
    const int narrow = (int(ideal) - 1) / 2;
    const int width = 2 * narrow + 1;
    const double narrowCount =
            (12 * variance - count * width * width - 4 * count * width - 3 * count)
            / (-4 * width - 4);
    std::array<int, count> radii {};
    for (int i = 0; i < count; ++i)
        radii.at(std::size_t(i)) = i < std::lround(narrowCount) ? narrow : narrow + 1;
    return radii;
}

// Replaces each of `count` bytes, `stride` apart, by the average of itself and its neighbours. The
// bytes outside are 0.
void average(uchar *bytes, qsizetype stride, int count, int radius, std::vector<uchar> &scratch)
{
    const int width = 2 * radius + 1;
    scratch.assign(std::size_t(count) + std::size_t(width), 0);
    uchar *const padded = scratch.data();
    for (int i = 0; i < count; ++i)
        padded[i + radius] = bytes[i * stride];
    int sum = std::accumulate(padded, padded + width, 0);
    for (int i = 0; i < count; ++i) {
        bytes[i * stride] = uchar((sum + radius) / width);
        sum += padded[i + width] - padded[i];
    }
}

void blur(QImage &mask, double deviation)
{
    uchar *const bytes = mask.bits();
    const qsizetype rowLength = mask.bytesPerLine();
    std::vector<uchar> scratch;
    for (const int radius : averagingRadii(deviation)) {
        for (int row = 0; row < mask.height(); ++row)
            average(bytes + row * rowLength, 1, mask.width(), radius, scratch);
        for (int column = 0; column < mask.width(); ++column)
            average(bytes + column, rowLength, mask.height(), radius, scratch);
    }
}

// The filled path, blurred, in one colour. `scale` is in pixels a point.
QImage blurred(const QPainterPath &path, const QRectF &region, double scale, double deviation,
               const QColor &color)
{
    const QSize size(int(std::ceil(region.width() * scale)),
                     int(std::ceil(region.height() * scale)));
    QImage mask(size, QImage::Format_Alpha8);
    mask.fill(0);
    {
        QPainter painter(&mask);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        painter.translate(-region.topLeft());
        painter.fillPath(path, Qt::black);
    }
    blur(mask, deviation * scale);

    QImage shadow(size, QImage::Format_ARGB32_Premultiplied);
    shadow.fill(color);
    QPainter painter(&shadow);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, mask);
    return shadow;
}

// The resolution of the screen, or less for a large blur.
double pixelsPerPoint(const QRectF &region, double deviation, double screen)
{
    return std::min({ screen, largestDeviation / deviation, largestShadowSide / region.width(),
                      largestShadowSide / region.height(),
                      std::sqrt(mostShadowPixels / (region.width() * region.height())) });
}

} // namespace

void Shadow::draw(QPainter &painter, const QPainterPath &path) const
{
    const double radius = m_blurRadius > 0 ? std::min(m_blurRadius, largestBlurRadius) : 0;
    const double reach = 1.5 * radius; // three deviations
    const QPointF offset(m_offset.width(), -m_offset.height());
    const QColor color = m_color.toQColor();

    painter.save();
    // From here on points lie to the right and downwards, as on the device.
    const QPainterPath shape = painter.worldTransform().map(path);
    painter.setWorldTransform(QTransform());
    QRectF region = shape.boundingRect().adjusted(-reach, -reach, reach, reach);
    if (painter.hasClipping()) {
        region &= painter.clipBoundingRect().translated(-offset).adjusted(-reach, -reach, reach,
                                                                          reach);
    }
    const double screen = painter.device()->devicePixelRatioF();
    if (radius == 0) {
        painter.fillPath(shape.translated(offset), color);
    } else if (!region.isEmpty()) {
        // The picture begins at a whole pixel.
        const QPointF origin = (region.topLeft() + offset) * screen;
        region.setTopLeft(QPointF(std::floor(origin.x()), std::floor(origin.y())) / screen
                          - offset);
    }
    if (radius != 0 && !region.isEmpty() && std::isfinite(region.width() * region.height())) {
        const double scale = pixelsPerPoint(region, radius / 2, screen);
        const QImage shadow = blurred(shape, region, scale, radius / 2, color);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(region.topLeft() + offset, QSizeF(shadow.size()) / scale), shadow);
    }
    painter.restore();
}

} // namespace NS
