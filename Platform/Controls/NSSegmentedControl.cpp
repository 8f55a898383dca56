// SPDX-License-Identifier: MIT
#include "Controls/NSSegmentedControl.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "Controls/AccessibleSegments.h"
#include "Controls/SegmentDrawing.h"
#include "Controls/SegmentGeometry.h"
#include "Controls/SegmentedControlPrivate.h"
#include "View/AccessibleControl.h"

#include <QPainter>
#include <QPointer>
#include <QStyleOptionButton>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;
using Pellarvine::detail::Segment;
using Pellarvine::detail::SegmentMetrics;

namespace NS {

// Whether there is such a segment; a warning, if not.
bool SegmentedControl::Private::has(int segment) const
{
    if (segment >= 0 && segment < segments.size())
        return true;
    detail::printWarning(
            u"Warning: a control of %1 segments has no segment %2"_s.arg(segments.size())
                    .arg(segment)
                    .toStdString());
    return false;
}

bool SegmentedControl::Private::canAct(int segment) const
{
    return q->isEnabled() && segment >= 0 && segment < segments.size()
           && segments[segment].isEnabled;
}

template <typename Action>
void SegmentedControl::Private::resizing(const Action &action)
{
    const QSize hint = q->sizeHint();
    const QSize minimum = q->minimumSizeHint();
    action();
    if (q->sizeHint() != hint || q->minimumSizeHint() != minimum)
        q->updateGeometry();
    q->update();
}

void SegmentedControl::Private::select(const QList<int> &wanted)
{
    // Not ==, which hands null pointers of empty lists to memcmp().
    if (std::equal(wanted.begin(), wanted.end(), selection.begin(), selection.end()))
        return;
    const QList<int> before = std::exchange(selection, wanted);
    if (trackingMode == SwitchTracking::selectOne && !selection.isEmpty())
        focused = selection.constLast();
    q->update();
    const bool isTab = trackingMode == SwitchTracking::selectOne;
    for (int i = 0; i < segments.size(); ++i) {
        if (before.contains(i) != selection.contains(i))
            detail::tellOfSegment(
                    *q, i, isTab ? detail::SegmentState::selected : detail::SegmentState::checked);
    }
    if (isTab && !selection.isEmpty())
        detail::tellOfSegment(*q, selection.constLast(), QAccessible::Selection);
    const QPointer<SegmentedControl> self(q);
    Q_EMIT q->selectionChanged();
    const int last = before.isEmpty() ? -1 : before.constLast();
    if (self && q->selectedSegment() != last)
        Q_EMIT q->selectedSegmentChanged(q->selectedSegment());
}

void SegmentedControl::Private::setSelected(int segment, bool isSelected)
{
    if (trackingMode == SwitchTracking::momentary || selection.contains(segment) == isSelected)
        return;
    QList<int> wanted = trackingMode == SwitchTracking::selectAny ? selection : QList<int>();
    if (isSelected)
        wanted.append(segment);
    else
        wanted.removeOne(segment);
    select(wanted);
}

void SegmentedControl::Private::act(int segment)
{
    const QPointer<SegmentedControl> self(q);
    setSelected(segment, trackingMode == SwitchTracking::selectOne || !selection.contains(segment));
    if (self && segment < segments.size())
        Q_EMIT q->triggered(segment);
}

// Whether the segment had another label.
bool SegmentedControl::Private::setLabel(Segment &segment, const QString &label) const
{
    if (label == segment.label)
        return false;
    segment.label = label;
    segment.forgetWidths();
    grabShortcut(segment);
    return true;
}

void SegmentedControl::Private::grabShortcut(Segment &segment) const
{
    if (segment.shortcut != 0)
        q->releaseShortcut(segment.shortcut);
    const QKeySequence keys = QKeySequence::mnemonic(segment.label);
    segment.shortcut = keys.isEmpty() ? 0 : q->grabShortcut(keys);
    if (segment.shortcut != 0)
        q->setShortcutEnabled(segment.shortcut, segment.isEnabled);
}

// Geometry and looks

int SegmentedControl::Private::contentWidth(const Segment &segment) const
{
    if (segment.contentWidth < 0)
        segment.contentWidth = detail::segmentContentWidth(*q, segment.label, segment.image);
    return segment.contentWidth;
}

int SegmentedControl::Private::beginningWidth(const Segment &segment) const
{
    if (segment.beginningWidth < 0)
        segment.beginningWidth =
                detail::segmentContentWidth(*q, segment.label.left(1) + u'…', segment.image);
    return segment.beginningWidth;
}

void SegmentedControl::Private::forgetWidths() const
{
    for (const Segment &segment : segments)
        segment.forgetWidths();
}

QList<QRect> SegmentedControl::Private::rects() const
{
    QList<detail::SegmentWidths> widths;
    for (int i = 0; i < segments.size(); ++i) {
        const double own = q->widthForSegment(i);
        if (own > 0.0)
            widths.append({ own, own });
        else
            widths.append({ q->fittingWidthForSegment(i),
                            double(contentWidth(segments[i]) + SegmentMetrics::leastPadding) });
    }
    return detail::segmentRects(widths, q->size(), q->layoutDirection());
}

QList<detail::SegmentLook> SegmentedControl::Private::looks() const
{
    const QList<QRect> rects = this->rects();
    const int ringed = q->hasFocus() && showsRing ? q->focusedSegment() : -1;
    QList<detail::SegmentLook> looks;
    for (int i = 0; i < segments.size(); ++i) {
        looks.append({ .rect = rects[i],
                       .label = segments[i].label,
                       .image = segments[i].image,
                       .canAct = canAct(i),
                       .isSelected = selection.contains(i),
                       .isPressed = i == pressed && isDown,
                       .isHovered = i == hovered && pressed < 0,
                       .hasRing = i == ringed });
    }
    return looks;
}

SegmentedControl::SegmentedControl(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>())
{
    d->q = this;
    detail::makeAccessible<SegmentedControl, detail::AccessibleSegmentedControl>();
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy({ QSizePolicy::Maximum, QSizePolicy::Fixed, QSizePolicy::PushButton });
    setAttribute(Qt::WA_Hover);
}

SegmentedControl::~SegmentedControl() = default;

SegmentedControl::SwitchTracking SegmentedControl::trackingMode() const
{
    return d->trackingMode;
}

void SegmentedControl::setTrackingMode(SwitchTracking mode)
{
    if (!detail::assign(d->trackingMode, mode))
        return;
    QList<int> kept = d->selection;
    if (mode == SwitchTracking::momentary)
        kept.clear();
    else if (mode == SwitchTracking::selectOne && kept.size() > 1)
        kept = { kept.constLast() };
    const QPointer<SegmentedControl> self(this);
    d->select(kept);
    if (self)
        Q_EMIT trackingModeChanged(d->trackingMode);
}

int SegmentedControl::segmentCount() const
{
    return int(d->segments.size());
}

void SegmentedControl::setSegmentCount(int count)
{
    QStringList labels = this->labels();
    labels.resize(std::max(0, count));
    setLabels(labels);
}

QStringList SegmentedControl::labels() const
{
    QStringList labels;
    for (const Segment &segment : std::as_const(d->segments))
        labels.append(segment.label);
    return labels;
}

void SegmentedControl::setLabels(const QStringList &labels)
{
    const int count = int(labels.size());
    const bool isOtherCount = count != segmentCount();
    QList<int> renamed;
    d->resizing([&] {
        while (segmentCount() > count) {
            d->setLabel(d->segments.last(), {}); // which releases its shortcut
            d->segments.removeLast();
        }
        d->segments.resize(count);
        for (int i = 0; i < count; ++i) {
            if (d->setLabel(d->segments[i], labels[i]))
                renamed.append(i);
        }
    });
    for (const int segment : std::as_const(renamed))
        detail::tellOfSegment(*this, segment, QAccessible::NameChanged);
    // The slots may change everything again, or delete the control.
    const QPointer<SegmentedControl> self(this);
    if (isOtherCount) {
        d->hovered = -1;
        if (d->pressed >= count)
            d->release(false);
        QList<int> kept = d->selection;
        kept.removeIf([&](int segment) { return segment >= count; });
        d->select(kept);
        if (self)
            Q_EMIT segmentCountChanged(segmentCount());
    }
    if (self && (isOtherCount || !renamed.isEmpty()))
        Q_EMIT labelsChanged(this->labels());
}

QString SegmentedControl::labelForSegment(int segment) const
{
    return d->has(segment) ? d->segments[segment].label : QString();
}

void SegmentedControl::setLabel(const QString &label, int segment)
{
    if (!d->has(segment) || label == d->segments[segment].label)
        return;
    d->resizing([&] { d->setLabel(d->segments[segment], label); });
    detail::tellOfSegment(*this, segment, QAccessible::NameChanged);
    Q_EMIT labelsChanged(labels());
}

QIcon SegmentedControl::imageForSegment(int segment) const
{
    return d->has(segment) ? d->segments[segment].image : QIcon();
}

void SegmentedControl::setImage(const QIcon &image, int segment)
{
    if (d->has(segment))
        d->resizing([&] {
            d->segments[segment].image = image;
            d->segments[segment].forgetWidths();
        });
}

QString SegmentedControl::toolTipForSegment(int segment) const
{
    return d->has(segment) ? d->segments[segment].toolTip : QString();
}

void SegmentedControl::setToolTip(const QString &toolTip, int segment)
{
    if (d->has(segment))
        d->segments[segment].toolTip = toolTip;
}

int SegmentedControl::tagForSegment(int segment) const
{
    return d->has(segment) ? d->segments[segment].tag : 0;
}

void SegmentedControl::setTag(int tag, int segment)
{
    if (d->has(segment))
        d->segments[segment].tag = tag;
}

bool SegmentedControl::isEnabledForSegment(int segment) const
{
    return d->has(segment) && d->segments[segment].isEnabled;
}

void SegmentedControl::setEnabled(bool isEnabled, int segment)
{
    if (!d->has(segment) || isEnabled == d->segments[segment].isEnabled)
        return;
    d->segments[segment].isEnabled = isEnabled;
    setShortcutEnabled(d->segments[segment].shortcut, isEnabled);
    if (segment == d->pressed)
        d->release(false);
    update();
    detail::tellOfSegment(*this, segment, detail::SegmentState::disabled);
}

double SegmentedControl::widthForSegment(int segment) const
{
    return d->has(segment) ? d->segments[segment].width : 0.0;
}

void SegmentedControl::setWidth(double width, int segment)
{
    if (d->has(segment) && width != d->segments[segment].width)
        d->resizing([&] { d->segments[segment].width = width; });
}

void SegmentedControl::setWidths(const QList<double> &widths)
{
    const auto hasWidth = [](const Segment &segment, double width) {
        return segment.width == width;
    };
    if (std::equal(d->segments.cbegin(), d->segments.cend(), widths.cbegin(), widths.cend(),
                   hasWidth))
        return;
    d->resizing([&] {
        for (int i = 0; i < std::min(segmentCount(), int(widths.size())); ++i)
            d->segments[i].width = widths[i];
    });
}

int SegmentedControl::selectedSegment() const
{
    return d->selection.isEmpty() ? -1 : d->selection.constLast();
}

void SegmentedControl::setSelectedSegment(int segment)
{
    if (segment == -1)
        d->select({});
    else if (d->has(segment) && d->trackingMode != SwitchTracking::momentary)
        d->select({ segment });
}

bool SegmentedControl::isSelectedForSegment(int segment) const
{
    return d->has(segment) && d->selection.contains(segment);
}

void SegmentedControl::setSelected(bool isSelected, int segment)
{
    if (d->has(segment))
        d->setSelected(segment, isSelected);
}

bool SegmentedControl::selectSegmentWithTag(int tag)
{
    const auto found = std::find_if(d->segments.cbegin(), d->segments.cend(),
                                    [&](const Segment &segment) { return segment.tag == tag; });
    if (found == d->segments.cend())
        return false;
    setSelectedSegment(int(found - d->segments.cbegin()));
    return true;
}

QRect SegmentedControl::segmentRect(int segment) const
{
    return d->has(segment) ? d->rects()[segment] : QRect();
}

int SegmentedControl::segmentAt(QPoint point) const
{
    return detail::segmentAt(d->rects(), point, layoutDirection());
}

int SegmentedControl::focusedSegment() const
{
    if (d->canAct(d->focused))
        return d->focused;
    if (d->canAct(selectedSegment()))
        return selectedSegment();
    const auto first = std::find_if(d->segments.cbegin(), d->segments.cend(),
                                    [](const Segment &segment) { return segment.isEnabled; });
    return isEnabled() && first != d->segments.cend() ? int(first - d->segments.cbegin()) : -1;
}

QSize SegmentedControl::sizeHint() const
{
    QList<double> widths;
    for (int i = 0; i < segmentCount(); ++i) {
        const double width = d->segments[i].width;
        widths.append(width > 0.0 ? width : fittingWidthForSegment(i));
    }
    return sizeForSegmentWidths(widths);
}

QSize SegmentedControl::minimumSizeHint() const
{
    QList<double> widths;
    for (int i = 0; i < segmentCount(); ++i) {
        const double width = d->segments[i].width;
        widths.append(width > 0.0 ? width : smallestWidthForSegment(i));
    }
    return sizeForSegmentWidths(widths);
}

void SegmentedControl::click(int segment)
{
    if (d->has(segment) && d->canAct(segment)) {
        d->setFocused(segment);
        d->act(segment);
    }
}

double SegmentedControl::fittingWidthForSegment(int segment) const
{
    return d->contentWidth(d->segments[segment]) + 2 * SegmentMetrics::padding;
}

double SegmentedControl::smallestWidthForSegment(int segment) const
{
    const Segment &measured = d->segments[segment];
    return std::min(d->beginningWidth(measured), d->contentWidth(measured))
           + SegmentMetrics::leastPadding;
}

QSize SegmentedControl::sizeForSegmentWidths(const QList<double> &widths) const
{
    const double total = std::accumulate(widths.cbegin(), widths.cend(), 0.0)
                         + double((widths.size() + 1) * SegmentMetrics::line);
    QStyleOptionButton option;
    option.initFrom(this);
    option.text = u"X"_s;
    const QSize content(int(std::ceil(total)),
                        std::max(fontMetrics().height(), detail::segmentIconSize(*this).height()));
    // Without a widget, so that boxes of style sheets, which are not drawn, take no room.
    const int height =
            style()->sizeFromContents(QStyle::CT_PushButton, &option, content, nullptr).height();
    return { content.width(), height };
}

void SegmentedControl::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::EnabledChange:
        d->release(false);
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        d->forgetWidths();
        updateGeometry();
        update();
        break;
    case QEvent::LayoutDirectionChange:
        update();
        break;
    default:
        break;
    }
}

void SegmentedControl::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    detail::drawSegments(painter, *this, d->looks());
}

} // namespace NS
