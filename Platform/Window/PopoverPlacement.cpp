// SPDX-License-Identifier: MIT
#include "Window/PopoverPlacement.h"

#include "Drawing/NSGeometry.h"

#include <QTransform>

#include <algorithm>
#include <array>

using NS::RectEdge;

namespace Pellarvine::detail {

namespace {

bool isBesideVertically(RectEdge edge)
{
    return edge == RectEdge::minY || edge == RectEdge::maxY;
}

RectEdge opposite(RectEdge edge)
{
    return RectEdge((int(edge) + 2) % 4);
}

// How much longer the room at that edge is than what has to go there; below 0 if it is too short.
double spare(RectEdge edge, const QRectF &anchor, QSizeF size, const QRectF &room)
{
    const double length = PopoverShape::arrowLength;
    switch (edge) {
    case RectEdge::minX:
        return anchor.left() - room.left() - size.width() - length;
    case RectEdge::maxX:
        return room.right() - anchor.right() - size.width() - length;
    case RectEdge::minY:
        return room.bottom() - anchor.bottom() - size.height() - length;
    case RectEdge::maxY:
        return anchor.top() - room.top() - size.height() - length;
    }
    Q_UNREACHABLE();
}

RectEdge chosenEdge(const QRectF &anchor, QSizeF size, const QRectF &room, RectEdge preferred)
{
    std::array<RectEdge, 4> edges = { preferred, opposite(preferred), RectEdge::maxX,
                                      RectEdge::minX };
    if (!isBesideVertically(preferred)) {
        edges[2] = RectEdge::maxY;
        edges[3] = RectEdge::minY;
    }
    const auto spareAt = [&](RectEdge edge) {
        return spare(edge, anchor, size, room);
    };
    const auto *const fitting = std::find_if(edges.begin(), edges.end(),
                                             [&](RectEdge edge) { return spareAt(edge) >= 0.0; });
    if (fitting != edges.end())
        return *fitting;
    return *std::max_element(edges.begin(), edges.end(), [&](RectEdge one, RectEdge other) {
        return spareAt(one) < spareAt(other);
    });
}

double slid(double origin, double extent, double low, double high)
{
    return std::max(low, std::min(origin, high - extent));
}

} // namespace

QRectF popoverArea(const QRectF &rect, QSizeF view)
{
    return rect == QRectF() ? QRectF(QPointF(), view) : NS::flipped(rect, view.height());
}

PopoverPlacement placePopover(const QRectF &anchor, QSizeF size, const QRectF &room,
                              RectEdge preferred)
{
    size = size.boundedTo(room.size());
    const RectEdge edge = chosenEdge(anchor, size, room, preferred);
    QRectF body(QPointF(), size);
    body.moveCenter(anchor.center());
    switch (edge) {
    case RectEdge::minX:
        body.moveRight(anchor.left() - PopoverShape::arrowLength);
        break;
    case RectEdge::maxX:
        body.moveLeft(anchor.right() + PopoverShape::arrowLength);
        break;
    case RectEdge::minY:
        body.moveTop(anchor.bottom() + PopoverShape::arrowLength);
        break;
    case RectEdge::maxY:
        body.moveBottom(anchor.top() - PopoverShape::arrowLength);
        break;
    }
    body.moveLeft(slid(body.left(), body.width(), room.left(), room.right()));
    body.moveTop(slid(body.top(), body.height(), room.top(), room.bottom()));
    return { edge, body };
}

std::optional<double> popoverArrow(const QRectF &anchor, const QRectF &body, RectEdge edge)
{
    // A unit for the rounding of places to whole ones.
    constexpr double tolerance = 1.0;
    const double gap = edge == RectEdge::minX   ? anchor.left() - body.right()
                       : edge == RectEdge::maxX ? body.left() - anchor.right()
                       : edge == RectEdge::minY ? body.top() - anchor.bottom()
                                                : anchor.top() - body.bottom();
    if (gap < PopoverShape::arrowLength - tolerance)
        return {};
    const double start = isBesideVertically(edge) ? body.left() : body.top();
    const double extent = isBesideVertically(edge) ? body.width() : body.height();
    const double middle = isBesideVertically(edge) ? anchor.center().x() : anchor.center().y();
    const double inset = PopoverShape::cornerRadius + PopoverShape::arrowHalfWidth;
    if (extent < 2 * inset)
        return extent < 2 * PopoverShape::arrowHalfWidth ? std::nullopt : std::optional(extent / 2);
    return std::clamp(middle - start, inset, extent - inset);
}

std::optional<RectEdge> popoverEdge(const QRectF &anchor, const QRectF &body)
{
    for (const RectEdge edge : { RectEdge::maxY, RectEdge::minY, RectEdge::minX, RectEdge::maxX }) {
        if (popoverArrow(anchor, body, edge))
            return edge;
    }
    return {};
}

QPainterPath popoverOutline(const QRectF &body, RectEdge edge, std::optional<double> arrow)
{
    QPainterPath outline;
    outline.addRoundedRect(body, PopoverShape::cornerRadius, PopoverShape::cornerRadius);
    if (!arrow)
        return outline;
    // Drawn pointing down from a side at y 0, then turned to where it belongs.
    constexpr double half = PopoverShape::arrowHalfWidth;
    constexpr double length = PopoverShape::arrowLength;
    QPainterPath tip(QPointF(-half - 2, -1));
    tip.lineTo(-half - 2, 0);
    tip.cubicTo(-half + 3, 0, -3, length, 0, length);
    tip.cubicTo(3, length, half - 3, 0, half + 2, 0);
    tip.lineTo(half + 2, -1);
    tip.closeSubpath();
    QTransform turn;
    switch (edge) {
    case RectEdge::minX:
        turn.translate(body.right(), body.top() + *arrow).rotate(-90);
        break;
    case RectEdge::maxX:
        turn.translate(body.left(), body.top() + *arrow).rotate(90);
        break;
    case RectEdge::minY:
        turn.translate(body.left() + *arrow, body.top()).rotate(180);
        break;
    case RectEdge::maxY:
        turn.translate(body.left() + *arrow, body.bottom());
        break;
    }
    return outline.united(turn.map(tip));
}

} // namespace Pellarvine::detail
