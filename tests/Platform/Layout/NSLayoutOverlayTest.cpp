// SPDX-License-Identifier: MIT
#include "Layout/LayoutFindings.h"
#include "Layout/LayoutOverlay.h"

#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSLayoutOverlay.h>
#include <pellarvine/Platform/NSView.h>

#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace NS;
using Pellarvine::detail::layoutFindings;
using Pellarvine::detail::LayoutFindings;
using Constraints = QList<std::shared_ptr<LayoutConstraint>>;

namespace {

// A panel of 200 x 100 with a block in it that starts at (20, 10).
struct Panel
{
    QWidget view;
    QWidget *block = new QWidget(&view);

    explicit Panel(Qt::LayoutDirection direction = Qt::LeftToRight)
    {
        view.setObjectName(u"panel"_s);
        view.setLayoutDirection(direction);
        block->setObjectName(u"block"_s);
        LayoutConstraint::activateConstraints({
                topAnchor(block).constraintEqualToAnchor(topAnchor(&view), 10),
                leadingAnchor(block).constraintEqualToAnchor(leadingAnchor(&view), 20),
        });
    }

    LayoutFindings findings(const Constraints &constraints)
    {
        LayoutConstraint::activateConstraints(constraints);
        layOut();
        return layoutFindings(&view);
    }
    void layOut()
    {
        view.resize(200, 100);
        layoutSubtreeIfNeeded(&view);
    }
};

} // namespace

TEST(LayoutFindings, a_violation_points_to_the_required_place)
{
    struct Row
    {
        Qt::LayoutDirection direction;
        Constraints (*more)(QWidget *view, QWidget *block); // besides the size of 60 x 40
        QLineF line;
        QString text;
    };
    const Row rows[] = {
        { Qt::LeftToRight,
          [](QWidget *, QWidget *block) -> Constraints {
              return { widthAnchor(block).constraintEqualToConstant(90)->withPriority(500) };
          },
          { 80, 30, 110, 30 },
          u"block.width == 90 @ 500: 30 off"_s },
        { Qt::LeftToRight,
          [](QWidget *view, QWidget *block) -> Constraints {
              return { bottomAnchor(block)
                               .constraintGreaterThanOrEqualToAnchor(bottomAnchor(view), -4)
                               ->withPriority(300) };
          },
          { 50, 50, 50, 96 },
          u"block.bottom >= panel.bottom - 4 @ 300: 46 off"_s },
        { Qt::RightToLeft,
          [](QWidget *view, QWidget *block) -> Constraints {
              return { trailingAnchor(block)
                               .constraintEqualToAnchor(trailingAnchor(view), -50)
                               ->withPriority(300) };
          },
          { 120, 30, 50, 30 },
          u"block.trailing == panel.trailing - 50 @ 300: 70 off"_s },
        { Qt::LeftToRight,
          [](QWidget *, QWidget *block) {
              block->setMinimumWidth(90);
              return Constraints();
          },
          { 110, 30, 80, 30 },
          u"block.width == 60 @ 1000: 30 off"_s },
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text.toStdString());
        Panel panel(row.direction);
        const LayoutFindings findings = panel.findings(
                Constraints { widthAnchor(panel.block).constraintEqualToConstant(60),
                              heightAnchor(panel.block).constraintEqualToConstant(40) }
                + row.more(&panel.view, panel.block));
        ASSERT_EQ(findings.violations.size(), 1u);
        EXPECT_EQ(findings.violations[0].line, row.line);
        EXPECT_EQ(findings.violations[0].text, row.text);
        EXPECT_EQ(findings.frames.size(), 2u);
    }
}

TEST(LayoutFindings, a_widget_that_gets_less_than_it_asks_for_says_so)
{
    Panel panel;
    auto *const label = new QLabel(u"A text that is longer than its place"_s, &panel.view);
    const auto findings = panel.findings({
            leadingAnchor(label).constraintEqualToAnchor(leadingAnchor(&panel.view), 20),
            topAnchor(label).constraintEqualToAnchor(topAnchor(&panel.view), 10),
            widthAnchor(label).constraintEqualToConstant(60),
    });
    ASSERT_EQ(findings.violations.size(), 1u);
    EXPECT_EQ(findings.violations[0].text,
              u"width 60, asks for %1"_s.arg(label->sizeHint().width()));
    EXPECT_EQ(findings.violations[0].line.x1(), 80.0);
    EXPECT_EQ(findings.violations[0].line.x2(), 20.0 + label->sizeHint().width());
    label->setWordWrap(true);
    panel.layOut();
    EXPECT_TRUE(layoutFindings(&panel.view).violations.empty());
    label->setWordWrap(false);
    label->hide();
    panel.layOut();
    EXPECT_TRUE(layoutFindings(&panel.view).violations.empty());
}

TEST(LayoutFindings, rounding_to_whole_units_is_no_difference)
{
    Panel panel;
    Constraints thirds;
    QWidget *before = panel.block;
    for (int i = 0; i < 2; ++i) {
        auto *const next = new QWidget(&panel.view);
        thirds += { leadingAnchor(next).constraintEqualToAnchor(trailingAnchor(before)),
                    topAnchor(next).constraintEqualToAnchor(topAnchor(before)),
                    heightAnchor(next).constraintEqualToAnchor(heightAnchor(before)),
                    widthAnchor(next).constraintEqualToAnchor(widthAnchor(before)) };
        before = next;
    }
    thirds += { trailingAnchor(before).constraintEqualToAnchor(trailingAnchor(&panel.view)),
                heightAnchor(before).constraintEqualToConstant(50) };
    const auto findings = panel.findings(thirds);
    EXPECT_EQ(panel.block->width(), 60);
    panel.view.resize(201, 100);
    layoutSubtreeIfNeeded(&panel.view);
    EXPECT_TRUE(layoutFindings(&panel.view).violations.empty());
    EXPECT_EQ(findings.frames.size(), 4u);
}

TEST(LayoutFindings, baselines_that_constraints_are_about_cross_their_widgets)
{
    Panel panel;
    auto *const label = new QLabel(u"Name"_s, &panel.view);
    auto *const field = new QLineEdit(&panel.view);
    const auto findings = panel.findings({
            leadingAnchor(label).constraintEqualToAnchor(leadingAnchor(&panel.view)),
            topAnchor(field).constraintEqualToAnchor(topAnchor(&panel.view), 50),
            leadingAnchor(field).constraintEqualToAnchor(trailingAnchor(label), 8),
            firstBaselineAnchor(label).constraintEqualToAnchor(firstBaselineAnchor(field)),
    });
    ASSERT_EQ(findings.baselines.size(), 2u);
    EXPECT_EQ(findings.baselines[0].x1(), 0.0);
    EXPECT_EQ(findings.baselines[1].x1(), label->width() + 8.0);
    EXPECT_NEAR(findings.baselines[0].y1(), findings.baselines[1].y1(), 1.0);
    EXPECT_GT(findings.baselines[1].y1(), 50.0);
}

TEST(LayoutOverlay, it_stays_over_its_view_and_takes_no_input)
{
    Panel panel;
    panel.findings({ widthAnchor(panel.block).constraintEqualToConstant(60),
                     heightAnchor(panel.block).constraintEqualToConstant(40) });
    panel.view.show();
    EXPECT_FALSE(showsLayout(&panel.view));
    setShowsLayout(&panel.view, true);
    setShowsLayout(&panel.view, true);
    const auto overlays = panel.view.findChildren<Pellarvine::detail::LayoutOverlay *>();
    ASSERT_EQ(overlays.size(), 1);
    const QWidget *const overlay = overlays[0];
    EXPECT_EQ(panel.view.childAt(30, 20), panel.block);
    EXPECT_EQ(overlay->focusPolicy(), Qt::NoFocus);

    panel.view.resize(320, 240);
    EXPECT_EQ(overlay->size(), QSize(320, 240));
    auto *const later = new QWidget(&panel.view);
    later->show();
    panel.block->raise();
    EXPECT_EQ(panel.view.children().last(), overlay);

    // Only the block's frame is drawn.
    const QImage with = panel.view.grab().toImage();
    setShowsLayout(&panel.view, false);
    EXPECT_FALSE(showsLayout(&panel.view));
    const QImage without = panel.view.grab().toImage();
    EXPECT_NE(with.pixelColor(20, 30), without.pixelColor(20, 30));
    EXPECT_NE(with.pixelColor(79, 30), without.pixelColor(79, 30));
    EXPECT_EQ(with.pixelColor(50, 30), without.pixelColor(50, 30));
}

TEST(LayoutOverlay, a_splitter_does_not_take_it_for_a_pane)
{
    QSplitter splitter;
    splitter.addWidget(new QWidget);
    setShowsLayout(&splitter, true);
    EXPECT_EQ(splitter.count(), 1);
    EXPECT_TRUE(showsLayout(&splitter));
}

TEST(LayoutOverlay, while_debugging_each_window_with_constraints_has_one)
{
    Panel before;
    before.view.show();
    QTest::qWait(1);
    EXPECT_FALSE(showsLayout(&before.view));
    const Pellarvine::detail::LayoutDebugging debugging;
    Panel shown;
    QWidget plain;
    shown.view.show();
    plain.show();
    EXPECT_TRUE(showsLayout(&shown.view));
    EXPECT_FALSE(showsLayout(&plain));
    QWidget child(&plain);
    leadingAnchor(&child).constraintEqualToAnchor(leadingAnchor(&plain), 7)->setActive(true);
    QTest::qWait(1);
    EXPECT_TRUE(showsLayout(&plain));
}
