// SPDX-License-Identifier: MIT
#include "Controls/NSSegmentedControl.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "Controls/AccessibleSegments.h"
#include "Controls/SegmentDrawing.h"
#include "Controls/SegmentGeometry.h"
#include "View/AccessibleControl.h"

#include <QHelpEvent>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QShortcutEvent>
#include <QStyleOptionButton>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;
using Pellarvine::detail::SegmentMetrics;

namespace NS {

namespace {

struct Segment
{
    QString label;
    QIcon image;
    QString toolTip;
    double width = 0.0;
    int tag = 0;
    bool isEnabled = true;
    int shortcut = 0;
    // As last measured in the control's font and style; -1 if not yet.
    mutable int contentWidth = -1;
    mutable int beginningWidth = -1;

    void forgetWidths() const { contentWidth = beginningWidth = -1; }
};

} // namespace

struct SegmentedControl::Private
{
    SegmentedControl *q = nullptr;
    QList<Segment> segments;
    SwitchTracking trackingMode = SwitchTracking::selectOne;
    QList<int> selection; // the one selected last comes last
    int focused = -1; // as keys left it; it may be disabled by now
    int hovered = -1;
    int pressed = -1;
    bool isDown = false; // the pointer is on the pressed segment, or Space holds it
    bool isPressedByKey = false;
    bool showsRing = false;

    bool has(int segment) const;
    bool canAct(int segment) const;
    template <typename Action>
    void resizing(const Action &action);

    void select(const QList<int> &wanted);
    void setSelected(int segment, bool isSelected);
    void act(int segment);
    void setFocused(int segment);
    void moveFocus(int from, int step);
    void press(int segment, bool isByKey);
    void release(bool acts);
    void setHovered(int segment);
    void grabShortcut(Segment &segment) const;

    int contentWidth(const Segment &segment) const;
    int beginningWidth(const Segment &segment) const;
    void forgetWidths() const;
    QList<QRect> rects() const;
    QList<detail::SegmentLook> looks() const;
};

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
    if (self)
        Q_EMIT q->triggered(segment);
}

void SegmentedControl::Private::setFocused(int segment)
{
    if (segment == focused)
        return;
    focused = segment;
    q->update();
    if (q->hasFocus())
        detail::tellOfSegment(*q, segment, QAccessible::Focus);
}

// To the first segment from there on that can be acted on; stays, if there is none.
void SegmentedControl::Private::moveFocus(int from, int step)
{
    int segment = from;
    while (segment >= 0 && segment < segments.size() && !canAct(segment))
        segment += step;
    showsRing = true;
    q->update();
    if (!canAct(segment) || segment == q->focusedSegment()) {
        // Where nothing is selected yet, the keys select what they are on.
        if (trackingMode != SwitchTracking::selectOne || !selection.isEmpty())
            return;
        segment = q->focusedSegment();
    }
    if (!canAct(segment))
        return;
    setFocused(segment);
    if (trackingMode == SwitchTracking::selectOne && !selection.contains(segment))
        act(segment);
}

void SegmentedControl::Private::press(int segment, bool isByKey)
{
    if (pressed >= 0 || !canAct(segment))
        return;
    pressed = segment;
    isDown = true;
    isPressedByKey = isByKey;
    showsRing = isByKey;
    setFocused(segment);
    q->update();
}

void SegmentedControl::Private::release(bool acts)
{
    const int segment = std::exchange(pressed, -1);
    const bool wasDown = std::exchange(isDown, false);
    q->update();
    if (acts && wasDown && canAct(segment))
        act(segment);
}

void SegmentedControl::Private::setHovered(int segment)
{
    if (std::exchange(hovered, segment) != segment)
        q->update();
}

void SegmentedControl::Private::grabShortcut(Segment &segment) const
{
    if (segment.shortcut != 0)
        q->releaseShortcut(segment.shortcut);
    const QKeySequence keys = QKeySequence::mnemonic(segment.label);
    segment.shortcut = keys.isEmpty() ? 0 : q->grabShortcut(keys);
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
    d->select(kept);
    Q_EMIT trackingModeChanged(mode);
}

int SegmentedControl::segmentCount() const
{
    return int(d->segments.size());
}

void SegmentedControl::setSegmentCount(int count)
{
    count = std::max(0, count);
    if (count == segmentCount())
        return;
    d->resizing([&] {
        for (int i = count; i < segmentCount(); ++i) {
            d->segments[i].label.clear();
            d->grabShortcut(d->segments[i]);
        }
        d->segments.resize(count);
    });
    d->hovered = -1;
    if (d->pressed >= count)
        d->release(false);
    QList<int> kept = d->selection;
    kept.removeIf([&](int segment) { return segment >= count; });
    d->select(kept);
    Q_EMIT segmentCountChanged(count);
    Q_EMIT labelsChanged(labels());
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
    setSegmentCount(int(labels.size()));
    for (int i = 0; i < labels.size(); ++i)
        setLabel(labels[i], i);
}

QString SegmentedControl::labelForSegment(int segment) const
{
    return d->has(segment) ? d->segments[segment].label : QString();
}

void SegmentedControl::setLabel(const QString &label, int segment)
{
    if (!d->has(segment) || label == d->segments[segment].label)
        return;
    d->resizing([&] {
        d->segments[segment].label = label;
        d->segments[segment].forgetWidths();
        d->grabShortcut(d->segments[segment]);
    });
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
    const int height =
            style()->sizeFromContents(QStyle::CT_PushButton, &option, content, this).height();
    return { content.width(), height };
}

bool SegmentedControl::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Polish:
    case QEvent::ScreenChangeInternal:
        d->forgetWidths();
        break;
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        d->setHovered(segmentAt(static_cast<QHoverEvent *>(event)->position().toPoint()));
        break;
    case QEvent::HoverLeave:
        d->setHovered(-1);
        break;
    case QEvent::Hide:
        d->release(false);
        break;
    case QEvent::Shortcut: {
        const auto *const shortcut = static_cast<QShortcutEvent *>(event);
        for (int i = 0; i < segmentCount(); ++i) {
            if (d->segments[i].shortcut != shortcut->shortcutId())
                continue;
            setFocus(Qt::ShortcutFocusReason);
            if (shortcut->isAmbiguous())
                d->setFocused(i);
            else
                click(i);
            return true;
        }
        break;
    }
    case QEvent::ToolTip: {
        const auto *const help = static_cast<QHelpEvent *>(event);
        const int segment = segmentAt(help->pos());
        if (segment < 0)
            break;
        const Segment &shown = d->segments[segment];
        QString text = shown.toolTip.isEmpty() ? toolTip() : shown.toolTip;
        const QRect rect = segmentRect(segment);
        if (text.isEmpty() && d->contentWidth(shown) > rect.width() - SegmentMetrics::leastPadding)
            text = shown.label; // which is not shown in full
        if (text.isEmpty())
            break;
        QToolTip::showText(help->globalPos(), text, this, rect);
        return true;
    }
    default:
        break;
    }
    return QWidget::event(event);
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

void SegmentedControl::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    d->press(segmentAt(event->position().toPoint()), false);
}

void SegmentedControl::mouseMoveEvent(QMouseEvent *event)
{
    if (d->pressed < 0 || d->isPressedByKey) {
        QWidget::mouseMoveEvent(event);
        return;
    }
    const bool isDown = segmentAt(event->position().toPoint()) == d->pressed;
    if (std::exchange(d->isDown, isDown) != isDown)
        update();
}

void SegmentedControl::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || d->pressed < 0 || d->isPressedByKey) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    d->isDown = segmentAt(event->position().toPoint()) == d->pressed;
    d->release(true);
}

void SegmentedControl::keyPressEvent(QKeyEvent *event)
{
    const int outwards = isRightToLeft() ? -1 : 1;
    const int focused = focusedSegment();
    switch (event->key()) {
    case Qt::Key_Left:
        return d->moveFocus(focused - outwards, -outwards);
    case Qt::Key_Right:
        return d->moveFocus(focused + outwards, outwards);
    case Qt::Key_Home:
        return d->moveFocus(0, 1);
    case Qt::Key_End:
        return d->moveFocus(segmentCount() - 1, -1);
    case Qt::Key_Space:
    case Qt::Key_Select:
        if (!event->isAutoRepeat())
            d->press(focused, true);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void SegmentedControl::keyReleaseEvent(QKeyEvent *event)
{
    const bool isOurs = event->key() == Qt::Key_Space || event->key() == Qt::Key_Select;
    if (!isOurs || !d->isPressedByKey || d->pressed < 0)
        QWidget::keyReleaseEvent(event);
    else if (!event->isAutoRepeat())
        d->release(true);
}

void SegmentedControl::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    // A window that becomes active again leaves all as it was.
    const bool isByMouse = event->reason() == Qt::MouseFocusReason;
    const bool isReturn = event->reason() == Qt::ActiveWindowFocusReason
                          || event->reason() == Qt::PopupFocusReason;
    if (!isReturn) {
        d->showsRing = !isByMouse;
        if (!isByMouse && d->trackingMode == SwitchTracking::selectOne && selectedSegment() >= 0)
            d->focused = selectedSegment();
    }
    detail::tellOfSegment(*this, focusedSegment(), QAccessible::Focus);
    update();
}

void SegmentedControl::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    d->release(false);
}

} // namespace NS
