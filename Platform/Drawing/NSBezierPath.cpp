// SPDX-License-Identifier: MIT
#include "Drawing/NSBezierPath.h"

namespace NS {

using CG::PathElement;

BezierPath::BezierPath(const CG::Path &path)
{
    for (const auto &[type, points] : path.elements()) {
        switch (type) {
        case PathElement::moveToPoint:
            moveToPoint(points[0]);
            break;
        case PathElement::addLineToPoint:
            lineToPoint(points[0]);
            break;
        case PathElement::addQuadCurveToPoint: {
            // Both control points are equal by design. An exact conversion would have the second
            // one nearer to the end.
            const QPointF control = (*currentPoint() + 2 * points[0]) / 3;
            curveToPoint(points[1], control, control);
            break;
        }
        case PathElement::addCurveToPoint:
            curveToPoint(points[2], points[0], points[1]);
            break;
        case PathElement::closeSubpath:
            closePath();
            break;
        }
    }
}

BezierPath::BezierPath(const QPainterPath &path)
    : m_path(path)
{ }

void BezierPath::moveToPoint(const QPointF &point)
{
    m_path.moveToPoint(point);
}

void BezierPath::lineToPoint(const QPointF &end)
{
    m_path.addLineToPoint(end);
}

void BezierPath::curveToPoint(const QPointF &end, const QPointF &controlPoint1,
                              const QPointF &controlPoint2)
{
    m_path.addCurveToPoint(controlPoint1, controlPoint2, end);
}

void BezierPath::closePath()
{
    m_path.closeSubpath();
}

} // namespace NS
