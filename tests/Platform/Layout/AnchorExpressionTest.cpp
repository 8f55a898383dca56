// SPDX-License-Identifier: MIT
#include "Layout/AnchorExpression.h"

#include <gtest/gtest.h>

#include <array>

using NS::LayoutAttribute;

namespace Pellarvine::detail {

namespace {

using Variable = ConstraintSolver::Variable;

constexpr Variable hostWidth { 0 };
const AnchorAxis hostAxis { {}, hostWidth };
constexpr Variable hostHeight { 1 };
constexpr Variable x { 2 };
constexpr Variable y { 3 };
constexpr Variable width { 4 };
constexpr Variable height { 5 };
constexpr std::array values { 100.0, 80.0, 10.0, 20.0, 30.0, 40.0 };

Anchor item(LayoutAttribute attribute, Baseline baseline = {})
{
    return { attribute, { x, width }, { y, height }, baseline };
}

Anchor host(LayoutAttribute attribute)
{
    return { attribute, { {}, hostWidth, 7.0, 3.0 }, { {}, hostHeight, 2.0, 5.0 }, {} };
}

double value(const Anchor &first, double multiplier = 1.0, const Anchor &second = {},
             double constant = 0.0, const std::optional<AnchorAxis> &mirroring = {})
{
    const auto expression = anchorExpression(first, multiplier, second, constant, mirroring);
    double sum = expression.constant;
    for (const auto &[variable, coefficient] : expression.terms)
        sum += coefficient * values[int(variable)];
    return sum;
}

} // namespace

TEST(AnchorExpression, each_attribute_is_the_line_it_names)
{
    struct Row
    {
        LayoutAttribute attribute;
        double ofItem;
        double ofHost; // without its alignment insets
        double ofItemMirrored;
        double ofHostMirrored;
    };
    const Row rows[] = {
        { LayoutAttribute::left, 10, 7, 10, 7 },
        { LayoutAttribute::right, 40, 97, 40, 97 },
        { LayoutAttribute::centerX, 25, 52, 25, 52 },
        { LayoutAttribute::leading, 10, 7, 60, 3 }, // mirrored: from the right
        { LayoutAttribute::trailing, 40, 97, 90, 93 },
        { LayoutAttribute::top, 20, 2, 20, 2 },
        { LayoutAttribute::bottom, 60, 75, 60, 75 },
        { LayoutAttribute::centerY, 40, 38.5, 40, 38.5 },
        { LayoutAttribute::width, 30, 90, 30, 90 },
        { LayoutAttribute::height, 40, 73, 40, 73 },
    };
    for (const auto &[attribute, ofItem, ofHost, ofItemMirrored, ofHostMirrored] : rows) {
        EXPECT_EQ(value(item(attribute)), ofItem) << int(attribute);
        EXPECT_EQ(value(host(attribute)), ofHost) << int(attribute);
        EXPECT_EQ(value(item(attribute), 1.0, {}, 0.0, hostAxis), ofItemMirrored) << int(attribute);
        EXPECT_EQ(value(host(attribute), 1.0, {}, 0.0, hostAxis), ofHostMirrored) << int(attribute);
    }
    EXPECT_EQ(value(item(LayoutAttribute::firstBaseline, { 0.0, 12.0 })), 32);
    EXPECT_EQ(value(item(LayoutAttribute::lastBaseline, { 1.0, -5.0 })), 55);
}

TEST(AnchorExpression, is_0_where_first_is_multiplier_times_second_plus_constant)
{
    EXPECT_EQ(value(item(LayoutAttribute::height), 1.0, item(LayoutAttribute::width), 10), 0);
    EXPECT_EQ(value(item(LayoutAttribute::width), 0.5, item(LayoutAttribute::height), 10), 0);
    EXPECT_EQ(value(item(LayoutAttribute::width), 0.0, {}, 30), 0);
    EXPECT_EQ(value(host(LayoutAttribute::right), 1.0, item(LayoutAttribute::right), 57), 0);
    // In a mirrored layout, both constants grow away from the right, which is the leading side.
    EXPECT_EQ(value(item(LayoutAttribute::leading), 1.0, host(LayoutAttribute::leading), 57,
                    hostAxis),
              0);
    EXPECT_EQ(
            value(item(LayoutAttribute::leading), 1.0, host(LayoutAttribute::right), 57, hostAxis),
            0);
}

} // namespace Pellarvine::detail
