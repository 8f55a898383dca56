// SPDX-License-Identifier: MIT
// Not API: where the segments of a segmented control lie, as arithmetic on numbers and rectangles.
#pragma once

#include "Base/Global.h"

#include <QList>
#include <QRect>
#include <Qt>

namespace Pellarvine::detail {

/// The spaces in a segmented control, in device-independent pixels.
struct SegmentMetrics
{
    static constexpr int line = 1; ///< around the control and between its segments
    static constexpr int padding = 12; ///< on either side of the content of a segment
    static constexpr int leastPadding = 8; ///< on both sides together, where the room is short
    static constexpr int iconGap = 6; ///< between the image and the label
};

/// The widths that one segment asks for, without the lines beside it.
struct SegmentWidths
{
    double preferred = 0.0;
    double unpadded = 0.0; ///< with the least padding; no more than `preferred`
};

/// The width of each segment where there is `available` for all together. If that is too little,
/// padding gives way first, then the widest segments.
PELLARVINE_INTERNAL_EXPORT QList<double> fittedSegmentWidths(const QList<SegmentWidths> &segments,
                                                             double available);

/// The rectangle of each segment in a control of that size, without the lines. The first segment is
/// at the leading side.
PELLARVINE_INTERNAL_EXPORT QList<QRect> segmentRects(const QList<SegmentWidths> &segments,
                                                     QSize control, Qt::LayoutDirection direction);

/// The rectangle of a segment with its share of the lines: the area that is filled, and that takes
/// clicks. The cells of all segments adjoin.
PELLARVINE_INTERNAL_EXPORT QRect segmentCell(const QList<QRect> &rects, int segment,
                                             Qt::LayoutDirection direction);

/// The segment whose cell contains the point; -1 if there is none.
PELLARVINE_INTERNAL_EXPORT int segmentAt(const QList<QRect> &rects, QPoint point,
                                         Qt::LayoutDirection direction);

} // namespace Pellarvine::detail
