// SPDX-License-Identifier: MIT
#include "Pellarvine/FullWidthSegmentedControl.h"

#include "View/NSView.h"

#include <algorithm>
#include <cmath>

namespace Pellarvine {

namespace {

constexpr double border = 2.0; // the line around the control, on both sides
constexpr double divider = 1.0;

} // namespace

struct FullWidthSegmentedControl::Private
{
    QSize spreadSize; // the control's when its segments were last spread
};

FullWidthSegmentedControl::FullWidthSegmentedControl(QWidget *parent)
    : SegmentedControl(parent)
    , d(std::make_unique<Private>())
{
    setSizePolicy({ QSizePolicy::Expanding, QSizePolicy::Fixed, QSizePolicy::PushButton });
    connect(this, &SegmentedControl::segmentCountChanged, this,
            &FullWidthSegmentedControl::spreadSegments);
}

FullWidthSegmentedControl::~FullWidthSegmentedControl() = default;

void FullWidthSegmentedControl::setFrame(const QRectF &frame)
{
    NS::setFrame(this, frame);
    spreadSegments();
}

double FullWidthSegmentedControl::widthForSegment(int segment) const
{
    // Qt tells a hidden widget of its size when it is shown.
    if (d->spreadSize != size())
        const_cast<FullWidthSegmentedControl *>(this)->spreadSegments();
    return SegmentedControl::widthForSegment(segment);
}

QSize FullWidthSegmentedControl::sizeHint() const
{
    double widest = 0.0;
    for (int i = 0; i < segmentCount(); ++i)
        widest = std::max(widest, fittingWidthForSegment(i));
    return sizeForSegmentWidths(QList<double>(segmentCount(), widest));
}

QSize FullWidthSegmentedControl::minimumSizeHint() const
{
    double widest = 0.0;
    for (int i = 0; i < segmentCount(); ++i)
        widest = std::max(widest, smallestWidthForSegment(i));
    return sizeForSegmentWidths(QList<double>(segmentCount(), widest));
}

void FullWidthSegmentedControl::resizeEvent(QResizeEvent *event)
{
    SegmentedControl::resizeEvent(event);
    if (d->spreadSize != size()) // which it is if the event was held back until the widget is shown
        spreadSegments();
}

void FullWidthSegmentedControl::spreadSegments()
{
    d->spreadSize = size();
    const QMarginsF insets = NS::alignmentRectInsets(this);
    const double available = NS::frame(this).width() - insets.left() - insets.right() - border;
    const int count = segmentCount();
    const double each = std::floor(available / count);
    QList<double> widths(count, each);
    if (count > 0)
        widths.last() = available - (count - 1) * (each + divider);
    setWidths(widths);
}

} // namespace Pellarvine
