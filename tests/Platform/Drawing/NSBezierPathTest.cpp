// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSBezierPath.h>

#include <gtest/gtest.h>

using NS::BezierPath;
using Element = CG::PathElement;

namespace {

const Element quad { Element::addQuadCurveToPoint, { { { 3, 3 }, { 6, 0 } } } };

// A subpath with every kind of element, and a second one that starts at the first one's start.
CG::Path everyKind()
{
    CG::Path path;
    path.moveToPoint({ 1, 2 });
    path.addLineToPoint({ 10, 2 });
    path.addQuadCurveToPoint({ 20, 2 }, { 20, 12 });
    path.addCurveToPoint({ 20, 20 }, { 10, 20 }, { 5, 15 });
    path.closeSubpath();
    path.addLineToPoint({ 1, 30 });
    return path;
}

} // namespace

TEST(NSBezierPath, lines_and_closing_survive_cgPath_and_back)
{
    BezierPath path;
    path.moveToPoint({ 0, 0 });
    path.lineToPoint({ 10, 0 });
    path.lineToPoint({ 10, 5 });
    path.lineToPoint({ 0, 5 });
    path.closePath();
    path.moveToPoint({ 20, 20 });
    path.curveToPoint({ 50, 20 }, { 30, 30 }, { 40, 30 });
    const CG::Path graphicsPath = path.cgPath();
    ASSERT_EQ(graphicsPath.elements().size(), 7);
    EXPECT_EQ(graphicsPath.elements()[4], Element { Element::closeSubpath });
    EXPECT_EQ(graphicsPath.elements()[6],
              (Element { Element::addCurveToPoint, { { { 30, 30 }, { 40, 30 }, { 50, 20 } } } }));
    EXPECT_EQ(BezierPath(graphicsPath), path);
}

TEST(NSBezierPath, a_quadratic_curve_gets_one_point_as_both_controls)
{
    // The exact conversion would give (4, 2) as the second control point.
    CG::Path path;
    path.moveToPoint({ 0, 0 });
    path.addQuadCurveToPoint({ 3, 3 }, { 6, 0 });
    EXPECT_EQ(path.elements().constLast(), quad);
    EXPECT_EQ(BezierPath(path).elements().constLast(),
              (Element { Element::addCurveToPoint, { { { 2, 2 }, { 2, 2 }, { 6, 0 } } } }));

    // The curve starts at the current point. After closing, that is the start of the subpath.
    path.closeSubpath();
    path.addQuadCurveToPoint({ 30, 0 }, { 9, 9 });
    EXPECT_EQ(BezierPath(path).elements().constLast(),
              (Element { Element::addCurveToPoint, { { { 20, 0 }, { 20, 0 }, { 9, 9 } } } }));
}

TEST(NSBezierPath, an_empty_path_is_empty_in_every_form)
{
    EXPECT_TRUE(BezierPath(CG::Path()).isEmpty());
    EXPECT_TRUE(BezierPath().cgPath().isEmpty());
    EXPECT_TRUE(BezierPath(QPainterPath()).isEmpty());
    EXPECT_TRUE(CG::Path().toQPainterPath().isEmpty());
}

TEST(CGPath, the_current_point_follows_every_element)
{
    CG::Path path;
    EXPECT_EQ(path.currentPoint(), std::nullopt);
    const CG::Path full = everyKind();
    EXPECT_EQ(full.currentPoint(), QPointF(1, 30));
    path.moveToPoint({ 1, 2 });
    path.addQuadCurveToPoint({ 5, 5 }, { 9, 2 });
    EXPECT_EQ(path.currentPoint(), QPointF(9, 2));
    path.closeSubpath();
    EXPECT_EQ(path.currentPoint(), QPointF(1, 2));
}

TEST(CGPath, without_a_current_point_nothing_is_added_and_a_warning_printed)
{
    const auto tries = { +[](CG::Path &path) {
                            path.addLineToPoint({ 1, 1 });
                        },
                         +[](CG::Path &path) {
                             path.addQuadCurveToPoint({ 1, 1 }, { 2, 2 });
                         },
                         +[](CG::Path &path) {
                             path.addCurveToPoint({}, {}, { 2, 2 });
                         },
                         +[](CG::Path &path) {
                             path.closeSubpath();
                         } };
    for (const auto &add : tries) {
        CG::Path path;
        ::testing::internal::CaptureStdout();
        add(path);
        EXPECT_EQ(::testing::internal::GetCapturedStdout(),
                  "Warning: path has no current point!\n");
        EXPECT_TRUE(path.isEmpty());
    }
}

TEST(CGPath, is_drawn_exactly_and_goes_on_from_where_it_was_closed)
{
    QPainterPath expected;
    expected.moveTo(1, 2);
    expected.lineTo(10, 2);
    expected.quadTo(20, 2, 20, 12);
    expected.cubicTo(20, 20, 10, 20, 5, 15);
    expected.closeSubpath();
    expected.moveTo(1, 2);
    expected.lineTo(1, 30);
    EXPECT_EQ(everyKind().toQPainterPath(), expected);
}

TEST(CGPath, reads_a_painter_path)
{
    QPainterPath source;
    source.addRect(0, 0, 10, 5);
    source.moveTo(20, 20);
    source.lineTo(30, 20);
    source.cubicTo(30, 30, 20, 30, 20, 20);
    source.moveTo(40, 0);
    source.lineTo(50, 0);
    source.lineTo(50, 9);
    const CG::Path path(source);

    CG::Path expected;
    expected.moveToPoint({ 0, 0 });
    expected.addLineToPoint({ 10, 0 });
    expected.addLineToPoint({ 10, 5 });
    expected.addLineToPoint({ 0, 5 });
    expected.closeSubpath();
    expected.moveToPoint({ 20, 20 });
    expected.addLineToPoint({ 30, 20 });
    expected.addCurveToPoint({ 30, 30 }, { 20, 30 }, { 20, 20 });
    expected.closeSubpath();
    expected.moveToPoint({ 40, 0 });
    expected.addLineToPoint({ 50, 0 });
    expected.addLineToPoint({ 50, 9 });
    EXPECT_EQ(path, expected);
    EXPECT_EQ(path.toQPainterPath(), source);
    EXPECT_EQ(BezierPath(source).cgPath(), expected);
}

TEST(CGPath, is_compared_without_tolerance)
{
    CG::Path first;
    first.moveToPoint({ 1, 1 });
    CG::Path second;
    second.moveToPoint({ 1, 1 + 1e-15 });
    ASSERT_EQ(QPointF(1, 1), QPointF(1, 1 + 1e-15));
    EXPECT_FALSE(first == second);
}
