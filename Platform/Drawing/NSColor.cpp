// SPDX-License-Identifier: MIT
#include "Drawing/NSColor.h"

#include <QDataStream>
#include <QDebug>
#include <QHashFunctions>
#include <QRgba64>

#include <algorithm>
#include <cmath>
#include <functional>

namespace NS {

using Pellarvine::HSBA;
using Pellarvine::RGBA;

namespace {

// QColor has 16 bits for a component. Its float accessors round that to 24 bits, which do not
// distinguish 26/255 from the value just below.
constexpr double largestComponent = 65535;

RGBA components(const QColor &color)
{
    if (color.spec() == QColor::ExtendedRgb)
        return { color.redF(), color.greenF(), color.blueF(), color.alphaF() };
    const QRgba64 exact = color.rgba64();
    return { exact.red() / largestComponent, exact.green() / largestComponent,
             exact.blue() / largestComponent, exact.alpha() / largestComponent };
}

// One component of the hexcone model, which falls and rises in steps of a sixth of the circle.
// `offset` is 5 for red, 3 for green, 1 for blue.
double component(const HSBA &color, int offset)
{
    const double turn = color.hue - std::floor(color.hue);
    const double position = std::fmod(offset + 6 * turn, 6.0);
    const double depth = std::clamp(std::min(position, 4 - position), 0.0, 1.0);
    return color.brightness - color.brightness * color.saturation * depth;
}

quint16 rounded(double component)
{
    if (!(component > 0)) // not a number either
        return 0;
    return quint16(std::lround(std::min(component, 1.0) * largestComponent));
}

// Registered once, when the library is loaded: by name, for properties and queued connections, and
// as conversions between a QVariant of one type and code that expects the other.
[[maybe_unused]] const bool isColorRegistered = [] {
    qRegisterMetaType<Color>("NS::Color");
    QMetaType::registerConverter<Color, QColor>(std::mem_fn(&Color::toQColor));
    QMetaType::registerConverter<QColor, Color>([](const QColor &color) { return Color(color); });
    return true;
}();

} // namespace

Color::Color(const HSBA &color) noexcept
    : m_components { component(color, 5), component(color, 3), component(color, 1), color.alpha }
{ }

Color::Color(const QColor &color) noexcept
    : m_components(components(color))
{ }

HSBA Color::hsba() const noexcept
{
    const auto &[red, green, blue, alpha] = m_components;
    const double most = std::max({ red, green, blue });
    const double range = most - std::min({ red, green, blue });
    HSBA color { 0, 0, most, alpha };
    if (range == 0 || most == 0)
        return color;
    color.saturation = range / most;
    if (most == red)
        color.hue = (green - blue) / range;
    else if (most == green)
        color.hue = (blue - red) / range + 2;
    else
        color.hue = (red - green) / range + 4;
    color.hue /= 6;
    if (color.hue < 0)
        color.hue += 1;
    if (color.hue >= 1) // rounded up to it
        color.hue = 0;
    return color;
}

QColor Color::toQColor() const noexcept
{
    return QColor::fromRgba64(rounded(m_components.red), rounded(m_components.green),
                              rounded(m_components.blue), rounded(m_components.alpha));
}

size_t qHash(const Color &color, size_t seed) noexcept
{
    const auto &[red, green, blue, alpha] = color.m_components;
    return qHashMulti(seed, red, green, blue, alpha);
}

QDataStream &operator<<(QDataStream &stream, const Color &color)
{
    const auto &[red, green, blue, alpha] = color.m_components;
    return stream << red << green << blue << alpha;
}

QDataStream &operator>>(QDataStream &stream, Color &color)
{
    auto &[red, green, blue, alpha] = color.m_components;
    return stream >> red >> green >> blue >> alpha;
}

QDebug operator<<(QDebug debug, const Color &color)
{
    const QDebugStateSaver saver(debug);
    const auto &[red, green, blue, alpha] = color.m_components;
    debug.nospace() << "NS::Color(" << red << ", " << green << ", " << blue << ", " << alpha << ')';
    return debug;
}

} // namespace NS
