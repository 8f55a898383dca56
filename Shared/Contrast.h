// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Shared/Color.h>

#include <algorithm>
#include <cmath>

/// @file
/// The readability of one colour on another, by the Web Content Accessibility Guidelines (WCAG)
/// 2.2. Components are taken as sRGB and clamped to 0…1. The functions may be called from any
/// thread.
///
///     using namespace Pellarvine;
///     badge.setTextColor(readableOn(badgeColor).toQColor());
///     if (contrastRatio(ink, paper) < readableContrast)
///         warning->show();

namespace Pellarvine {

/// The least contrast ratio of text in usual sizes (WCAG 2.2, level AA).
inline constexpr double readableContrast = 4.5;

/// The relative luminance of an opaque colour: 0 for black to 1 for white. Ignores opacity.
template <Color T>
double luminance(const T &color)
{
    const auto linear = [](double component) {
        const double value = std::clamp(component, 0.0, 1.0);
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    const RGBA rgba = color.rgba();
    return 0.2126 * linear(rgba.red) + 0.7152 * linear(rgba.green) + 0.0722 * linear(rgba.blue);
}

/// The opaque colour that results from painting `color` on a background. The opacity of the
/// background is ignored.
template <Color T>
T seenOn(const T &background, const std::type_identity_t<T> &color)
{
    const auto opaque = [](RGBA rgba) {
        rgba.alpha = 1;
        return T(rgba);
    };
    const RGBA rgba = color.rgba();
    return interpolate(opaque(background.rgba()), opaque(rgba), std::clamp(rgba.alpha, 0.0, 1.0));
}

/// The contrast ratio of text on a background: from 1 for equal luminance to 21 for black and
/// white. Text that is not opaque is mixed with the background first.
template <Color T>
double contrastRatio(const T &text, const std::type_identity_t<T> &background)
{
    constexpr double flare = 0.05;
    const double one = luminance(seenOn(background, text)) + flare;
    const double other = luminance(background) + flare;
    return std::max(one, other) / std::min(one, other);
}

/// Black or white, depending on which is more readable on the background. One of them always
/// reaches `readableContrast`.
template <Color T>
T readableOn(const T &background)
{
    const T black(RGBA { 0, 0, 0, 1 });
    const T white(RGBA { 1, 1, 1, 1 });
    return contrastRatio(black, background) >= contrastRatio(white, background) ? black : white;
}

/// `preferred` if it reaches `readableContrast` on the background, otherwise black or white.
template <Color T>
T readableOn(const T &background, const std::type_identity_t<T> &preferred)
{
    return contrastRatio(preferred, background) >= readableContrast ? preferred
                                                                    : readableOn(background);
}

} // namespace Pellarvine
