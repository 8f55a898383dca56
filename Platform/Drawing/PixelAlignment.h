// SPDX-License-Identifier: MIT
// Not API: rectangles on whole pixels of screens whose scale is no whole number.
#pragma once

#include "Base/Global.h"

#include <QRectF>

QT_FORWARD_DECLARE_CLASS(QTransform)

namespace Pellarvine::detail {

/// The thickness of a line in whole pixels, at least one. It is rounded down, as browsers round the
/// widths of borders: a rectangle beside the line is rounded on its own, and would cover the last
/// pixel of a line that was rounded up.
PELLARVINE_PRIVATE_EXPORT double wholeThickness(double pixels);

/// Aligns a rectangle to whole pixels, in the same coordinates. The edges of `space` are rounded.
/// The distance of each edge of `rect` from the nearer one is rounded down, so that opposite sides
/// look the same and lines meet at corners. The thickness of a line is wholeThickness(), so it is
/// the same everywhere. `toDevice` maps both rectangles to pixels. If it rotates or shears, `rect`
/// is returned unchanged.
PELLARVINE_PRIVATE_EXPORT QRectF alignedToPixels(const QRectF &rect, const QRectF &space,
                                                 const QTransform &toDevice);

struct Outline
{
    QRectF middle; ///< the rectangle along which the middle of the line runs
    double thickness;
};

/// A line along the inner side of the edges of `rect`, on whole pixels. It is equally thick on all
/// sides, and its thickness is wholeThickness(). If `toDevice` rotates or shears, nothing is
/// rounded.
PELLARVINE_PRIVATE_EXPORT Outline outlineInside(const QRectF &rect, double thickness,
                                                const QTransform &toDevice);

} // namespace Pellarvine::detail
