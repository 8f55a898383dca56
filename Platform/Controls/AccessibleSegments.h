// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Controls/NSSegmentedControl.h"
#include "View/AccessiblePart.h"

#include <QAccessibleWidget>
#include <QHash>

namespace Pellarvine::detail {

/// The label as it is read, like the accessible names of Qt's tabs and buttons: "Day" of "&Day".
QString withoutMnemonics(const QString &label);

/// One segment as a screen reader meets it: a tab, a toggle button or a button.
class AccessibleSegment : public AccessiblePart<NS::SegmentedControl>
{
public:
    AccessibleSegment(NS::SegmentedControl *control, int segment);

    bool isValid() const override;
    QString text(QAccessible::Text kind) const override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &name) const override;

    int segment() const { return m_segment; }

private:
    int m_segment;
};

/// The states of a segment that are reported to screen readers when they change.
enum class SegmentState {
    selected,
    checked,
    disabled,
};

/// Tells screen readers of an event in a segment; does nothing for -1.
void tellOfSegment(NS::SegmentedControl &control, int segment, QAccessible::Event event);
void tellOfSegment(NS::SegmentedControl &control, int segment, SegmentState changed);

class AccessibleSegmentedControl : public QAccessibleWidget
{
public:
    explicit AccessibleSegmentedControl(NS::SegmentedControl *control);
    ~AccessibleSegmentedControl() override;

    QAccessible::Role role() const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;
    int indexOfChild(const QAccessibleInterface *child) const override;

private:
    NS::SegmentedControl *control() const;

    mutable QHash<int, QAccessible::Id> m_segments; // made when first asked for
};

} // namespace Pellarvine::detail
