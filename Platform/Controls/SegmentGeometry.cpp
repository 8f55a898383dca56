// SPDX-License-Identifier: MIT
#include "Controls/SegmentGeometry.h"

#include <QStyle>

#include <algorithm>
#include <limits>

namespace Pellarvine::detail {

namespace {

constexpr int line = SegmentMetrics::line;

// The width that no segment may exceed for the sum to be no more than `available`.
double largestWidth(const QList<SegmentWidths> &segments, double available)
{
    QList<double> widths;
    for (const SegmentWidths &segment : segments)
        widths.append(segment.unpadded);
    std::sort(widths.begin(), widths.end());
    for (qsizetype i = 0; i < widths.size(); ++i) {
        const double share = available / double(widths.size() - i);
        if (widths[i] > share)
            return share;
        available -= widths[i];
    }
    return std::numeric_limits<double>::infinity();
}

} // namespace

QList<double> fittedSegmentWidths(const QList<SegmentWidths> &segments, double available)
{
    double preferred = 0.0;
    double unpadded = 0.0;
    for (const SegmentWidths &segment : segments) {
        preferred += segment.preferred;
        unpadded += segment.unpadded;
    }
    const double excess = preferred - available;
    const double padding = preferred - unpadded;
    const double largest = largestWidth(segments, available);
    QList<double> widths;
    for (const SegmentWidths &segment : segments) {
        if (excess <= 0.0)
            widths.append(segment.preferred);
        else if (excess < padding)
            widths.append(segment.preferred
                          - (segment.preferred - segment.unpadded) * excess / padding);
        else
            widths.append(std::min(segment.unpadded, largest));
    }
    return widths;
}

QList<QRect> segmentRects(const QList<SegmentWidths> &segments, QSize control,
                          Qt::LayoutDirection direction)
{
    const double available = std::max(0.0, double(control.width() - (segments.size() + 1) * line));
    QList<QRect> rects;
    double left = line;
    for (const double width : fittedSegmentWidths(segments, available)) {
        const double right = left + width;
        const QRect rect(qRound(left), line, qRound(right) - qRound(left),
                         control.height() - 2 * line);
        rects.append(QStyle::visualRect(direction, QRect(QPoint(), control), rect));
        left = right + line;
    }
    return rects;
}

QRect segmentCell(const QList<QRect> &rects, int segment, Qt::LayoutDirection direction)
{
    // The line to the right belongs to each segment; the one at the very left to the leftmost.
    const qsizetype leftmost = direction == Qt::RightToLeft ? rects.size() - 1 : 0;
    return rects[segment].adjusted(segment == leftmost ? -line : 0, -line, line, line);
}

int segmentAt(const QList<QRect> &rects, QPoint point, Qt::LayoutDirection direction)
{
    for (int i = 0; i < rects.size(); ++i) {
        if (segmentCell(rects, i, direction).contains(point))
            return i;
    }
    return -1;
}

} // namespace Pellarvine::detail
