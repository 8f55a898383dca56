// SPDX-License-Identifier: MIT
#include "Drawing/NSGeometry.h"

namespace NS {

QRectF flipped(const QRectF &rect, double height)
{
    return { rect.x(), height - rect.y() - rect.height(), rect.width(), rect.height() };
}

QPointF flipped(QPointF point, double height)
{
    return { point.x(), height - point.y() };
}

QRect roundedToUnits(const QRectF &rect)
{
    const QPoint topLeft(qRound(rect.left()), qRound(rect.top()));
    const QPoint bottomRight(qRound(rect.right()), qRound(rect.bottom()));
    return { topLeft, QSize(std::max(0, bottomRight.x() - topLeft.x()),
                            std::max(0, bottomRight.y() - topLeft.y())) };
}

} // namespace NS
