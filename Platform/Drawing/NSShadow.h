// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSColor.h>

#include <QSizeF>

QT_FORWARD_DECLARE_CLASS(QPainter)
QT_FORWARD_DECLARE_CLASS(QPainterPath)

namespace NS {

/// A soft shadow of any path, in one call:
///
///     const NS::Shadow shadow(NS::Color({ .red = 0, .alpha = 0.3 }), { 0, -2 }, 6);
///     shadow.draw(painter, card);
///     painter.fillPath(card, palette().base());
///
/// A plain value, for any thread.
class PELLARVINE_EXPORT Shadow
{
public:
    /// `offset` in points: the width to the right, the height upwards. Light from above has a
    /// negative height. `blurRadius` in points: the width of the blurred edge, twice the standard
    /// deviation of a Gaussian. 0 and less draws a sharp edge; 512 is the maximum.
    Shadow(const Color &color, const QSizeF &offset, double blurRadius)
        : m_color(color)
        , m_offset(offset)
        , m_blurRadius(blurRadius)
    { }

    const Color &color() const { return m_color; } ///< where the path is opaque, before blurring
    QSizeF offset() const { return m_offset; } ///< in points: to the right, upwards
    double blurRadius() const { return m_blurRadius; } ///< in points, as it was given

    /// Draws the shadow of the filled `path`, also below the path itself. Offset and radius keep
    /// their direction and length under every transform of the painter.
    void draw(QPainter &painter, const QPainterPath &path) const;

    friend bool operator==(const Shadow &, const Shadow &) = default;

private:
    Color m_color;
    QSizeF m_offset;
    double m_blurRadius;
};

} // namespace NS
