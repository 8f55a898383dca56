// SPDX-License-Identifier: MIT
#include "Layout/IntrinsicLength.h"

#include <gtest/gtest.h>

namespace Pellarvine::detail {

namespace {

class Hinting : public QWidget
{
public:
    QSize sizeHint() const override { return { 100, 40 }; }
    QSize minimumSizeHint() const override { return { 60, 30 }; }
};

} // namespace

TEST(IntrinsicLength, a_widget_is_asked_in_either_direction)
{
    Hinting widget;
    widget.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    widget.setMinimumSize(70, 0);
    widget.setMaximumSize(QWIDGETSIZE_MAX, 90);
    const auto [width, height] = sizeHints(&widget);
    EXPECT_EQ(width.policy, QSizePolicy::Expanding);
    EXPECT_EQ(width.hint, 100.0);
    EXPECT_EQ(width.minimumHint, 60.0);
    EXPECT_EQ(width.minimum, 70.0);
    EXPECT_EQ(width.maximum, QWIDGETSIZE_MAX);
    EXPECT_EQ(height.policy, QSizePolicy::Fixed);
    EXPECT_EQ(height.hint, 40.0);
    EXPECT_EQ(height.minimumHint, 30.0);
    EXPECT_EQ(height.minimum, 0.0);
    EXPECT_EQ(height.maximum, 90.0);
}

// Levels: 0.5 no preference, 100 expanding, 250 hugging, 750 resistance, 900 minimum size hints,
// 990 minimum and maximum sizes.
TEST(IntrinsicLength, policies_hints_and_limits_decide_the_target_and_its_priorities)
{
    constexpr std::optional<double> none;
    const std::tuple<const char *, LengthHints, IntrinsicLength> rows[] = {
        { "no hint", {}, { 0, none, none, 0.5, 0.5, 900 } },
        { "preferred", { .hint = 100 }, { 100, 0, none, 750, 250, 900 } },
        { "with a minimum hint",
          { .hint = 100, .minimumHint = 50 },
          { 100, 50, none, 750, 250, 900 } },
        { "with a larger minimum hint",
          { .hint = 100, .minimumHint = 120 },
          { 120, none, none, 900, 250, 900 } },
        { "expanding",
          { .policy = QSizePolicy::Expanding, .hint = 100 },
          { 100, 0, none, 750, 100, 900 } },
        { "fixed",
          { .policy = QSizePolicy::Fixed, .hint = 100, .minimumHint = 50 },
          { 100, none, none, 900, 750, 900 } },
        { "minimum",
          { .policy = QSizePolicy::Minimum, .hint = 100, .minimumHint = 50 },
          { 100, none, none, 900, 250, 900 } },
        { "maximum",
          { .policy = QSizePolicy::Maximum, .hint = 100, .minimumHint = 50 },
          { 100, 50, none, 750, 750, 900 } },
        { "ignored",
          { .policy = QSizePolicy::Ignored, .hint = 100, .minimumHint = 50 },
          { 0, none, none, 0.5, 0.5, 900 } },
        { "explicit limits around the hint",
          { .hint = 100, .minimumHint = 50, .minimum = 70, .maximum = 130 },
          { 100, 70, 130, 750, 250, 990 } },
        { "a minimum above the hint",
          { .hint = 100, .minimum = 110 },
          { 110, none, none, 990, 250, 990 } },
        { "a maximum below the hint",
          { .hint = 100, .minimumHint = 50, .maximum = 80 },
          { 80, 50, none, 750, 990, 900 } },
        { "limits without a hint", { .minimum = 20, .maximum = 30 }, { 0, 20, 30, 0.5, 0.5, 990 } },
        { "insets are not part of it",
          { .hint = 100, .minimum = 70, .maximum = 130, .insets = 8 },
          { 92, 62, 122, 750, 250, 990 } },
        { "larger insets than the length",
          { .hint = 5, .insets = 8 },
          { 0, 0, none, 750, 250, 900 } },
        { "insets outwards", { .hint = 5, .insets = -2 }, { 7, 0, none, 750, 250, 900 } },
    };
    for (const auto &[name, hints, length] : rows)
        EXPECT_EQ(intrinsicLength(hints), length) << name;
}

} // namespace Pellarvine::detail
