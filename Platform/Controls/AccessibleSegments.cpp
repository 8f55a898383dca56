// SPDX-License-Identifier: MIT
#include "Controls/AccessibleSegments.h"

#include <QKeySequence>

namespace Pellarvine::detail {

using Tracking = NS::SegmentedControl::SwitchTracking;

QString withoutMnemonics(const QString &label)
{
    QString text;
    for (qsizetype i = 0; i < label.size(); ++i) {
        if (label[i] == u'&' && ++i == label.size())
            break;
        text += label[i];
    }
    return text;
}

AccessibleSegment::AccessibleSegment(NS::SegmentedControl *control, int segment)
    : AccessiblePart(control)
    , m_segment(segment)
{ }

bool AccessibleSegment::isValid() const
{
    return widget() && m_segment < widget()->segmentCount();
}

QString AccessibleSegment::text(QAccessible::Text kind) const
{
    if (!isValid())
        return {};
    const QString label = widget()->labelForSegment(m_segment);
    const QString toolTip = widget()->toolTipForSegment(m_segment);
    switch (kind) {
    case QAccessible::Name:
        return label.isEmpty() ? toolTip : withoutMnemonics(label);
    case QAccessible::Description:
        return label.isEmpty() ? QString() : toolTip;
    case QAccessible::Accelerator:
        return QKeySequence::mnemonic(label).toString(QKeySequence::NativeText);
    default:
        return {};
    }
}

QRect AccessibleSegment::rect() const
{
    if (!isValid())
        return {};
    const QRect rect = widget()->segmentRect(m_segment);
    return { widget()->mapToGlobal(rect.topLeft()), rect.size() };
}

QAccessible::Role AccessibleSegment::role() const
{
    const bool isTab = widget() && widget()->trackingMode() == Tracking::selectOne;
    return isTab ? QAccessible::PageTab : QAccessible::Button;
}

QAccessible::State AccessibleSegment::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const bool isSelected = widget()->isSelectedForSegment(m_segment);
    const bool isEnabled = widget()->isEnabled() && widget()->isEnabledForSegment(m_segment);
    state.disabled = !isEnabled;
    state.invisible = !widget()->isVisible();
    state.focusable = isEnabled;
    state.focused = widget()->hasFocus() && widget()->focusedSegment() == m_segment;
    switch (widget()->trackingMode()) {
    case Tracking::selectOne:
        state.selectable = isEnabled;
        state.selected = isSelected;
        break;
    case Tracking::selectAny:
        state.checkable = true;
        state.checked = isSelected;
        break;
    case Tracking::momentary:
        break;
    }
    return state;
}

QStringList AccessibleSegment::actionNames() const
{
    if (!isValid() || state().disabled)
        return {};
    const bool isToggle = widget()->trackingMode() == Tracking::selectAny;
    return { isToggle ? toggleAction() : pressAction() };
}

void AccessibleSegment::doAction(const QString &name)
{
    if (actionNames().contains(name))
        widget()->click(m_segment);
}

QStringList AccessibleSegment::keyBindingsForAction(const QString &) const
{
    const QString shortcut = text(QAccessible::Accelerator);
    return shortcut.isEmpty() ? QStringList() : QStringList(shortcut);
}

void tellOfSegment(NS::SegmentedControl &control, int segment, QAccessible::Event event)
{
    if (segment < 0)
        return;
    QAccessibleEvent notice(&control, event);
    notice.setChild(segment);
    QAccessible::updateAccessibility(&notice);
}

void tellOfSegment(NS::SegmentedControl &control, int segment, SegmentState changed)
{
    QAccessible::State state;
    state.selected = changed == SegmentState::selected;
    state.checked = changed == SegmentState::checked;
    state.disabled = changed == SegmentState::disabled;
    QAccessibleStateChangeEvent notice(&control, state);
    notice.setChild(segment);
    QAccessible::updateAccessibility(&notice);
}

AccessibleSegmentedControl::AccessibleSegmentedControl(NS::SegmentedControl *control)
    : QAccessibleWidget(control)
{ }

AccessibleSegmentedControl::~AccessibleSegmentedControl()
{
    for (const QAccessible::Id id : std::as_const(m_segments))
        QAccessible::deleteAccessibleInterface(id);
}

QAccessible::Role AccessibleSegmentedControl::role() const
{
    return control()->trackingMode() == Tracking::selectOne ? QAccessible::PageTabList
                                                            : QAccessible::Grouping;
}

int AccessibleSegmentedControl::childCount() const
{
    return control()->segmentCount();
}

QAccessibleInterface *AccessibleSegmentedControl::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto known = m_segments.constFind(index);
    if (known != m_segments.constEnd())
        return QAccessible::accessibleInterface(*known);
    auto *const made = new AccessibleSegment(control(), index);
    m_segments.insert(index, QAccessible::registerAccessibleInterface(made));
    return made;
}

QAccessibleInterface *AccessibleSegmentedControl::childAt(int x, int y) const
{
    return child(control()->segmentAt(control()->mapFromGlobal(QPoint(x, y))));
}

QAccessibleInterface *AccessibleSegmentedControl::focusChild() const
{
    return control()->hasFocus() ? child(control()->focusedSegment()) : nullptr;
}

int AccessibleSegmentedControl::indexOfChild(const QAccessibleInterface *child) const
{
    const auto *const segment = dynamic_cast<const AccessibleSegment *>(child);
    return segment && segment->parent() == this ? segment->segment() : -1;
}

NS::SegmentedControl *AccessibleSegmentedControl::control() const
{
    return static_cast<NS::SegmentedControl *>(widget());
}

} // namespace Pellarvine::detail
