// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSLayoutSpacing.h>
#include <pellarvine/Platform/NSLayoutStack.h>
#include <pellarvine/Platform/NSView.h>

#include <QLabel>
#include <QLineEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace NS;

namespace {

// A style with a fixed spacing, or, if that is -1, with spacings by the kinds of the controls.
class SpacingStyle : public QProxyStyle
{
public:
    explicit SpacingStyle(int spacing)
        : m_spacing(spacing)
    { }
    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override
    {
        if (metric == PM_LayoutHorizontalSpacing)
            return m_spacing;
        if (metric == PM_LayoutVerticalSpacing)
            return m_spacing < 0 ? m_spacing : m_spacing + 1;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
    int layoutSpacing(QSizePolicy::ControlType one, QSizePolicy::ControlType other,
                      Qt::Orientation axis, const QStyleOption *, const QWidget *) const override
    {
        if (one != QSizePolicy::Label || other != QSizePolicy::LineEdit)
            return -1;
        return axis == Qt::Horizontal ? 5 : 4;
    }

private:
    int m_spacing;
};

QWidget *block(QWidget *parent, int width, int height)
{
    auto *const made = new QWidget(parent);
    made->setFixedSize(width, height);
    return made;
}

} // namespace

TEST(LayoutSpacing, it_is_the_styles_or_else_that_of_the_kinds_of_controls)
{
    QWidget panel;
    const QLabel label(QString(), &panel);
    const QLineEdit field(&panel);
    SpacingStyle even(9);
    panel.setStyle(&even);
    EXPECT_EQ(systemSpacing(&label, &field, Qt::Horizontal), 9.0);
    EXPECT_EQ(systemSpacing(&label, &field, Qt::Vertical), 10.0);
    SpacingStyle byKind(-1);
    panel.setStyle(&byKind);
    EXPECT_EQ(systemSpacing(&label, &field, Qt::Horizontal), 5.0);
    EXPECT_EQ(systemSpacing(&label, &field, Qt::Vertical), 4.0);
    EXPECT_EQ(systemSpacing(&field, &label, Qt::Vertical), 0.0);
}

TEST(LayoutStack, views_follow_each_other_and_are_aligned_across)
{
    using enum LayoutAttribute;
    struct Row
    {
        Qt::Orientation axis;
        LayoutAttribute alignment;
        Qt::LayoutDirection direction;
        QPoint places[3];
    };
    // Blocks of 40 x 20, 20 x 40 and 30 x 30, the first of them at (80, 60).
    constexpr Row rows[] = {
        { Qt::Horizontal, top, Qt::LeftToRight, { { 80, 60 }, { 126, 60 }, { 152, 60 } } },
        { Qt::Horizontal, bottom, Qt::LeftToRight, { { 80, 60 }, { 126, 40 }, { 152, 50 } } },
        { Qt::Horizontal, centerY, Qt::LeftToRight, { { 80, 60 }, { 126, 50 }, { 152, 55 } } },
        { Qt::Horizontal, top, Qt::RightToLeft, { { 80, 60 }, { 54, 60 }, { 18, 60 } } },
        { Qt::Vertical, leading, Qt::LeftToRight, { { 80, 60 }, { 80, 86 }, { 80, 132 } } },
        { Qt::Vertical, leading, Qt::RightToLeft, { { 80, 60 }, { 100, 86 }, { 90, 132 } } },
        { Qt::Vertical, left, Qt::RightToLeft, { { 80, 60 }, { 80, 86 }, { 80, 132 } } },
        { Qt::Vertical, centerX, Qt::LeftToRight, { { 80, 60 }, { 90, 86 }, { 85, 132 } } },
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(&row - rows);
        QWidget panel;
        panel.resize(300, 200);
        panel.setLayoutDirection(row.direction);
        const QList<QWidget *> views { block(&panel, 40, 20), block(&panel, 20, 40),
                                       block(&panel, 30, 30) };
        LayoutConstraint::activateConstraints(
                stack(views, row.axis, 6, row.alignment)
                + QList { leftAnchor(views[0]).constraintEqualToAnchor(leftAnchor(&panel), 80),
                          topAnchor(views[0]).constraintEqualToAnchor(topAnchor(&panel), 60) });
        layoutSubtreeIfNeeded(&panel);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(views[i]->pos(), row.places[i]) << i;
    }
}

TEST(LayoutStack, unless_aligned_views_are_equally_wide_or_high)
{
    QWidget panel;
    SpacingStyle style(9);
    panel.setStyle(&style);
    panel.resize(300, 200);
    auto *const one = new QLineEdit(&panel);
    auto *const other = new QPushButton(&panel);
    QList constraints = stack({ one, other }, Qt::Vertical);
    constraints += { leadingAnchor(one).constraintEqualToAnchor(leadingAnchor(&panel), 20),
                     trailingAnchor(one).constraintEqualToAnchor(trailingAnchor(&panel), -30),
                     topAnchor(one).constraintEqualToAnchor(topAnchor(&panel)) };
    LayoutConstraint::activateConstraints(constraints);
    layoutSubtreeIfNeeded(&panel);
    EXPECT_EQ(one->width(), 250);
    EXPECT_EQ(other->width(), 250);
    EXPECT_EQ(other->x(), 20);
    EXPECT_EQ(other->y(), one->height() + 10);
}

TEST(LayoutStack, there_is_none_that_is_aligned_along_its_axis)
{
    QWidget panel;
    const QList<QWidget *> views { block(&panel, 40, 20), block(&panel, 20, 40) };
    ::testing::internal::CaptureStdout();
    EXPECT_TRUE(stack(views, Qt::Horizontal, 6, LayoutAttribute::centerX).isEmpty());
    EXPECT_TRUE(stack(views, Qt::Vertical, 6, LayoutAttribute::firstBaseline).isEmpty());
    const std::string line = "Warning: a stack aligns its views across its axis, not along it\n";
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), line + line);
    EXPECT_TRUE(stack({}, Qt::Vertical).isEmpty());
}
