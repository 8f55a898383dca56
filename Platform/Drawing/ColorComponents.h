// SPDX-License-Identifier: MIT
#pragma once

namespace Pellarvine {

/// A colour as red, green, blue and opacity, nominally 0…1 each and never clamped. A plain value,
/// for any thread.
struct RGBA
{
    double red = 0; ///< 0 without, 1 full
    double green = 0; ///< 0 without, 1 full
    double blue = 0; ///< 0 without, 1 full
    double alpha = 1; ///< 0 clear, 1 opaque; the others are not multiplied by it

    friend constexpr bool operator==(const RGBA &, const RGBA &) = default;
};

/// A colour as hue, saturation, brightness and opacity, nominally 0…1 each. The hue runs once
/// round the colour circle: red at 0, green at 1/3, blue at 2/3. A plain value, for any thread.
///
///     const Pellarvine::HSBA amber { .hue = 1.0 / 8, .saturation = 0.8, .brightness = 0.9 };
///     painter.setPen(NS::Color(amber).toQColor());
struct HSBA
{
    double hue = 0; ///< where on the circle
    double saturation = 0; ///< 0 grey, 1 pure
    double brightness = 0; ///< 0 black, 1 as bright as the hue gets
    double alpha = 1; ///< 0 clear, 1 opaque

    friend constexpr bool operator==(const HSBA &, const HSBA &) = default;
};

} // namespace Pellarvine
