// SPDX-License-Identifier: MIT
#pragma once

namespace Pellarvine {

/// A colour as red, green, blue and opacity, nominally 0…1 each and never clamped.
struct RGBA
{
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    friend constexpr bool operator==(const RGBA &, const RGBA &) = default;
};

/// A colour as hue, saturation, brightness and opacity, nominally 0…1 each. The hue runs once
/// round the colour circle: red at 0, green at 1/3, blue at 2/3.
struct HSBA
{
    double hue = 0;
    double saturation = 0;
    double brightness = 0;
    double alpha = 1;

    friend constexpr bool operator==(const HSBA &, const HSBA &) = default;
};

} // namespace Pellarvine
