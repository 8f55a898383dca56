// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/CGPath.h>

namespace NS {

/// A path of lines and cubic curves.
///
///     NS::BezierPath path;
///     path.moveToPoint({ 0, 0 });
///     path.lineToPoint({ 60, 0 });
///     path.closePath();
///     painter.fillPath(path.toQPainterPath(), brush);
///
/// Lines, curves and closing need a current point; without one they add nothing and print a
/// warning. A plain value, for any thread.
class PELLARVINE_EXPORT BezierPath
{
public:
    BezierPath() = default; ///< empty

    /// Copies the elements. A quadratic curve becomes a cubic one with both control points at
    /// (current point + 2 × control) / 3, so it bends less towards its end than the original.
    /// `CG::Path::toQPainterPath` converts exactly.
    explicit BezierPath(const CG::Path &path);

    /// A subpath that ends at its start is closed.
    explicit BezierPath(const QPainterPath &path);

    void moveToPoint(const QPointF &point); ///< starts a subpath; the one before stays open
    void lineToPoint(const QPointF &end); ///< a straight line from the current point
    /// A cubic curve from the current point, with two control points.
    void curveToPoint(const QPointF &end, const QPointF &controlPoint1,
                      const QPointF &controlPoint2);
    void closePath(); ///< a straight line back to where the subpath started

    /// None of them is a quadratic curve.
    const QList<CG::PathElement> &elements() const { return m_path.elements(); }
    bool isEmpty() const { return m_path.isEmpty(); } ///< no elements

    /// The current point; nothing for an empty path.
    const std::optional<QPointF> &currentPoint() const { return m_path.currentPoint(); }

    /// The same elements as a CG::Path. Open subpaths stay open.
    CG::Path cgPath() const { return m_path; }

    /// The same shape for drawing.
    QPainterPath toQPainterPath() const { return m_path.toQPainterPath(); }

    friend bool operator==(const BezierPath &, const BezierPath &) = default;

private:
    CG::Path m_path;
};

} // namespace NS
