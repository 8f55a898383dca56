// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/NSPopover.h"

#include <QPainterPath>
#include <QRectF>
#include <QSizeF>

#include <optional>

// Where a popover goes and what it looks like there, as arithmetic on rectangles. As everywhere in
// Qt, y grows downwards here: the edge maxY is the upper one.
namespace Pellarvine::detail {

struct PopoverShape
{
    static constexpr double cornerRadius = 8.0;
    static constexpr double arrowLength = 10.0; ///< from its tip, which touches the anchor
    static constexpr double arrowHalfWidth = 10.0;
    /// The room around the body: for the arrow on one side, for the shadow on the others.
    static constexpr int margin = 12;
};

struct PopoverPlacement
{
    NS::RectEdge edge; ///< of the anchor
    QRectF body; ///< without arrow and shadow
};

/// The area that a popover points to, in its view. `rect` has y upwards; the zero rectangle stands
/// for the whole view.
QRectF popoverArea(const QRectF &rect, QSizeF view);

/// A body of that size beside `anchor`, in the middle of the preferred edge if there is room for it
/// within `room`; else slid along that edge; else on the opposite edge, or on another one; else,
/// where it fits nowhere, where the most of it does, over the anchor. A body larger than `room` is
/// made as large as that.
PELLARVINE_INTERNAL_EXPORT PopoverPlacement placePopover(const QRectF &anchor, QSizeF size,
                                                         const QRectF &room,
                                                         NS::RectEdge preferred);

/// Where along its side, from the body's left or top, the arrow of a body that got to this place
/// points at the middle of the anchor, or as near to it as the corners allow. None if the body does
/// not lie beside that edge of the anchor any more.
PELLARVINE_INTERNAL_EXPORT std::optional<double>
popoverArrow(const QRectF &anchor, const QRectF &body, NS::RectEdge edge);

/// The edge of the anchor that a body which got to this place lies beside; none if it does not.
PELLARVINE_INTERNAL_EXPORT std::optional<NS::RectEdge> popoverEdge(const QRectF &anchor,
                                                                   const QRectF &body);

/// The outline of a body whose anchor lies at that edge of its own, that is on the opposite side.
PELLARVINE_INTERNAL_EXPORT QPainterPath popoverOutline(const QRectF &body, NS::RectEdge edge,
                                                       std::optional<double> arrow);

} // namespace Pellarvine::detail
