// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QPointF>
#include <QRectF>

/// @file
/// Converts between the coordinates of `NS::` functions, with y upwards from the lower left corner,
/// and those of Qt, with y downwards from the upper left corner:
///
///     const QRectF inQt = NS::flipped(NS::frame(badge), panel->height());
///     const QRect place = NS::roundedToUnits(inQt); // badge->geometry()
///
/// Any thread.
namespace NS {

/// The rectangle in the other coordinates, in a space of the given height. The function is its own
/// inverse.
PELLARVINE_EXPORT QRectF flipped(const QRectF &rect, double height);
/// The point in the other coordinates.
PELLARVINE_EXPORT QPointF flipped(QPointF point, double height);

/// The rectangle with each edge rounded to a whole unit.
PELLARVINE_EXPORT QRect roundedToUnits(const QRectF &rect);

} // namespace NS
