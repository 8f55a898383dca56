// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QList>
#include <QPainterPath>
#include <QPointF>

#include <array>
#include <optional>

namespace CG {

/// One step of a path. Unused points are (0, 0).
struct PathElement
{
    /// The kind of the step, and the points that it uses.
    enum Type {
        moveToPoint, ///< points: where a subpath starts
        addLineToPoint, ///< points: end
        addQuadCurveToPoint, ///< points: control, end
        addCurveToPoint, ///< points: control 1, control 2, end
        closeSubpath, ///< no points
    };

    Type type; ///< has to be given
    std::array<QPointF, 3> points {}; ///< from the first

    /// Compares bit by bit; QPointF compares with a tolerance.
    friend PELLARVINE_EXPORT bool operator==(const PathElement &first, const PathElement &second);
};

/// A path of lines, quadratic and cubic curves in the order in which they were added.
///
///     CG::Path path;
///     path.moveToPoint({ 0, 0 });
///     path.addQuadCurveToPoint({ 30, 30 }, { 60, 0 });
///     path.closeSubpath();
///     painter.drawPath(path.toQPainterPath());
///
/// Lines, curves and closing need a current point; without one they add nothing and print a
/// warning. A plain value, for any thread.
class PELLARVINE_EXPORT Path
{
public:
    Path() = default; ///< empty

    /// Copies a QPainterPath, which does not mark closed subpaths and has only cubic curves: a
    /// subpath that ends at its start becomes a closed one, and quadratic curves are cubic ones.
    explicit Path(const QPainterPath &path);

    void moveToPoint(const QPointF &point); ///< starts a subpath; the one before stays open
    void addLineToPoint(const QPointF &end); ///< a straight line from the current point
    /// A quadratic curve from the current point to `end`, with one control point.
    void addQuadCurveToPoint(const QPointF &control, const QPointF &end);
    /// A cubic curve from the current point to `end`, with two control points.
    void addCurveToPoint(const QPointF &control1, const QPointF &control2, const QPointF &end);
    void closeSubpath(); ///< a straight line back to where the subpath started

    /// In the order in which they were added.
    const QList<PathElement> &elements() const { return m_elements; }
    bool isEmpty() const { return m_elements.isEmpty(); } ///< no elements

    /// The end of the last element, or the start of the subpath after closing. Nothing for an empty
    /// path.
    const std::optional<QPointF> &currentPoint() const { return m_currentPoint; }

    /// The same shape for drawing. Quadratic curves are converted exactly.
    QPainterPath toQPainterPath() const;

    /// The same elements with the same points, bit for bit.
    friend bool operator==(const Path &first, const Path &second)
    {
        return first.m_elements == second.m_elements;
    }

private:
    void add(const PathElement &element, const QPointF &end);

    QList<PathElement> m_elements;
    std::optional<QPointF> m_currentPoint;
    QPointF m_start; // of the current subpath
};

} // namespace CG
