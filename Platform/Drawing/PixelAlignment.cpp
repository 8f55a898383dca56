// SPDX-License-Identifier: MIT
#include "Drawing/PixelAlignment.h"

#include <QTransform>

#include <algorithm>
#include <cmath>

namespace Pellarvine::detail {

namespace {

constexpr double thickestLine = 8; // pixels
constexpr double inexactness = 1.0 / 256;

double wholePixels(double length)
{
    return std::floor(length + inexactness);
}

struct Span
{
    double start;
    double end;
};

Span aligned(const Span &span, const Span &space)
{
    const double middle = (space.start + space.end) / 2;
    const auto at = [&](double place) {
        return place <= middle ? std::round(space.start) + wholePixels(place - space.start)
                               : std::round(space.end) - wholePixels(space.end - place);
    };
    const double thickness = span.end - span.start;
    if (thickness <= 0 || thickness > thickestLine)
        return { at(span.start), at(span.end) };
    const double whole = wholeThickness(thickness);
    if (span.start + span.end <= space.start + space.end)
        return { at(span.start), at(span.start) + whole };
    return { at(span.end) - whole, at(span.end) };
}

} // namespace

double wholeThickness(double pixels)
{
    return std::max(1.0, wholePixels(pixels));
}

QRectF alignedToPixels(const QRectF &rect, const QRectF &space, const QTransform &toDevice)
{
    bool isInvertible = false;
    const QTransform toUser = toDevice.inverted(&isInvertible);
    if (!isInvertible || toDevice.type() > QTransform::TxScale)
        return rect;
    const QRectF pixels = toDevice.mapRect(rect);
    const QRectF around = toDevice.mapRect(space);
    const Span across =
            aligned({ pixels.left(), pixels.right() }, { around.left(), around.right() });
    const Span down = aligned({ pixels.top(), pixels.bottom() }, { around.top(), around.bottom() });
    return toUser.mapRect(QRectF(QPointF(across.start, down.start), QPointF(across.end, down.end)));
}

Outline outlineInside(const QRectF &rect, double thickness, const QTransform &toDevice)
{
    const double scale = std::abs(toDevice.m11());
    if (toDevice.type() <= QTransform::TxScale && scale > 0)
        thickness = wholeThickness(thickness * scale) / scale;
    const double inset = thickness / 2;
    return { alignedToPixels(rect, rect, toDevice).adjusted(inset, inset, -inset, -inset),
             thickness };
}

} // namespace Pellarvine::detail
