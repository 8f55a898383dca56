// SPDX-License-Identifier: MIT
#include "Layout/LayoutFindings.h"

#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSView.h>

#include <QBoxLayout>
#include <QCoreApplication>
#include <QLabel>
#include <QPointer>
#include <QProxyStyle>
#include <QSignalSpy>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace NS;
using Constraints = QList<std::shared_ptr<LayoutConstraint>>;
using ::testing::HasSubstr;

static_assert(sizeof(ConstraintItem) == sizeof(void *));
static_assert(std::is_trivially_copyable_v<ConstraintItem>);
static_assert(std::is_convertible_v<QLabel *, ConstraintItem>);
static_assert(std::is_convertible_v<QPointer<QLabel>, ConstraintItem>);
static_assert(std::is_convertible_v<QPointer<LayoutGuide>, ConstraintItem>);
static_assert(std::is_convertible_v<std::nullptr_t, ConstraintItem>);
static_assert(!std::is_convertible_v<QObject *, ConstraintItem>);

namespace {

// A window of 400 x 100 with a panel of 300 x 100 at (50, 0), and two blocks in that.
struct Panel
{
    QWidget window;
    QWidget *view = new QWidget(&window);
    QWidget *first = new QWidget(view);
    QWidget *last = new QWidget(view);

    Panel()
    {
        view->setObjectName(u"panel"_s);
        window.resize(400, 100);
        LayoutConstraint::activateConstraints({
                leftAnchor(view).constraintEqualToAnchor(leftAnchor(&window), 50),
                rightAnchor(view).constraintEqualToAnchor(rightAnchor(&window), -50),
                topAnchor(view).constraintEqualToAnchor(topAnchor(&window)),
                bottomAnchor(view).constraintEqualToAnchor(bottomAnchor(&window)),
        });
    }
    void layOut() { layoutSubtreeIfNeeded(&window); }
};

Constraints fill(ConstraintItem inner, ConstraintItem outer)
{
    return { leadingAnchor(inner).constraintEqualToAnchor(leadingAnchor(outer)),
             trailingAnchor(inner).constraintEqualToAnchor(trailingAnchor(outer)),
             topAnchor(inner).constraintEqualToAnchor(topAnchor(outer)),
             bottomAnchor(inner).constraintEqualToAnchor(bottomAnchor(outer)) };
}

class WideMargins : public QProxyStyle
{
public:
    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override
    {
        return metric == PM_LayoutLeftMargin ? 30
                                             : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

} // namespace

TEST(LayoutGuide, widgets_and_other_guides_follow_it)
{
    Panel panel;
    auto *const gap = new LayoutGuide(panel.view);
    auto *const half = new LayoutGuide(&panel.window);
    auto *const badge = new QWidget(panel.view);
    badge->setFixedSize(10, 10);
    QSignalSpy changes(gap, &LayoutGuide::frameChanged);
    const auto start = leadingAnchor(gap).constraintEqualToAnchor(leadingAnchor(panel.view), 100);
    LayoutConstraint::activateConstraints({
            start,
            widthAnchor(gap).constraintEqualToConstant(80),
            topAnchor(gap).constraintEqualToAnchor(topAnchor(panel.view), 20),
            bottomAnchor(gap).constraintEqualToAnchor(bottomAnchor(panel.view)),
            centerXAnchor(badge).constraintEqualToAnchor(centerXAnchor(gap)),
            centerYAnchor(badge).constraintEqualToAnchor(centerYAnchor(gap)),
            widthAnchor(half).constraintEqualToAnchor(widthAnchor(gap).multipliedBy(0.5)),
            leftAnchor(half).constraintEqualToAnchor(rightAnchor(gap)),
    });
    EXPECT_EQ(gap->frame(), QRect());
    panel.layOut();
    EXPECT_EQ(gap->frame(), QRect(100, 20, 80, 80)); // in the panel
    EXPECT_EQ(half->frame(), QRect(230, 0, 40, 0)); // in the window
    EXPECT_EQ(badge->geometry(), QRect(135, 55, 10, 10));
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toRect(), gap->frame());

    panel.window.resize(400, 140);
    panel.layOut();
    EXPECT_EQ(gap->frame(), QRect(100, 20, 80, 120));
    panel.view->setLayoutDirection(Qt::RightToLeft);
    panel.layOut();
    EXPECT_EQ(gap->frame(), QRect(120, 20, 80, 120));
    EXPECT_EQ(badge->geometry(), QRect(155, 75, 10, 10));
    panel.layOut();
    EXPECT_EQ(changes.size(), 3);

    const auto findings = Pellarvine::detail::layoutFindings(&panel.window);
    EXPECT_TRUE(findings.violations.empty());
    EXPECT_EQ(findings.frames.size(), 3u);
    EXPECT_THAT(findings.guides,
                ::testing::UnorderedElementsAre(QRectF(170, 20, 80, 120), QRectF(250, 0, 40, 0)));
}

TEST(LayoutGuide, its_constraints_end_with_it_and_move_with_its_view)
{
    Panel panel;
    auto *const guide = new LayoutGuide(panel.view);
    const Constraints ofGuide = fill(guide, panel.view);
    const Constraints ofFirst = fill(panel.first, guide);
    LayoutConstraint::activateConstraints(ofGuide + ofFirst);
    panel.layOut();
    EXPECT_EQ(panel.first->geometry(), QRect(0, 0, 300, 100));

    QWidget elsewhere;
    elsewhere.resize(200, 200);
    panel.view->setParent(&elsewhere);
    EXPECT_TRUE(ofGuide[0]->isActive() && ofFirst[0]->isActive());
    panel.view->setGeometry(10, 10, 120, 60);
    layoutSubtreeIfNeeded(&elsewhere);
    EXPECT_EQ(guide->frame(), QRect(0, 0, 120, 60));
    EXPECT_EQ(panel.first->geometry(), guide->frame());

    delete guide;
    EXPECT_FALSE(ofGuide[0]->isActive() || ofFirst[0]->isActive());
    EXPECT_EQ(ofFirst[0]->secondItem(), nullptr);
    panel.view->setParent(&panel.window);
}

TEST(LayoutGuide, warnings_name_it_with_its_view_and_refuse_its_baseline)
{
    Panel panel;
    LayoutGuide unnamed(panel.view);
    LayoutGuide gap(panel.view);
    EXPECT_EQ(topAnchor(&gap).constraintEqualToAnchor(topAnchor(panel.view))->description(),
              u"panel/LayoutGuide[2].top == panel.top"_s);
    gap.setObjectName(u"gap"_s);
    ::testing::internal::CaptureStdout();
    const auto refused =
            firstBaselineAnchor(panel.first).constraintEqualToAnchor(firstBaselineAnchor(&gap));
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                HasSubstr("panel/gap.firstBaseline: a layout guide has no baseline"));
    refused->setActive(true);
    EXPECT_FALSE(refused->isActive());
}

TEST(LayoutGuide, a_guide_that_an_engine_below_places_is_followed)
{
    QWidget window;
    window.resize(300, 100);
    auto *const column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    auto *const inner = new QWidget;
    column->addWidget(inner);
    auto *const badge = new QWidget(&window);
    LayoutGuide guide(inner);
    const auto width = widthAnchor(&guide).constraintEqualToConstant(40);
    width->setActive(true);
    leftAnchor(badge).constraintEqualToAnchor(rightAnchor(&guide), 5)->setActive(true);
    const auto badgeX = [&] {
        layoutSubtreeIfNeeded(&window); // places the guide
        QCoreApplication::sendPostedEvents();
        return badge->x();
    };
    EXPECT_EQ(badgeX(), 45);
    width->setConstant(70);
    EXPECT_EQ(badgeX(), 75);
}

TEST(LayoutGuide, the_margins_guide_is_where_a_qt_layout_would_put_its_content)
{
    WideMargins wide;
    QWidget window;
    auto *const reference = new QWidget(&window);
    auto *const view = new QWidget(&window);
    for (QWidget *const widget : { reference, view })
        widget->resize(300, 200);
    auto *const content = new QWidget;
    (new QVBoxLayout(reference))->addWidget(content);
    LayoutGuide *const margins = layoutMarginsGuide(view);
    EXPECT_EQ(layoutMarginsGuide(view), margins);
    const auto expectAlike = [&] {
        layoutSubtreeIfNeeded(&window);
        EXPECT_EQ(margins->frame(), content->geometry());
    };
    expectAlike();
    EXPECT_NE(margins->frame(), view->rect());
    for (QWidget *const widget : { reference, view })
        widget->setContentsMargins(1, 2, 3, 4);
    expectAlike();
    for (QWidget *const widget : { reference, view })
        widget->setStyle(&wide);
    expectAlike();
    EXPECT_EQ(margins->frame().x(), 31);

    LayoutConstraint::activateConstraints(fill(new QLabel(u"Text"_s, view), margins));
    content->setMinimumSize(view->findChild<QLabel *>()->sizeHint());
    layoutSubtreeIfNeeded(&window);
    EXPECT_EQ(view->sizeHint(), reference->sizeHint());
}
