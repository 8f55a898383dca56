// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QPalette>

namespace Pellarvine::detail {

/// The fixed drawings are black ink of some opacity on white paper. In the palette's colours the
/// ink is its text and the paper its base, so that on a palette of black and white both look alike.
/// The group is fixed: a line does not fade with its window.
inline QColor ink(const QPalette &palette, double opacity)
{
    QColor color = palette.color(QPalette::Active, QPalette::Text);
    color.setAlphaF(float(opacity));
    return color;
}

inline QColor paper(const QPalette &palette)
{
    return palette.color(QPalette::Active, QPalette::Base);
}

} // namespace Pellarvine::detail
