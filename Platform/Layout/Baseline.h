// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/NSLayoutConstraint.h"

namespace Pellarvine::detail {

/// Where a line of text stands in a widget: fraction * height + offset, from the top.
struct Baseline
{
    double fraction = 0.0;
    double offset = 0.0;
    bool operator==(const Baseline &) const = default;
};

bool isBaseline(NS::LayoutAttribute attribute);

/// As the widget declares it, or as its class and font suggest.
PELLARVINE_INTERNAL_EXPORT Baseline baselineOf(const QWidget *widget,
                                               NS::LayoutAttribute attribute);

} // namespace Pellarvine::detail
