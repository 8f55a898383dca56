// SPDX-License-Identifier: MIT
#include "Layout/Baseline.h"

#include <QFontMetricsF>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QVariant>

using NS::LayoutAttribute;

namespace Pellarvine::detail {

namespace {

double documentMargin(const QAbstractScrollArea *area)
{
    if (const auto *const text = qobject_cast<const QTextEdit *>(area))
        return text->document()->documentMargin();
    if (const auto *const text = qobject_cast<const QPlainTextEdit *>(area))
        return text->document()->documentMargin();
    return 0.0;
}

} // namespace

bool isBaseline(LayoutAttribute attribute)
{
    return attribute == LayoutAttribute::firstBaseline
           || attribute == LayoutAttribute::lastBaseline;
}

Baseline baselineOf(const QWidget *widget, LayoutAttribute attribute)
{
    const bool isFirst = attribute == LayoutAttribute::firstBaseline;
    const QVariant declared = widget->property(isFirst ? "firstBaselineOffsetFromTop"
                                                       : "lastBaselineOffsetFromBottom");
    if (declared.isValid())
        return { isFirst ? 0.0 : 1.0, isFirst ? declared.toDouble() : -declared.toDouble() };

    const QFontMetricsF metrics(widget->font());
    if (const auto *const label = qobject_cast<const QLabel *>(widget)) {
        const QMargins margins = label->contentsMargins();
        const double above = margins.top() + label->margin() + metrics.ascent();
        const double below = margins.bottom() + label->margin() + metrics.descent();
        const bool isAtTop = label->alignment() & Qt::AlignTop;
        const bool isAtBottom = label->alignment() & Qt::AlignBottom;
        if (label->wordWrap() ? isFirst : isAtTop)
            return { 0.0, above };
        if (label->wordWrap() ? !isFirst : isAtBottom)
            return { 1.0, -below };
    }
    if (const auto *const area = qobject_cast<const QAbstractScrollArea *>(widget)) {
        const double inside = area->frameWidth() + documentMargin(area);
        return isFirst ? Baseline { 0.0, inside + metrics.ascent() }
                       : Baseline { 1.0, -inside - metrics.descent() };
    }
    return { 0.5, (metrics.ascent() - metrics.descent()) / 2.0 };
}

} // namespace Pellarvine::detail
