// SPDX-License-Identifier: MIT
#include "Layout/IntrinsicLength.h"

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

IntrinsicLength intrinsicLength(const LengthHints &hints)
{
    const double hint = std::max(hints.hint, hints.minimumHint);
    const bool hasHint = hint >= 0.0 && !(hints.policy & QSizePolicy::IgnoreFlag);

    IntrinsicLength intrinsic;
    intrinsic.notBelow = intrinsic.notAbove = LayoutLevel::unwanted;
    intrinsic.lowerLevel = LayoutLevel::minimumHint;
    if (hints.minimum > 0.0) {
        intrinsic.lower = hints.minimum;
        intrinsic.lowerLevel = LayoutLevel::explicitLimit;
    } else if (hasHint) {
        intrinsic.lower =
                hints.policy & QSizePolicy::ShrinkFlag ? std::max(0.0, hints.minimumHint) : hint;
    }
    if (hints.maximum < QWIDGETSIZE_MAX)
        intrinsic.upper = hints.maximum;
    if (hasHint) {
        intrinsic.target = std::max(hint, hints.minimum);
        intrinsic.notBelow = NS::LayoutPriority::defaultHigh;
        intrinsic.notAbove =
                !(hints.policy & QSizePolicy::GrowFlag)  ? NS::LayoutPriority::defaultHigh
                : hints.policy & QSizePolicy::ExpandFlag ? LayoutLevel::expanding
                                                         : NS::LayoutPriority::defaultLow;
        // A limit that is the target needs no constraint of its own.
        if (intrinsic.upper && *intrinsic.upper <= intrinsic.target) {
            intrinsic.target = *std::exchange(intrinsic.upper, {});
            intrinsic.notAbove = LayoutLevel::explicitLimit;
        }
        if (intrinsic.lower && *intrinsic.lower >= intrinsic.target) {
            intrinsic.lower.reset();
            intrinsic.notBelow = intrinsic.lowerLevel;
        }
    }
    const auto inset = [&](double length) {
        return std::max(0.0, length - hints.insets);
    };
    // Negative insets do not make a length out of 0.
    if (intrinsic.target > 0.0)
        intrinsic.target = inset(intrinsic.target);
    for (std::optional<double> *const limit : { &intrinsic.lower, &intrinsic.upper }) {
        if (limit->value_or(0.0) > 0.0)
            *limit = inset(**limit);
    }
    return intrinsic;
}

} // namespace Pellarvine::detail
