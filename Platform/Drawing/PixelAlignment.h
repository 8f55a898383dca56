// SPDX-License-Identifier: MIT
// Not API: rectangles on whole pixels of screens whose scale is no whole number.
#pragma once

#include "Base/Global.h"

#include <QRectF>

QT_FORWARD_DECLARE_CLASS(QTransform)

namespace Pellarvine::detail {

/// The thickness of a line in whole pixels, at least one.
PELLARVINE_PRIVATE_EXPORT double wholeThickness(double pixels);

/// The rectangle moved to whole pixels, in the same coordinates. Each edge is counted from the
/// nearer side of `space`, whose own edges are rounded, so that opposite sides look alike; and the
/// thickness of a line is wholeThickness(), so that it is the same everywhere.
/// `toDevice` takes both rectangles to pixels; if it turns or shears, `rect` stays as it is.
PELLARVINE_PRIVATE_EXPORT QRectF alignedToPixels(const QRectF &rect, const QRectF &space,
                                                 const QTransform &toDevice);

} // namespace Pellarvine::detail
