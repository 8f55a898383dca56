// SPDX-License-Identifier: MIT
#include "Layout/NSLayoutSpacing.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace NS {

double systemSpacing(const QWidget *view, const QWidget *next, Qt::Orientation axis)
{
    const QWidget *const parent = next->parentWidget() ? next->parentWidget() : next;
    const QStyle *const style = parent->style();
    const auto metric = axis == Qt::Horizontal ? QStyle::PM_LayoutHorizontalSpacing
                                               : QStyle::PM_LayoutVerticalSpacing;
    int spacing = style->pixelMetric(metric, nullptr, parent);
    if (spacing < 0) {
        spacing = style->layoutSpacing(view->sizePolicy().controlType(),
                                       next->sizePolicy().controlType(), axis, nullptr, parent);
    }
    return std::max(spacing, 0);
}

} // namespace NS
