// SPDX-License-Identifier: MIT
#include "Layout/NSLayoutStack.h"

#include "Base/Failure.h"
#include "Layout/NSLayoutSpacing.h"

namespace NS {

namespace {

using Attributes = QList<LayoutAttribute>;

bool isAcross(LayoutAttribute alignment, Qt::Orientation axis)
{
    using enum LayoutAttribute;
    return axis == Qt::Horizontal
                   ? Attributes { top, bottom, centerY, firstBaseline, lastBaseline }.contains(
                           alignment)
                   : Attributes { left, right, leading, trailing, centerX }.contains(alignment);
}

} // namespace

QList<std::shared_ptr<LayoutConstraint>> stack(const QList<QWidget *> &views, Qt::Orientation axis,
                                               std::optional<double> spacing,
                                               LayoutAttribute alignment)
{
    using enum LayoutAttribute;
    const bool isHorizontal = axis == Qt::Horizontal;
    Attributes common =
            isHorizontal ? Attributes { top, bottom } : Attributes { leading, trailing };
    if (alignment != notAnAttribute) {
        if (!isAcross(alignment, axis)) {
            detail::printWarning("Warning: a stack aligns its views across its axis, not along it");
            return {};
        }
        common = { alignment };
    }
    QList<std::shared_ptr<LayoutConstraint>> constraints;
    const auto makeEqual = [&](QWidget *view, LayoutAttribute attribute, QWidget *other,
                               LayoutAttribute otherAttribute, double constant) {
        constraints.append(LayoutConstraint::make(view, attribute, LayoutRelation::equal, other,
                                                  otherAttribute, 1.0, constant));
    };
    for (qsizetype i = 1; i < views.size(); ++i) {
        QWidget *const view = views[i];
        QWidget *const before = views[i - 1];
        makeEqual(view, isHorizontal ? leading : top, before, isHorizontal ? trailing : bottom,
                  spacing ? *spacing : systemSpacing(before, view, axis));
        for (const LayoutAttribute attribute : std::as_const(common))
            makeEqual(view, attribute, views.first(), attribute, 0.0);
    }
    return constraints;
}

} // namespace NS
