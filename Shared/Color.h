// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/ColorComponents.h>

#include <array>
#include <concepts>
#include <cstdint>
#include <type_traits>

/// @file
/// Operations on any colour type, and a palette. The functions may be called from any thread.

namespace Pellarvine {

/// A colour type that has the functions rgba() and hsba(), and constructors from `RGBA` and `HSBA`
/// components, such as NS::Color. The functions and the palette below work with each such type:
///
///     using namespace Pellarvine;
///     const auto edge = darker(Palette<NS::Color>::emerald());
///     const auto hover = withScaledBrightness(edge, 1.1);
///     const auto middle = interpolate(edge, hover, 0.5);
template <typename T>
concept Color = std::constructible_from<T, RGBA> && std::constructible_from<T, HSBA> && requires(
        const T &color)
{
    {
        color.rgba()
        } -> std::convertible_to<RGBA>;
    {
        color.hsba()
        } -> std::convertible_to<HSBA>;
};

/// The colour with its brightness multiplied by `factor`. A brightness above 1 is not clamped.
template <Color T>
T withScaledBrightness(const T &color, double factor)
{
    HSBA components = color.hsba();
    components.brightness *= factor;
    return T(components);
}

/// The colour with 0.8 of its brightness.
template <Color T>
T darker(const T &color)
{
    return withScaledBrightness(color, 0.8);
}

/// The colour with 1.25 of its brightness: the inverse of `darker`.
template <Color T>
T lighter(const T &color)
{
    return withScaledBrightness(color, 1.25);
}

/// Interpolates linearly between two colours, opacity included: `first` at position 0, `second` at
/// position 1. Positions outside 0…1 extrapolate.
template <Color T>
T interpolate(const T &first, const std::type_identity_t<T> &second, double position)
{
    const RGBA from = first.rgba();
    const RGBA to = second.rgba();
    return T(RGBA {
            from.red + (to.red - from.red) * position,
            from.green + (to.green - from.green) * position,
            from.blue + (to.blue - from.blue) * position,
            from.alpha + (to.alpha - from.alpha) * position,
    });
}

/// Nineteen opaque colours, as any colour type.
template <Color T>
struct Palette
{
    static T turquoise() { return color(26, 188, 156); } ///< `#1ABC9C`
    static T greenSea() { return color(22, 160, 133); } ///< `#16A085`
    static T emerald() { return color(46, 204, 113); } ///< `#2ECC71`
    static T nephritis() { return color(39, 174, 96); } ///< `#27AE60`
    static T peterRiver() { return color(52, 152, 219); } ///< `#3498DB`
    static T belizeHole() { return color(41, 128, 185); } ///< `#2980B9`
    static T amethyst() { return color(155, 89, 182); } ///< `#9B59B6`
    static T wisteria() { return color(142, 68, 173); } ///< `#8E44AD`
    static T wetAsphalt() { return color(52, 73, 94); } ///< `#34495E`
    static T midnightBlue() { return color(44, 62, 80); } ///< `#2C3E50`
    static T sunflower() { return color(241, 196, 15); } ///< `#F1C40F`
    static T carrot() { return color(230, 126, 34); } ///< `#E67E22`
    static T pumpkin() { return color(211, 84, 0); } ///< `#D35400`
    static T alizarin() { return color(231, 76, 60); } ///< `#E74C3C`
    static T pomergranate() { return color(192, 57, 43); } ///< `#C0392B`; this spelling is intended
    static T clouds() { return color(236, 240, 241); } ///< `#ECF0F1`
    static T silver() { return color(189, 195, 199); } ///< `#BDC3C7`
    static T concrete() { return color(149, 165, 166); } ///< `#95A5A6`
    static T asbestos() { return color(127, 140, 141); } ///< `#7F8C8D`

    /// A colour and its name.
    struct Entry
    {
        const char *name; ///< the name of the function
        T color; ///< the colour, which is opaque
    };
    /// All colours with their names, in the order above.
    static std::array<Entry, 19> all()
    {
        return { {
                { "turquoise", turquoise() },
                { "greenSea", greenSea() },
                { "emerald", emerald() },
                { "nephritis", nephritis() },
                { "peterRiver", peterRiver() },
                { "belizeHole", belizeHole() },
                { "amethyst", amethyst() },
                { "wisteria", wisteria() },
                { "wetAsphalt", wetAsphalt() },
                { "midnightBlue", midnightBlue() },
                { "sunflower", sunflower() },
                { "carrot", carrot() },
                { "pumpkin", pumpkin() },
                { "alizarin", alizarin() },
                { "pomergranate", pomergranate() },
                { "clouds", clouds() },
                { "silver", silver() },
                { "concrete", concrete() },
                { "asbestos", asbestos() },
        } };
    }

private:
    static T color(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
    {
        return T(RGBA { red / 255.0, green / 255.0, blue / 255.0, 1.0 });
    }
};

} // namespace Pellarvine
