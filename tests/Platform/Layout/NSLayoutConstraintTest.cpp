// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSView.h>

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <gmock/gmock.h>

#include <limits>

using namespace Qt::StringLiterals;
using namespace NS;

namespace {

using Constraints = QList<std::shared_ptr<LayoutConstraint>>;
using ::testing::HasSubstr;

template <typename One, typename Other>
concept CanBeEqual = requires(One one, Other other)
{
    one.constraintEqualToAnchor(other);
};
static_assert(CanBeEqual<LayoutXAxisAnchor, LayoutXAxisAnchor>);
static_assert(CanBeEqual<LayoutDimension, LayoutDimension>);
static_assert(!CanBeEqual<LayoutXAxisAnchor, LayoutYAxisAnchor>);
static_assert(!CanBeEqual<LayoutXAxisAnchor, LayoutDimension>);
static_assert(!CanBeEqual<LayoutDimension, LayoutYAxisAnchor>);
static_assert(CanBeEqual<LayoutDimension, LayoutDimension::Multiple>);
static_assert(!CanBeEqual<LayoutDimension::Multiple, LayoutDimension>);
static_assert(!CanBeEqual<LayoutXAxisAnchor, LayoutDimension::Multiple>);
static_assert(!std::is_copy_constructible_v<LayoutConstraint>);

// Has a size hint, and baselines as properties.
class Sized : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(double firstBaselineOffsetFromTop READ firstBaseline CONSTANT)
    Q_PROPERTY(double lastBaselineOffsetFromBottom READ lastBaseline CONSTANT)

public:
    explicit Sized(QSize size, QWidget *parent = nullptr)
        : QWidget(parent)
        , hint(size)
    { }
    QSize sizeHint() const override { return hint; }
    QSize minimumSizeHint() const override { return minimumHint; }
    double firstBaseline() const { return 12; }
    double lastBaseline() const { return 5; }

    QSize hint;
    QSize minimumHint;
};

// A widget whose area stays the same at any width, like wrapping text.
class Flowing : public QWidget
{
public:
    explicit Flowing(int area, QWidget *parent = nullptr)
        : QWidget(parent)
        , m_area(area)
    {
        QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
        policy.setHeightForWidth(true);
        setSizePolicy(policy);
    }
    QSize sizeHint() const override { return { 100, m_area / 100 }; }
    QSize minimumSizeHint() const override { return { 20, 10 }; }
    int heightForWidth(int width) const override { return (m_area + width - 1) / width; }

private:
    int m_area;
};

class Window : public QWidget
{
public:
    Window(int width, int height) { resize(width, height); }

    QRect place(QWidget *widget)
    {
        layoutSubtreeIfNeeded(this);
        return { widget->mapTo(this, QPoint()), widget->size() };
    }
};

void pinTopLeading(QWidget *widget)
{
    QWidget *const parent = widget->parentWidget();
    LayoutConstraint::activateConstraints({
            topAnchor(widget).constraintEqualToAnchor(topAnchor(parent)),
            leadingAnchor(widget).constraintEqualToAnchor(leadingAnchor(parent)),
    });
}

// Pins the widget to its parent with margins of `x` and `y`.
void fillParent(QWidget *widget, double x = 0, double y = 0)
{
    QWidget *const parent = widget->parentWidget();
    LayoutConstraint::activateConstraints({
            topAnchor(widget).constraintEqualToAnchor(topAnchor(parent), y),
            bottomAnchor(widget).constraintEqualToAnchor(bottomAnchor(parent), -y),
            leadingAnchor(widget).constraintEqualToAnchor(leadingAnchor(parent), x),
            trailingAnchor(widget).constraintEqualToAnchor(trailingAnchor(parent), -x),
    });
}

std::string warningsOf(const std::function<void()> &work)
{
    ::testing::internal::CaptureStdout();
    work();
    return ::testing::internal::GetCapturedStdout();
}

} // namespace

TEST(LayoutConstraint, each_anchor_makes_constraints_about_the_line_it_names)
{
    QWidget view;
    QWidget other;
    const auto toOther = [&](auto anchor) {
        return anchor(&view).constraintEqualToAnchor(anchor(&other), 7);
    };
    const std::pair<std::shared_ptr<LayoutConstraint>, LayoutAttribute> rows[] = {
        { toOther(leftAnchor), LayoutAttribute::left },
        { toOther(rightAnchor), LayoutAttribute::right },
        { toOther(leadingAnchor), LayoutAttribute::leading },
        { toOther(trailingAnchor), LayoutAttribute::trailing },
        { toOther(centerXAnchor), LayoutAttribute::centerX },
        { toOther(topAnchor), LayoutAttribute::top },
        { toOther(bottomAnchor), LayoutAttribute::bottom },
        { toOther(centerYAnchor), LayoutAttribute::centerY },
        { toOther(firstBaselineAnchor), LayoutAttribute::firstBaseline },
        { toOther(lastBaselineAnchor), LayoutAttribute::lastBaseline },
        { toOther(widthAnchor), LayoutAttribute::width },
        { toOther(heightAnchor), LayoutAttribute::height },
    };
    for (const auto &[constraint, attribute] : rows) {
        EXPECT_EQ(constraint->firstAttribute(), attribute);
        EXPECT_EQ(constraint->secondAttribute(), attribute);
        EXPECT_EQ(constraint->firstItem(), &view);
        EXPECT_EQ(constraint->secondItem(), &other);
        EXPECT_EQ(constraint->constant(), 7.0);
    }
    const auto ratio = widthAnchor(&view).constraintLessThanOrEqualToAnchor(
            heightAnchor(&other).multipliedBy(1.5), -4);
    EXPECT_EQ(ratio->description(), u"QWidget.width <= 1.5 * QWidget.height - 4"_s);
    const auto multiple = heightAnchor(&other).multipliedBy(0.5);
    EXPECT_EQ(widthAnchor(&view).constraintEqualToAnchor(multiple)->description(),
              u"QWidget.width == 0.5 * QWidget.height"_s);
    EXPECT_EQ(widthAnchor(&view).constraintLessThanOrEqualToAnchor(multiple, 3)->description(),
              u"QWidget.width <= 0.5 * QWidget.height + 3"_s);
    const auto wish = widthAnchor(&view).constraintGreaterThanOrEqualToAnchor(multiple, -3);
    EXPECT_EQ(wish->withPriority(LayoutPriority::defaultLow), wish);
    EXPECT_EQ(wish->priority(), LayoutPriority::defaultLow);
    EXPECT_EQ(wish->description(), u"QWidget.width >= 0.5 * QWidget.height - 3"_s);
    const auto least = heightAnchor(&view).constraintGreaterThanOrEqualToConstant(40);
    EXPECT_EQ(least->description(), u"QWidget.height >= 40"_s);
}

#ifndef QT_NO_DEBUG
TEST(LayoutConstraint, a_constant_between_sizes_that_looks_like_a_multiplier_is_warned_of)
{
    QWidget view;
    QWidget other;
    const LayoutDimension width = widthAnchor(&view);
    const LayoutDimension otherWidth = widthAnchor(&other);
    EXPECT_EQ(warningsOf([&] { width.constraintEqualToAnchor(otherWidth, 0.5); }),
              "Warning: the constraint QWidget.width == QWidget.width + 0.5 adds 0.5 units. "
              "To multiply, write multipliedBy(0.5)\n");
    EXPECT_EQ(warningsOf([&] {
                  width.constraintEqualToAnchor(otherWidth.multipliedBy(0.5));
                  width.constraintEqualToAnchor(otherWidth.multipliedBy(1), 0.5);
                  width.constraintEqualToAnchor(heightAnchor(&view), 0.5);
                  width.constraintEqualToAnchor(otherWidth, 1);
                  width.constraintEqualToAnchor(otherWidth, -0.5);
                  leftAnchor(&view).constraintEqualToAnchor(leftAnchor(&other), 0.5);
              }),
              "");
}
#endif

TEST(LayoutConstraint, the_lines_of_one_widget_are_kept_together)
{
    Window window(200, 100);
    Sized view({ 30, 20 }, &window);
    LayoutConstraint::activateConstraints({
            rightAnchor(&view).constraintEqualToAnchor(rightAnchor(&window), -7),
            firstBaselineAnchor(&view).constraintEqualToAnchor(topAnchor(&window), 30),
            lastBaselineAnchor(&view).constraintEqualToAnchor(bottomAnchor(&window)),
            widthAnchor(&view).constraintEqualToAnchor(heightAnchor(&view).multipliedBy(2), -124),
    });
    EXPECT_EQ(window.place(&view), QRect(143, 18, 50, 87));
}

TEST(LayoutConstraint, leading_and_trailing_follow_the_layout_direction)
{
    Window window(200, 100);
    window.setLayoutDirection(Qt::RightToLeft);
    Sized one({ 30, 20 }, &window);
    Sized other({ 40, 20 }, &window);
    LayoutConstraint::activateConstraints({
            leadingAnchor(&one).constraintEqualToAnchor(leadingAnchor(&window), 10),
            leadingAnchor(&other).constraintGreaterThanOrEqualToAnchor(trailingAnchor(&one), 8),
            trailingAnchor(&other).constraintLessThanOrEqualToAnchor(trailingAnchor(&window)),
            leftAnchor(&other).constraintLessThanOrEqualToAnchor(leftAnchor(&window), 112),
            topAnchor(&one).constraintEqualToAnchor(topAnchor(&window)),
            topAnchor(&other).constraintEqualToAnchor(topAnchor(&one)),
    });
    EXPECT_EQ(window.place(&one), QRect(160, 0, 30, 20));
    EXPECT_EQ(window.place(&other).width(), 40);
    EXPECT_LE(window.place(&other).right(), 151);
    window.setLayoutDirection(Qt::LeftToRight);
    EXPECT_EQ(window.place(&one), QRect(10, 0, 30, 20));
    EXPECT_EQ(window.place(&other), QRect(48, 0, 40, 20));
}

TEST(LayoutConstraint, texts_of_different_controls_stand_on_one_line)
{
    Window window(400, 120);
    auto *const label = new QLabel(u"Name"_s, &window);
    auto *const field = new QLineEdit(&window);
    QFont large = field->font();
    large.setPointSize(large.pointSize() * 2);
    field->setFont(large);
    LayoutConstraint::activateConstraints({
            leadingAnchor(label).constraintEqualToAnchor(leadingAnchor(&window)),
            leadingAnchor(field).constraintEqualToAnchor(trailingAnchor(label), 8),
            topAnchor(field).constraintEqualToAnchor(topAnchor(&window)),
            firstBaselineAnchor(label).constraintEqualToAnchor(firstBaselineAnchor(field)),
    });
    const auto baseline = [&](QWidget *widget) {
        const QFontMetricsF metrics(widget->font());
        const QRect place = window.place(widget);
        return place.y() + (place.height() - metrics.height()) / 2 + metrics.ascent();
    };
    EXPECT_NEAR(baseline(label), baseline(field), 1.0);
    large.setPointSize(large.pointSize() * 2);
    field->setFont(large);
    EXPECT_NEAR(baseline(label), baseline(field), 1.0);
    EXPECT_GT(window.place(label).y(), 10);
}

TEST(LayoutConstraint, a_higher_priority_goes_first_whatever_the_number_of_lower_ones)
{
    Window window(200, 100);
    QWidget view(&window);
    pinTopLeading(&view);
    const auto strong = widthAnchor(&view).constraintEqualToConstant(50)->withPriority(501);
    strong->setActive(true);
    for (int i = 0; i < 20; ++i)
        widthAnchor(&view).constraintEqualToConstant(90)->withPriority(500)->setActive(true);
    EXPECT_EQ(window.place(&view).width(), 50);
    strong->setPriority(499);
    EXPECT_EQ(window.place(&view).width(), 90);
    strong->setPriority(LayoutPriority::required);
    EXPECT_EQ(window.place(&view).width(), 50);
    strong->setActive(false);
    EXPECT_EQ(window.place(&view).width(), 90);
}

TEST(LayoutConstraint, a_new_constant_moves_what_depends_on_it)
{
    Window window(200, 100);
    Sized one({ 30, 20 }, &window);
    Sized other({ 40, 20 }, &window);
    pinTopLeading(&one);
    const auto gap = leftAnchor(&other).constraintEqualToAnchor(rightAnchor(&one), 8);
    LayoutConstraint::activateConstraints(
            { gap, topAnchor(&other).constraintEqualToAnchor(topAnchor(&one)) });
    EXPECT_EQ(window.place(&other), QRect(38, 0, 40, 20));
    QSignalSpy changes(gap.get(), &LayoutConstraint::constantChanged);
    gap->setConstant(20);
    gap->setConstant(20);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(window.place(&other), QRect(50, 0, 40, 20));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    gap->setProperty("constant", 21);
    EXPECT_TRUE(QTest::qWaitFor([&] { return other.x() == 51; })); // by the event loop
}

TEST(LayoutConstraint, contradicting_constraints_are_named_once_and_the_last_one_left_out)
{
    Window window(200, 100);
    window.setObjectName(u"panel"_s);
    QWidget view(&window);
    view.setObjectName(u"title"_s);
    const auto left = leftAnchor(&view).constraintEqualToAnchor(leftAnchor(&window), 10);
    const auto width = widthAnchor(&view).constraintEqualToConstant(50);
    const auto top = topAnchor(&view).constraintEqualToAnchor(topAnchor(&window));
    const auto right =
            rightAnchor(&view).constraintLessThanOrEqualToAnchor(leftAnchor(&window), 40);
    right->setObjectName(u"edge"_s);
    EXPECT_EQ(warningsOf([&] {
                  LayoutConstraint::activateConstraints({ left, width, top, right });
              }),
              "Warning: dropped the constraint [edge] title.right <= panel.left + 40, which "
              "contradicts title.left == panel.left + 10, title.width == 50\n");
    EXPECT_TRUE(left->isActive() && width->isActive() && top->isActive());
    EXPECT_FALSE(right->isActive());
    EXPECT_EQ(window.place(&view), QRect(10, 0, 50, 0));

    // A new constant can also make a constraint contradict others.
    right->setConstant(60);
    right->setActive(true);
    EXPECT_EQ(warningsOf([&] { width->setConstant(51); }),
              "Warning: dropped the constraint title.width == 51, which contradicts "
              "title.left == panel.left + 10, [edge] title.right <= panel.left + 60\n");
    EXPECT_FALSE(width->isActive());
    EXPECT_TRUE(right->isActive());
}

TEST(LayoutConstraint, a_contradiction_by_another_direction_names_only_what_it_is_about)
{
    Window window(200, 100);
    window.setObjectName(u"panel"_s);
    QWidget view(&window);
    view.setObjectName(u"title"_s);
    const Constraints constraints {
        leftAnchor(&view).constraintEqualToAnchor(leftAnchor(&window), 10),
        leadingAnchor(&view).constraintEqualToAnchor(leadingAnchor(&window), 10),
        widthAnchor(&view).constraintEqualToConstant(50),
        widthAnchor(&window).constraintGreaterThanOrEqualToAnchor(widthAnchor(&view), 100),
        topAnchor(&view).constraintEqualToAnchor(topAnchor(&window)),
        heightAnchor(&view).constraintEqualToConstant(20),
        heightAnchor(&window).constraintGreaterThanOrEqualToAnchor(heightAnchor(&view)),
    };
    LayoutConstraint::activateConstraints(constraints);
    EXPECT_EQ(warningsOf([&] { window.setLayoutDirection(Qt::RightToLeft); }),
              "Warning: dropped the constraint panel.width >= title.width + 100, which contradicts "
              "title.left == panel.left + 10, title.leading == panel.leading + 10\n");
    EXPECT_FALSE(constraints[3]->isActive());
}

TEST(LayoutConstraint, constraints_that_only_a_negative_size_satisfies_are_named_once)
{
    Window window(10, 10); // smaller than the constraints need, which causes no warning
    window.setObjectName(u"panel"_s);
    QWidget view(&window);
    view.setObjectName(u"title"_s);
    const auto left = leftAnchor(&view).constraintEqualToAnchor(leftAnchor(&window), 30);
    const auto right = rightAnchor(&view).constraintEqualToAnchor(rightAnchor(&window), -30);
    const auto height = heightAnchor(&view).constraintLessThanOrEqualToConstant(-5);
    EXPECT_EQ(warningsOf([&] {
                  LayoutConstraint::activateConstraints({ left, right });
                  window.place(&view);
              }),
              "");
    EXPECT_EQ(warningsOf([&] {
                  height->setActive(true);
                  window.place(&view);
                  height->setConstant(-6);
                  window.place(&view);
              }),
              "Warning: only a negative height satisfies title.height <= -5\n");
    height->setActive(false);
    EXPECT_EQ(warningsOf([&] {
                  rightAnchor(&view)
                          .constraintLessThanOrEqualToAnchor(leftAnchor(&window), 20)
                          ->setActive(true);
                  window.place(&view);
              }),
              "Warning: only a negative width satisfies title.left == panel.left + 30, "
              "title.right <= panel.left + 20\n");
    EXPECT_TRUE(left->isActive());
}

TEST(LayoutConstraint, required_constraints_that_a_qt_layout_overrides_are_named_once)
{
    Window window(300, 200);
    auto *const column = new QVBoxLayout(&window);
    auto *const managed = new Sized({ 100, 40 });
    auto *const panel = new QWidget;
    auto *const inside = new Sized({ 30, 20 }, panel);
    auto *const badge = new Sized({ 16, 16 }, &window);
    column->addWidget(managed);
    column->addWidget(panel);
    managed->setObjectName(u"managed"_s);
    panel->setObjectName(u"panel"_s);
    LayoutConstraint::activateConstraints({
            widthAnchor(managed).constraintEqualToConstant(50),
            heightAnchor(managed).constraintEqualToConstant(60)->withPriority(999),
            heightAnchor(managed).constraintGreaterThanOrEqualToConstant(10),
            leftAnchor(badge).constraintEqualToAnchor(rightAnchor(managed), -8),
            topAnchor(badge).constraintEqualToAnchor(topAnchor(managed)),
            widthAnchor(panel).constraintLessThanOrEqualToConstant(70),
            leftAnchor(inside).constraintEqualToAnchor(leftAnchor(panel)),
    });
    window.show();
    EXPECT_EQ(warningsOf([&] { QTest::qWait(20); }),
              "Warning: a QVBoxLayout overrides the required constraint managed.width == 50\n"
              "Warning: a QVBoxLayout overrides the required constraint panel.width <= 70\n");
    window.resize(320, 220);
    EXPECT_EQ(warningsOf([&] { QTest::qWait(20); }), "");
}

TEST(LayoutConstraint, without_a_common_ancestor_it_warns_once_and_activates_nothing)
{
    Window window(200, 100);
    Window elsewhere(200, 100);
    elsewhere.setObjectName(u"elsewhere"_s);
    QWidget view(&window);
    const Constraints constraints {
        leftAnchor(&view).constraintEqualToAnchor(leftAnchor(&window)),
        topAnchor(&view).constraintEqualToAnchor(topAnchor(&elsewhere)),
        rightAnchor(&view).constraintEqualToAnchor(rightAnchor(&elsewhere)),
    };
    EXPECT_EQ(
            warningsOf([&] { LayoutConstraint::activateConstraints(constraints); }),
            "Warning: the items of the constraint QWidget/QWidget[1].top == elsewhere.top have no "
            "common ancestor\n");
    for (const auto &constraint : constraints)
        EXPECT_FALSE(constraint->isActive());
    EXPECT_EQ(window.layout(), nullptr);
}

TEST(LayoutConstraint, a_widget_that_is_destroyed_or_moved_away_takes_its_constraints_with_it)
{
    Window window(200, 100);
    Window elsewhere(200, 100);
    Sized staying({ 30, 20 }, &window);
    for (const bool isDestroyed : { true, false }) {
        auto *const box = new QWidget(&window);
        auto *const leaving = new Sized({ 30, 20 }, box);
        pinTopLeading(box);
        const auto inside = leftAnchor(leaving).constraintEqualToAnchor(leftAnchor(box), 3);
        const auto across = leftAnchor(&staying).constraintEqualToAnchor(rightAnchor(leaving), 9);
        const auto own = widthAnchor(leaving).constraintEqualToConstant(44);
        LayoutConstraint::activateConstraints({ inside, across, own });
        EXPECT_EQ(window.place(&staying), QRect(56, 0, 30, 20));
        QSignalSpy ends(across.get(), &LayoutConstraint::activeChanged);
        if (isDestroyed)
            delete box;
        else
            leaving->setParent(&elsewhere);
        EXPECT_FALSE(across->isActive() || inside->isActive());
        EXPECT_EQ(own->isActive(), !isDestroyed); // it is about this widget only
        EXPECT_EQ(ends.count(), 1);
        if (isDestroyed)
            continue;
        EXPECT_EQ(elsewhere.place(leaving).width(), 44);
        delete box;
    }
}

TEST(LayoutConstraint, a_container_that_loses_its_own_constraints_is_still_followed)
{
    Window window(300, 200);
    auto *const box = new QWidget(&window);
    auto *const inside = new Sized({ 30, 20 }, box);
    auto *const across = new Sized({ 30, 20 }, box);
    const Constraints ofBox {
        leftAnchor(box).constraintEqualToAnchor(leftAnchor(&window), 10),
        widthAnchor(box).constraintEqualToConstant(100),
    };
    const auto trailing = trailingAnchor(inside).constraintEqualToAnchor(trailingAnchor(box), -5);
    LayoutConstraint::activateConstraints(ofBox);
    trailing->setActive(true);
    leftAnchor(across).constraintEqualToAnchor(leftAnchor(&window), 120)->setActive(true);
    EXPECT_EQ(window.place(inside).x(), 75);
    EXPECT_EQ(window.place(across).x(), 120);

    LayoutConstraint::deactivateConstraints(ofBox);
    window.place(box);
    box->setGeometry(40, 0, 120, 50);
    EXPECT_EQ(window.place(box), QRect(40, 0, 120, 50));
    EXPECT_EQ(window.place(inside).x(), 125);
    EXPECT_EQ(window.place(across).x(), 120);
    box->setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(window.place(inside).x(), 45);

    trailing->setActive(false); // the last constraint about the box
    window.place(box);
    box->move(60, 0);
    EXPECT_EQ(window.place(across).x(), 120);
}

TEST(LayoutConstraint, constraints_end_with_their_layouts_widget)
{
    std::shared_ptr<LayoutConstraint> constraint;
    {
        Window window(200, 100);
        auto *const view = new QWidget(&window);
        constraint = leftAnchor(view).constraintEqualToAnchor(leftAnchor(&window));
        constraint->setActive(true);
    }
    EXPECT_FALSE(constraint->isActive());
    EXPECT_EQ(constraint->firstItem(), nullptr);
    EXPECT_THAT(constraint->description().toStdString(), HasSubstr("(destroyed).left"));
    EXPECT_THAT(warningsOf([&] { constraint->setActive(true); }), HasSubstr("no common ancestor"));
}

TEST(LayoutConstraint, qt_layouts_above_see_the_sizes_that_follow_from_the_constraints)
{
    Window window(400, 300);
    auto *const column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto *const panel = new QWidget;
    auto *const rest = new Sized({ 10, 10 });
    rest->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    column->addWidget(panel);
    column->addWidget(rest, 1);
    panel->setContentsMargins(3, 3, 3, 3); // ignored: constraints are relative to the panel's edges
    panel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto *const view = new Sized({ 100, 40 }, panel);
    view->minimumHint = { 60, 30 };
    fillParent(view, 10, 5);
    EXPECT_EQ(panel->sizeHint(), QSize(120, 50));
    EXPECT_EQ(panel->minimumSizeHint(), QSize(80, 40));
    EXPECT_EQ(window.place(view), QRect(10, 5, 380, 40));
    EXPECT_EQ(window.place(rest), QRect(0, 50, 400, 250));
    view->hint = { 100, 70 };
    view->updateGeometry();
    EXPECT_EQ(window.place(view), QRect(10, 5, 380, 70));
    EXPECT_EQ(window.place(rest), QRect(0, 80, 400, 220));
}

TEST(LayoutConstraint, the_largest_size_follows_from_what_the_widgets_and_constraints_allow)
{
    Window panel(100, 100);
    auto *const view = new Sized({ 40, 20 }, &panel);
    const auto width = widthAnchor(view).constraintLessThanOrEqualToConstant(90);
    fillParent(view, 10, 5);
    const auto largest = [&] {
        layoutSubtreeIfNeeded(&panel);
        return panel.layout()->maximumSize();
    };
    EXPECT_EQ(largest(), QSize(QLAYOUTSIZE_MAX, QLAYOUTSIZE_MAX));
    width->setActive(true);
    EXPECT_EQ(largest(), QSize(110, QLAYOUTSIZE_MAX));
    width->setConstant(60);
    view->setMaximumHeight(50);
    EXPECT_EQ(largest(), QSize(80, 60));
    panel.setContentsMargins(4, 0, 0, 1);
    EXPECT_EQ(largest(), QSize(76, 59));
    EXPECT_EQ(panel.layout()->totalMaximumSize(), QSize(80, 60));
    width->setPriority(LayoutPriority::defaultLow);
    EXPECT_EQ(largest().width(), QLAYOUTSIZE_MAX) << "only required constraints are limits";
    view->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    EXPECT_EQ(panel.layout()->totalMaximumSize(), QSize(60, 60));
    panel.layout()->setSizeConstraint(QLayout::SetMinAndMaxSize);
    largest();
    panel.resize(500, 500);
    EXPECT_EQ(panel.size(), QSize(60, 60));
    view->setMinimumSize(70, 70);
    view->setMaximumSize(70, 70);
    EXPECT_EQ(panel.layout()->totalMaximumSize(), QSize(90, 80));
    EXPECT_EQ(panel.layout()->totalMinimumSize(), QSize(90, 80));
}

TEST(LayoutConstraint, a_hidden_widget_keeps_its_place)
{
    Window window(200, 100);
    auto *const first = new Sized({ 40, 20 }, &window);
    auto *const second = new Sized({ 40, 20 }, &window);
    pinTopLeading(first);
    LayoutConstraint::activateConstraints({
            topAnchor(second).constraintEqualToAnchor(topAnchor(&window)),
            leadingAnchor(second).constraintEqualToAnchor(trailingAnchor(first), 8),
    });
    EXPECT_EQ(window.place(second), QRect(48, 0, 40, 20));
    first->hide();
    EXPECT_EQ(window.place(second), QRect(48, 0, 40, 20));
}

TEST(LayoutConstraint, the_hosts_anchors_are_those_of_what_is_aligned_in_it)
{
    Window window(200, 100);
    window.setProperty("alignmentRectInsets", QVariant::fromValue(QMarginsF(10, 4, 20, 6)));
    auto *const view = new Sized({ 40, 20 }, &window);
    LayoutConstraint::activateConstraints({
            topAnchor(view).constraintEqualToAnchor(topAnchor(&window)),
            bottomAnchor(view).constraintEqualToAnchor(bottomAnchor(&window), -1),
            leadingAnchor(view).constraintEqualToAnchor(leadingAnchor(&window), 2),
            widthAnchor(view).constraintEqualToAnchor(widthAnchor(&window).multipliedBy(0.5)),
    });
    EXPECT_EQ(window.place(view), QRect(12, 4, 85, 89));
    window.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(window.place(view), QRect(93, 4, 85, 89));
    window.setProperty("alignmentRectInsets", QVariant::fromValue(QMarginsF(0, 0, 40, 0)));
    EXPECT_EQ(window.place(view), QRect(78, 0, 80, 99));
    window.setLayoutDirection(Qt::LeftToRight);
    auto *const centred = new Sized({ 40, 20 }, &window);
    LayoutConstraint::activateConstraints({
            centerXAnchor(centred).constraintEqualToAnchor(centerXAnchor(&window)),
            rightAnchor(centred).constraintLessThanOrEqualToAnchor(rightAnchor(&window)),
    });
    EXPECT_EQ(window.place(centred).x(), 60);
}

TEST(LayoutConstraint, qt_layouts_below_work_in_the_room_that_the_constraints_give)
{
    Window window(400, 300);
    auto *const panel = new QWidget(&window);
    auto *const grid = new QGridLayout(panel);
    grid->setContentsMargins(4, 4, 4, 4);
    auto *const inner = new Sized({ 50, 30 });
    inner->minimumHint = { 50, 30 };
    grid->addWidget(inner, 0, 0);
    LayoutConstraint::activateConstraints({
            leadingAnchor(panel).constraintEqualToAnchor(leadingAnchor(&window), 100),
            topAnchor(panel).constraintEqualToAnchor(topAnchor(&window), 10),
            trailingAnchor(panel).constraintEqualToAnchor(trailingAnchor(&window)),
    });
    EXPECT_EQ(window.place(panel), QRect(100, 10, 300, 38));
    EXPECT_EQ(window.place(inner), QRect(104, 14, 292, 30));
    EXPECT_EQ(window.minimumSizeHint(), QSize(158, 0)); // nothing ties the bottoms together
}

TEST(LayoutConstraint, views_at_different_depths_meet_in_their_nearest_common_ancestor)
{
    Window window(400, 300);
    auto *const left = new QWidget(&window);
    auto *const right = new QWidget(&window);
    auto *const row = new QHBoxLayout(left);
    row->setContentsMargins(20, 30, 0, 0);
    auto *const managed = new Sized({ 50, 40 });
    row->addWidget(managed, 0, Qt::AlignLeft | Qt::AlignTop);
    auto *const free = new Sized({ 60, 20 }, right);
    LayoutConstraint::activateConstraints({
            leftAnchor(left).constraintEqualToAnchor(leftAnchor(&window)),
            topAnchor(left).constraintEqualToAnchor(topAnchor(&window), 10),
            widthAnchor(left).constraintEqualToConstant(150),
            heightAnchor(left).constraintEqualToConstant(200),
            leftAnchor(right).constraintEqualToAnchor(rightAnchor(left)),
            rightAnchor(right).constraintEqualToAnchor(rightAnchor(&window)),
            topAnchor(right).constraintEqualToAnchor(topAnchor(&window)),
            bottomAnchor(right).constraintEqualToAnchor(bottomAnchor(&window)),
            // Follows a widget that a Qt layout places elsewhere.
            topAnchor(free).constraintEqualToAnchor(bottomAnchor(managed), 5),
            leftAnchor(free).constraintEqualToAnchor(leftAnchor(right), 7),
    });
    EXPECT_EQ(window.place(managed), QRect(20, 40, 50, 40));
    EXPECT_EQ(window.place(free), QRect(157, 85, 60, 20));
}

TEST(LayoutConstraint, views_in_different_boxes_can_be_made_alike_and_the_boxes_moved)
{
    for (const bool isBoxFirst : { true, false }) {
        Window window(400, 300);
        Window elsewhere(400, 300);
        QList<QWidget *> boxes;
        QList<Sized *> views;
        for (const int width : { 50, 80 }) {
            boxes.append(new QWidget(&window));
            views.append(new Sized({ width, 20 }, boxes.last()));
        }
        const auto alike = widthAnchor(views[0]).constraintEqualToAnchor(widthAnchor(views[1]));
        if (!isBoxFirst)
            alike->setActive(true);
        Constraints insets;
        for (int i = 0; i < 2; ++i) {
            insets += leadingAnchor(views[i]).constraintEqualToAnchor(leadingAnchor(boxes[i]), 5);
            insets += trailingAnchor(boxes[i]).constraintEqualToAnchor(trailingAnchor(views[i]), 5);
        }
        LayoutConstraint::activateConstraints(insets);
        LayoutConstraint::activateConstraints({
                leadingAnchor(boxes[0]).constraintEqualToAnchor(leadingAnchor(&window), 10),
                leadingAnchor(boxes[1]).constraintEqualToAnchor(trailingAnchor(boxes[0]), 10),
        });
        if (isBoxFirst)
            alike->setActive(true);
        // Resisting compression is stronger than hugging.
        EXPECT_EQ(window.place(views[0]), QRect(15, 0, 80, 20)) << isBoxFirst;
        EXPECT_EQ(window.place(views[1]), QRect(115, 0, 80, 20)) << isBoxFirst;
        EXPECT_EQ(window.place(boxes[1]).width(), 90) << isBoxFirst;
        boxes[1]->setParent(&elsewhere);
        EXPECT_FALSE(alike->isActive());
        EXPECT_TRUE(insets[2]->isActive() && insets[3]->isActive());
        boxes[1]->resize(200, 100);
        elsewhere.place(boxes[1]);
        EXPECT_EQ(views[1]->x(), 5) << isBoxFirst;
    }
}

TEST(LayoutConstraint, beside_another_layout_constraints_place_what_that_leaves_alone)
{
    Window window(300, 200);
    auto *const column = new QVBoxLayout(&window);
    column->setContentsMargins(10, 10, 10, 10);
    auto *const content = new QWidget;
    column->addWidget(content);
    auto *const badge = new Sized({ 16, 16 }, &window);
    LayoutConstraint::activateConstraints({
            centerXAnchor(badge).constraintEqualToAnchor(rightAnchor(content)),
            centerYAnchor(badge).constraintEqualToAnchor(topAnchor(content)),
    });
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_TRUE(QTest::qWaitFor([&] { return badge->pos() == QPoint(282, 2); }));
    window.resize(400, 200);
    EXPECT_TRUE(QTest::qWaitFor([&] { return badge->pos() == QPoint(382, 2); }));
    EXPECT_EQ(content->geometry(), QRect(10, 10, 380, 180));
}

TEST(LayoutConstraint, a_given_frame_stays_and_others_follow_it)
{
    Window window(300, 200);
    auto *const handle = new QWidget(&window);
    handle->setGeometry(50, 60, 20, 20);
    setTranslatesAutoresizingMaskIntoConstraints(handle, true);
    auto *const follower = new Sized({ 30, 10 }, &window);
    LayoutConstraint::activateConstraints({
            leftAnchor(follower).constraintEqualToAnchor(rightAnchor(handle), 4),
            topAnchor(follower).constraintEqualToAnchor(topAnchor(handle)),
    });
    EXPECT_EQ(window.place(follower), QRect(74, 60, 30, 10));
    handle->move(100, 20);
    EXPECT_EQ(window.place(follower), QRect(124, 20, 30, 10));
    EXPECT_EQ(window.place(handle), QRect(100, 20, 20, 20));
}

TEST(LayoutConstraint, heights_follow_widths_in_constraints_and_upwards)
{
    Window window(220, 300);
    auto *const column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto *const panel = new QWidget;
    auto *const rest = new QWidget;
    column->addWidget(panel);
    column->addWidget(rest, 1);
    auto *const text = new Flowing(10'000, panel);
    auto *const below = new Sized({ 50, 20 }, panel);
    below->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    LayoutConstraint::activateConstraints({
            topAnchor(text).constraintEqualToAnchor(topAnchor(panel), 5),
            leadingAnchor(text).constraintEqualToAnchor(leadingAnchor(panel), 10),
            trailingAnchor(text).constraintEqualToAnchor(trailingAnchor(panel), -10),
            topAnchor(below).constraintEqualToAnchor(bottomAnchor(text), 5),
            leadingAnchor(below).constraintEqualToAnchor(leadingAnchor(text)),
            bottomAnchor(below).constraintEqualToAnchor(bottomAnchor(panel), -10),
    });
    EXPECT_EQ(panel->heightForWidth(220), 5 + 50 + 5 + 20 + 10);
    EXPECT_EQ(panel->heightForWidth(120), 5 + 100 + 5 + 20 + 10);
    EXPECT_EQ(window.place(text), QRect(10, 5, 200, 50));
    EXPECT_EQ(window.place(panel), QRect(0, 0, 220, 90));
    window.resize(120, 300);
    EXPECT_EQ(window.place(text), QRect(10, 5, 100, 100));
    EXPECT_EQ(window.place(below), QRect(10, 110, 50, 20));
    EXPECT_EQ(window.place(panel), QRect(0, 0, 120, 140));
}

TEST(LayoutConstraint, a_height_that_is_a_width_by_a_constraint_follows_it_upwards)
{
    Window window(300, 100);
    auto *const column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    auto *const panel = new QWidget;
    column->addWidget(panel);
    auto *const square = new Sized({ 40, 40 }, panel);
    const auto isSquare = heightAnchor(square).constraintEqualToAnchor(widthAnchor(square));
    fillParent(square);
    EXPECT_FALSE(panel->layout()->hasHeightForWidth());
    isSquare->setActive(true);
    EXPECT_EQ(window.heightForWidth(300), 300);
    EXPECT_EQ(panel->minimumSizeHint(), QSize(0, 0));
    isSquare->setActive(false);
    EXPECT_FALSE(panel->layout()->hasHeightForWidth());
}

TEST(LayoutConstraint, a_window_grows_to_the_height_that_its_text_needs)
{
    Window window(400, 60);
    auto *const text = new Flowing(20'000, &window);
    fillParent(text);
    window.show();
    window.resize(100, 60);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.size() == QSize(100, 200); }));
    EXPECT_EQ(text->height(), 200);
}

TEST(LayoutConstraint, what_is_left_open_comes_out_the_same_every_time)
{
    const auto places = [](bool isShuffled) {
        Window window(300, 200);
        QWidget one(&window);
        QWidget other(&window);
        Constraints constraints {
            widthAnchor(&one).constraintGreaterThanOrEqualToConstant(40),
            leftAnchor(&other).constraintGreaterThanOrEqualToAnchor(rightAnchor(&one), 10),
            topAnchor(&one).constraintGreaterThanOrEqualToAnchor(topAnchor(&window), 5),
            heightAnchor(&other).constraintEqualToAnchor(heightAnchor(&one)),
        };
        one.setMinimumHeight(12);
        LayoutConstraint::activateConstraints({ constraints[0] }); // fixes the order of the two
        LayoutConstraint::activateConstraints({ constraints[1] });
        if (isShuffled) {
            LayoutConstraint::deactivateConstraints({ constraints[1] });
            LayoutConstraint::activateConstraints({ constraints[3], constraints[2] });
            window.resize(500, 500);
            window.place(&one);
            window.resize(300, 200);
            LayoutConstraint::activateConstraints({ constraints[1] });
        } else {
            LayoutConstraint::activateConstraints({ constraints[2], constraints[3] });
        }
        return std::pair(window.place(&one), window.place(&other));
    };
    EXPECT_EQ(places(false), places(true));
    EXPECT_EQ(places(false).first, QRect(0, 5, 40, 12));
    EXPECT_EQ(places(false).second, QRect(50, 0, 0, 12));
}

TEST(LayoutConstraint, code_that_runs_while_widgets_are_placed_may_change_the_constraints)
{
    class Restless : public QWidget
    {
    public:
        using QWidget::QWidget;
        std::function<void()> onResize;

    protected:
        void resizeEvent(QResizeEvent *) override
        {
            if (onResize)
                std::exchange(onResize, nullptr)();
        }
    };
    Window window(300, 200);
    auto *const restless = new Restless(&window);
    QPointer<QWidget> other = new QWidget(&window);
    const auto width = widthAnchor(restless).constraintEqualToConstant(50);
    LayoutConstraint::activateConstraints({
            width,
            leftAnchor(other).constraintEqualToAnchor(rightAnchor(restless)),
    });
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    restless->onResize = [&] {
        delete other.data();
        width->setConstant(80);
    };
    window.place(restless);
    width->setConstant(60);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !other && restless->width() == 80; }));
}

TEST(LayoutConstraint, an_invalid_constraint_is_refused_with_the_reason)
{
    using Attribute = LayoutAttribute;
    Window window(300, 200);
    window.setObjectName(u"panel"_s);
    Sized view({ 30, 20 }, &window);
    view.setObjectName(u"title"_s);
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct
    {
        Attribute first;
        Attribute second;
        double multiplier;
        double constant;
        const char *warning;
    } rows[] = {
        { Attribute::left, Attribute::bottom, 1, 0,
          "title.left == panel.bottom: one attribute is horizontal and the other vertical" },
        { Attribute::width, Attribute::left, 1, 0,
          "title.width == panel.left: one attribute is a size and the other a place" },
        { Attribute::notAnAttribute, Attribute::left, 1, 0,
          "title. == panel.left: it has no first attribute" },
        { Attribute::width, Attribute::height, infinity, 0,
          "title.width == inf * panel.height: its multiplier is not a finite number" },
        { Attribute::width, Attribute::height, 1, nan, "its constant is not a finite number" },
    };
    for (const auto &[first, second, multiplier, constant, warning] : rows) {
        std::shared_ptr<LayoutConstraint> made;
        EXPECT_THAT(warningsOf([&, f = first, s = second, m = multiplier, c = constant] {
                        made = LayoutConstraint::make(&view, f, LayoutRelation::equal, &window, s,
                                                      m, c);
                    }),
                    HasSubstr(warning));
        made->setActive(true);
        EXPECT_FALSE(made->isActive()) << warning;
    }

    const auto width = widthAnchor(&view).constraintEqualToConstant(50);
    pinTopLeading(&view);
    width->setActive(true);
    QSignalSpy changes(width.get(), &LayoutConstraint::constantChanged);
    EXPECT_EQ(warningsOf([&] { width->setConstant(nan); }),
              "Warning: the constraint title.width == 50 keeps its constant: nan is not a finite "
              "number\n");
    EXPECT_EQ(warningsOf([&] { width->setPriority(-infinity); }),
              "Warning: the constraint title.width == 50 keeps its priority: -inf is not a finite "
              "number\n");
    EXPECT_EQ(changes.size(), 0);
    EXPECT_EQ(width->priority(), LayoutPriority::required);
    EXPECT_EQ(window.place(&view).width(), 50);
}

TEST(LayoutConstraint, code_that_runs_as_constraints_become_active_may_delete_later_widgets)
{
    Window window(300, 200);
    Sized view({ 30, 20 }, &window);
    const QPointer<QWidget> later = new Sized({ 30, 20 }, &window);
    const Constraints constraints {
        leftAnchor(&view).constraintEqualToAnchor(leftAnchor(&window), 5),
        leftAnchor(later).constraintEqualToAnchor(rightAnchor(&view)),
        topAnchor(&view).constraintEqualToAnchor(topAnchor(&window), 7),
    };
    QObject::connect(constraints[0].get(), &LayoutConstraint::activeChanged, &window,
                     [later] { delete later.data(); });
    LayoutConstraint::activateConstraints(constraints);
    EXPECT_FALSE(constraints[1]->isActive());
    EXPECT_EQ(window.place(&view), QRect(5, 7, 30, 20));
}

TEST(LayoutConstraint, a_widget_without_a_name_is_named_by_its_place)
{
    Window window(300, 200);
    auto *const form = new QWidget(&window);
    form->setObjectName(u"form"_s);
    auto *const group = new QWidget(form);
    new QLabel(form);
    const auto nameOf = [](QWidget *widget) {
        return leftAnchor(widget).constraintEqualToAnchor(leftAnchor(widget))->description();
    };
    EXPECT_TRUE(nameOf(new QLabel(form)).startsWith(u"form/QLabel[2].left "_s));
    EXPECT_TRUE(nameOf(new QLabel(group)).startsWith(u"form/QWidget[1]/QLabel[1].left "_s));
    EXPECT_TRUE(nameOf(&window).startsWith(u"QWidget.left "_s));
}

TEST(LayoutConstraint, leading_follows_the_nearest_common_ancestor_in_whatever_order_they_come)
{
    for (const bool isContainerFirst : { true, false }) {
        Window window(300, 200);
        auto *const container = new QWidget(&window);
        container->setLayoutDirection(Qt::RightToLeft);
        auto *const view = new Sized({ 30, 20 }, container);
        const Constraints ofContainer {
            leadingAnchor(container).constraintEqualToAnchor(leadingAnchor(&window), 100),
            topAnchor(container).constraintEqualToAnchor(topAnchor(&window)),
            widthAnchor(container).constraintEqualToConstant(150),
            heightAnchor(container).constraintEqualToConstant(50),
        };
        const Constraints ofView {
            leadingAnchor(view).constraintEqualToAnchor(leadingAnchor(container), 10),
            topAnchor(view).constraintEqualToAnchor(topAnchor(container)),
            bottomAnchor(view).constraintLessThanOrEqualToAnchor(bottomAnchor(&window)),
        };
        LayoutConstraint::activateConstraints(isContainerFirst ? ofContainer : ofView);
        LayoutConstraint::activateConstraints(isContainerFirst ? ofView : ofContainer);
        EXPECT_EQ(window.place(container), QRect(100, 0, 150, 50)) << isContainerFirst;
        EXPECT_EQ(window.place(view), QRect(210, 0, 30, 20)) << isContainerFirst;
        container->setLayoutDirection(Qt::LeftToRight);
        EXPECT_EQ(window.place(view), QRect(110, 0, 30, 20)) << isContainerFirst;
    }
}

#include "NSLayoutConstraintTest.moc"
