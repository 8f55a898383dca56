// SPDX-License-Identifier: MIT
#include "Layout/LengthWish.h"

#include "Layout/LayoutLevel.h"
#include "Layout/NSLayoutConstraint.h"

#include <algorithm>
#include <utility>

namespace Pellarvine::detail {

SizeHints sizeHints(const QWidget *widget)
{
    const QSizePolicy policy = widget->sizePolicy();
    const QSize hint = widget->sizeHint();
    const QSize minimumHint = widget->minimumSizeHint();
    const QSize minimum = widget->minimumSize();
    const QSize maximum = widget->maximumSize();
    const auto lengthHints = [&](QSizePolicy::Policy lengthPolicy, auto length) {
        LengthHints hints;
        hints.policy = lengthPolicy;
        hints.hint = length(hint);
        hints.minimumHint = length(minimumHint);
        hints.minimum = length(minimum);
        hints.maximum = length(maximum);
        return hints;
    };
    return { lengthHints(policy.horizontalPolicy(), [](QSize size) { return size.width(); }),
             lengthHints(policy.verticalPolicy(), [](QSize size) { return size.height(); }) };
}

LengthWish lengthWish(const LengthHints &hints)
{
    const double hint = std::max(hints.hint, hints.minimumHint);
    const bool hasHint = hint >= 0.0 && !(hints.policy & QSizePolicy::IgnoreFlag);

    LengthWish wish;
    wish.notBelow = wish.notAbove = LayoutLevel::unwanted;
    wish.lowerLevel = LayoutLevel::minimumHint;
    if (hints.minimum > 0.0) {
        wish.lower = hints.minimum;
        wish.lowerLevel = LayoutLevel::explicitLimit;
    } else if (hasHint) {
        wish.lower =
                hints.policy & QSizePolicy::ShrinkFlag ? std::max(0.0, hints.minimumHint) : hint;
    }
    if (hints.maximum < QWIDGETSIZE_MAX)
        wish.upper = hints.maximum;
    if (hasHint) {
        wish.target = std::max(hint, hints.minimum);
        wish.notBelow = NS::LayoutPriority::defaultHigh;
        wish.notAbove = !(hints.policy & QSizePolicy::GrowFlag)  ? NS::LayoutPriority::defaultHigh
                        : hints.policy & QSizePolicy::ExpandFlag ? LayoutLevel::expanding
                                                                 : NS::LayoutPriority::defaultLow;
        // One constraint less where the limit is the target.
        if (wish.upper && *wish.upper <= wish.target) {
            wish.target = *std::exchange(wish.upper, {});
            wish.notAbove = LayoutLevel::explicitLimit;
        }
        if (wish.lower && *wish.lower >= wish.target) {
            wish.lower.reset();
            wish.notBelow = wish.lowerLevel;
        }
    }
    const auto inset = [&](double length) {
        return std::max(0.0, length - hints.insets);
    };
    // A length of 0 stays 0 where the insets are negative.
    if (wish.target > 0.0)
        wish.target = inset(wish.target);
    for (std::optional<double> *const limit : { &wish.lower, &wish.upper }) {
        if (limit->value_or(0.0) > 0.0)
            *limit = inset(**limit);
    }
    return wish;
}

} // namespace Pellarvine::detail
