// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSColor.h>

#include <QSizeF>

QT_FORWARD_DECLARE_CLASS(QPainter)
QT_FORWARD_DECLARE_CLASS(QPainterPath)

namespace NS {

/// A soft shadow, described in one call and drawn under any path.
///
///     const NS::Shadow shadow(NS::Color({ .red = 0, .alpha = 0.3 }), { 0, -2 }, 6);
///     shadow.draw(painter, card);
///     painter.fillPath(card, palette().base());
///
/// A plain value.
class PELLARVINE_EXPORT Shadow
{
public:
    /// `offset` in points: width to the right, height upwards, so a light from above has a
    /// negative height. `blurRadius` in points: how far the edge is smeared; twice the standard
    /// deviation of a Gaussian. 0 and less draws a sharp edge, 512 is the most.
    Shadow(const Color &color, const QSizeF &offset, double blurRadius)
        : m_color(color)
        , m_offset(offset)
        , m_blurRadius(blurRadius)
    { }

    const Color &color() const { return m_color; } ///< where the path is opaque, before blurring
    QSizeF offset() const { return m_offset; } ///< in points: to the right, upwards
    double blurRadius() const { return m_blurRadius; } ///< in points, as it was given

    /// Draws the shadow that the filled `path` casts, below the path too. Offset and radius keep
    /// their direction and length whatever the painter's transform does to the path.
    void draw(QPainter &painter, const QPainterPath &path) const;

    friend bool operator==(const Shadow &, const Shadow &) = default;

private:
    Color m_color;
    QSizeF m_offset;
    double m_blurRadius;
};

} // namespace NS
