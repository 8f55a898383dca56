// SPDX-License-Identifier: MIT
// Not API: light and dark, and what lies between two colours.
#pragma once

#include <QColor>
#include <QPalette>

#include <algorithm>
#include <cmath>

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

/// The contrast ratio of two opaque colours by WCAG 2.2: 1 to 21.
inline double contrast(const QColor &one, const QColor &other)
{
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double component) {
            return component <= 0.04045 ? component / 12.92
                                        : std::pow((component + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
               + 0.0722 * linear(color.blueF());
    };
    constexpr double flare = 0.05;
    const double first = luminance(one) + flare;
    const double second = luminance(other) + flare;
    return std::max(first, second) / std::min(first, second);
}

/// The colour of links on a window. A dark palette that sets no colour of its own for links has
/// Qt's dark blue, which is mixed here with the colour of text until it is readable.
inline QColor linkColor(const QPalette &palette)
{
    const QColor paper = palette.color(QPalette::Window);
    const QColor own = palette.color(QPalette::Link);
    QColor color = own;
    if (contrast(own, paper) >= 3.0)
        return own;
    for (int tenths = 1; tenths <= 10 && contrast(color, paper) < 4.5; ++tenths)
        color = mixed(own, palette.color(QPalette::WindowText), tenths / 10.0);
    return color;
}

} // namespace Pellarvine::detail
