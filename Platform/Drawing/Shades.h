// SPDX-License-Identifier: MIT
// Not API: light and dark, and what lies between two colours.
#pragma once

#include <QColor>
#include <QPalette>

namespace Pellarvine::detail {

/// Whether text is lighter than its background. Uses the palette, because the palette of a program
/// or a widget need not follow the desktop's colour scheme.
inline bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightnessF()
           < palette.color(QPalette::WindowText).lightnessF();
}

/// Mixes two colours, from the first (0) to the second (1). Opaque.
inline QColor mixed(const QColor &first, const QColor &second, double share)
{
    const auto mix = [share](double from, double to) {
        return float(from + (to - from) * share);
    };
    return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                            mix(first.blueF(), second.blueF()));
}

/// The edge of a control on a window or a base: where text is readable, at least 3:1 on both.
inline QColor edgeColor(const QPalette &palette)
{
    return mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.55);
}

} // namespace Pellarvine::detail
