// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/NSLayoutConstraint.h"

namespace Pellarvine::detail {

/// The distance of a baseline from the top of its widget: fraction * height + offset.
struct Baseline
{
    double fraction = 0.0;
    double offset = 0.0;
    bool operator==(const Baseline &) const = default;
};

bool isBaseline(NS::LayoutAttribute attribute);

/// The baseline that the widget declares, or else the one for its class and font.
PELLARVINE_INTERNAL_EXPORT Baseline baselineOf(const QWidget *widget,
                                               NS::LayoutAttribute attribute);

} // namespace Pellarvine::detail
