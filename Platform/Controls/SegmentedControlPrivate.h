// SPDX-License-Identifier: MIT
// Not API: the state of a segmented control.
#pragma once

#include "Controls/NSSegmentedControl.h"
#include "Controls/SegmentDrawing.h"

#include <QList>

namespace Pellarvine::detail {

struct Segment
{
    QString label;
    QIcon image;
    QString toolTip;
    double width = 0.0;
    int tag = 0;
    bool isEnabled = true;
    int shortcut = 0;
    // Measured in the control's font and style; -1 if not measured yet.
    mutable int contentWidth = -1;
    mutable int beginningWidth = -1;

    void forgetWidths() const { contentWidth = beginningWidth = -1; }
};

} // namespace Pellarvine::detail

namespace NS {

struct SegmentedControl::Private
{
    using Segment = detail::Segment;

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
    bool setLabel(Segment &segment, const QString &label) const;
    void grabShortcut(Segment &segment) const;

    int contentWidth(const Segment &segment) const;
    int beginningWidth(const Segment &segment) const;
    void forgetWidths() const;
    QList<QRect> rects() const;
    QList<detail::SegmentLook> looks() const;
};

} // namespace NS
