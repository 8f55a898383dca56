// SPDX-License-Identifier: MIT
// The mouse and keyboard input of a segmented control.
#include "Controls/AccessibleSegments.h"
#include "Controls/SegmentGeometry.h"
#include "Controls/SegmentedControlPrivate.h"

#include <QHelpEvent>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QShortcutEvent>
#include <QTextDocument>
#include <QToolTip>

#include <utility>

using Pellarvine::detail::Segment;
using Pellarvine::detail::SegmentMetrics;

namespace NS {

void SegmentedControl::Private::setFocused(int segment)
{
    if (segment == focused)
        return;
    focused = segment;
    q->update();
    if (q->hasFocus())
        detail::tellOfSegment(*q, segment, QAccessible::Focus);
}

// Moves the focus to the first enabled segment from there on. Without one, the focus stays.
void SegmentedControl::Private::moveFocus(int from, int step)
{
    int segment = from;
    while (segment >= 0 && segment < segments.size() && !canAct(segment))
        segment += step;
    showsRing = true;
    q->update();
    if (!canAct(segment) || segment == q->focusedSegment()) {
        // While nothing is selected, the keys select the segment with the focus.
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
        if (text.isEmpty()
            && d->contentWidth(shown) > rect.width() - SegmentMetrics::leastPadding) {
            text = detail::withoutMnemonics(shown.label); // which is not shown in full
            if (Qt::mightBeRichText(text))
                text = Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
        }
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
