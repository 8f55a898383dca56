// SPDX-License-Identifier: MIT
#include "Drawing/CGPath.h"

#include "Base/Failure.h"

#include <algorithm>

namespace CG {

namespace {

bool isSame(const QPointF &first, const QPointF &second)
{
    return first.x() == second.x() && first.y() == second.y();
}

} // namespace

bool operator==(const PathElement &first, const PathElement &second)
{
    return first.type == second.type && std::ranges::equal(first.points, second.points, isSame);
}

Path::Path(const QPainterPath &path)
{
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        const bool isLast = i + 1 == path.elementCount() || path.elementAt(i + 1).isMoveTo();
        if (element.isMoveTo()) {
            moveToPoint(element);
            continue;
        }
        if (element.isLineTo()) {
            // Closing draws this line.
            if (isLast && isSame(element, m_start))
                closeSubpath();
            else
                addLineToPoint(element);
            continue;
        }
        // A curve takes three elements.
        const QPointF end = path.elementAt(i + 2);
        addCurveToPoint(element, path.elementAt(i + 1), end);
        i += 2;
        const bool isLastCurve = i + 1 == path.elementCount() || path.elementAt(i + 1).isMoveTo();
        if (isLastCurve && isSame(end, m_start))
            closeSubpath();
    }
}

void Path::moveToPoint(const QPointF &point)
{
    m_elements.append({ PathElement::moveToPoint, { point } });
    m_currentPoint = point;
    m_start = point;
}

void Path::addLineToPoint(const QPointF &end)
{
    add({ PathElement::addLineToPoint, { end } }, end);
}

void Path::addQuadCurveToPoint(const QPointF &control, const QPointF &end)
{
    add({ PathElement::addQuadCurveToPoint, { control, end } }, end);
}

void Path::addCurveToPoint(const QPointF &control1, const QPointF &control2, const QPointF &end)
{
    add({ PathElement::addCurveToPoint, { control1, control2, end } }, end);
}

void Path::closeSubpath()
{
    add({ PathElement::closeSubpath }, m_start);
}

void Path::add(const PathElement &element, const QPointF &end)
{
    if (!m_currentPoint) {
        detail::printWarning("Warning: path has no current point!");
        return;
    }
    m_elements.append(element);
    m_currentPoint = end;
}

QPainterPath Path::toQPainterPath() const
{
    QPainterPath path;
    QPointF start;
    bool isClosed = false;
    for (const auto &[type, points] : m_elements) {
        // Qt would continue from (0, 0).
        if (isClosed && type != PathElement::moveToPoint)
            path.moveTo(start);
        isClosed = type == PathElement::closeSubpath;
        switch (type) {
        case PathElement::moveToPoint:
            start = points[0];
            path.moveTo(start);
            break;
        case PathElement::addLineToPoint:
            path.lineTo(points[0]);
            break;
        case PathElement::addQuadCurveToPoint:
            path.quadTo(points[0], points[1]);
            break;
        case PathElement::addCurveToPoint:
            path.cubicTo(points[0], points[1], points[2]);
            break;
        case PathElement::closeSubpath:
            path.closeSubpath();
            break;
        }
    }
    return path;
}

} // namespace CG
