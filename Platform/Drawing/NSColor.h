// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/ColorComponents.h>
#include <pellarvine/Platform/Global.h>

#include <QColor>
#include <QMetaType>

QT_FORWARD_DECLARE_CLASS(QDataStream)
QT_FORWARD_DECLARE_CLASS(QDebug)

namespace NS {

/// A colour as four doubles, for arithmetic without loss. Components are nominally 0…1 and never
/// clamped.
///
///     const NS::Color accent({ .red = 0.2, .green = 0.6, .blue = 0.86 });
///     auto components = accent.hsba();
///     components.brightness *= 1.25;
///     painter.setBrush(NS::Color(components).toQColor());
///
/// A plain value, for any thread: it compares, streams, prints, hashes, and converts inside a
/// QVariant to and from QColor and QString (a hex text such as "#3399DBFF").
class PELLARVINE_EXPORT Color
{
public:
    /// Opaque black.
    constexpr Color() noexcept = default;

    /// Components outside 0…1 are kept.
    constexpr explicit Color(const Pellarvine::RGBA &components) noexcept
        : m_components(components)
    { }

    /// Converts by the hexcone model. The hue is an angle: 1.25 is 0.25.
    explicit Color(const Pellarvine::HSBA &components) noexcept;

    /// The exact components of a QColor of any spec. An invalid one gives opaque black.
    explicit Color(const QColor &color) noexcept;

    static constexpr Color black() noexcept { return Color(); } ///< opaque
    /// Opaque too.
    static constexpr Color white() noexcept { return Color(Pellarvine::RGBA { 1, 1, 1, 1 }); }

    /// The components as they were given or computed.
    constexpr const Pellarvine::RGBA &rgba() const noexcept { return m_components; }

    /// Converts by the hexcone model. The hue is in 0…1 without 1. A grey has hue and saturation 0.
    /// Components out of range give a saturation or brightness out of range, and convert back.
    Pellarvine::HSBA hsba() const noexcept;

    /// The nearest QColor: 16 bits a component, clamped to 0…1.
    QColor toQColor() const noexcept;

    /// Compares bit by bit, without tolerance.
    friend constexpr bool operator==(const Color &, const Color &) noexcept = default;
    /// Equal for equal colours. Not stable between versions.
    friend PELLARVINE_EXPORT size_t qHash(const Color &color, size_t seed) noexcept;

    /// Four doubles: red, green, blue, alpha.
    friend PELLARVINE_EXPORT QDataStream &operator<<(QDataStream &stream, const Color &color);
    /// Reads the four doubles without clamping.
    friend PELLARVINE_EXPORT QDataStream &operator>>(QDataStream &stream, Color &color);
    /// `NS::Color(red, green, blue, alpha)`, with the numbers.
    friend PELLARVINE_EXPORT QDebug operator<<(QDebug debug, const Color &color);

private:
    Pellarvine::RGBA m_components;
};

} // namespace NS

Q_DECLARE_METATYPE(NS::Color)
