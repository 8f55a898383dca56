// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QPointF>
#include <QRectF>

/// @file
/// Between the coordinates of views, whose y grows upwards from the lower left corner, and those of
/// Qt, whose y grows downwards from the upper left.
namespace NS {

/// The rectangle in the other coordinates, in a space of that height. It is its own inverse.
PELLARVINE_EXPORT QRectF flipped(const QRectF &rect, double height);
/// Likewise a point.
PELLARVINE_EXPORT QPointF flipped(QPointF point, double height);

/// The nearest rectangle of whole units, edge by edge.
PELLARVINE_EXPORT QRect roundedToUnits(const QRectF &rect);

} // namespace NS
