// SPDX-License-Identifier: MIT
#include "Window/WindowShadow.h"

#include "Drawing/NSShadow.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <array>

namespace Pellarvine::detail::WindowShadow {

namespace {

// From the outer edge to where the shadow no longer depends on the corner.
constexpr int corner = 2 * margin + cornerRadius;
constexpr int side = 2 * corner + 1;

QPixmap make(bool isActive, double scale)
{
    QPixmap result(QSize(side, side) * scale);
    result.setDevicePixelRatio(scale);
    result.fill(Qt::transparent);
    QPainterPath window;
    window.addRoundedRect(QRectF(0, 0, side, side).adjusted(margin, margin, -margin, -margin),
                          cornerRadius, cornerRadius);
    QPainter painter(&result);
    const auto drawLayer = [&](double alpha, double down, double blurRadius) {
        const NS::Color black({ .red = 0, .green = 0, .blue = 0, .alpha = alpha });
        NS::Shadow(black, { 0, -down }, blurRadius).draw(painter, window);
    };
    drawLayer(isActive ? 0.34 : 0.2, 4, 13);
    drawLayer(isActive ? 0.12 : 0.08, 1, 3);
    return result;
}

// The last one of each kind: a window on a screen of another scale makes its own again.
const QPixmap &picture(bool isActive, double scale)
{
    static std::array<QPixmap, 2> pictures;
    QPixmap &kept = pictures[size_t(isActive)];
    if (kept.isNull() || kept.devicePixelRatio() != scale)
        kept = make(isActive, scale);
    return kept;
}

} // namespace

void draw(QPainter &painter, const QRect &rect, bool isActive)
{
    const double scale = painter.device()->devicePixelRatioF();
    const QPixmap &shadow = picture(isActive, scale);
    const std::array<int, 4> from { 0, corner, corner + 1, side };
    const std::array<int, 4> x { 0, corner, rect.width() - corner, rect.width() };
    const std::array<int, 4> y { 0, corner, rect.height() - corner, rect.height() };
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column) {
            if (row == 1 && column == 1)
                continue; // the window
            const QRectF target(QPointF(x[column], y[row]), QPointF(x[column + 1], y[row + 1]));
            const QRectF source(QPointF(from[column], from[row]) * scale,
                                QPointF(from[column + 1], from[row + 1]) * scale);
            painter.drawPixmap(target.translated(rect.topLeft()), shadow, source);
        }
    }
}

} // namespace Pellarvine::detail::WindowShadow
