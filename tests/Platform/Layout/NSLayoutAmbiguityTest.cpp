// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSLayoutAmbiguity.h>
#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSView.h>

#include <QLabel>
#include <gtest/gtest.h>

using namespace NS;

namespace {

using Constraints = QList<std::shared_ptr<LayoutConstraint>>;

} // namespace

TEST(LayoutAmbiguity, a_place_is_open_until_constraints_and_hints_say_one)
{
    QWidget window;
    window.resize(400, 300);
    auto *const label = new QLabel(QStringLiteral("Name"), &window);
    auto *const panel = new QWidget(&window); // has no size hint
    const auto isOpen = [&](QWidget *widget, const Constraints &constraints) {
        LayoutConstraint::activateConstraints(constraints);
        const bool result = hasAmbiguousLayout(widget);
        layoutSubtreeIfNeeded(&window); // the question does not change the layout
        const QRect before = widget->geometry();
        EXPECT_EQ(hasAmbiguousLayout(widget), result);
        layoutSubtreeIfNeeded(&window);
        EXPECT_EQ(widget->geometry(), before);
        LayoutConstraint::deactivateConstraints(constraints);
        return result;
    };
    const auto leading = [&](QWidget *widget, double constant) {
        return leadingAnchor(widget).constraintEqualToAnchor(leadingAnchor(&window), constant);
    };
    const auto top = [&](QWidget *widget) {
        return topAnchor(widget).constraintEqualToAnchor(topAnchor(&window), 20);
    };
    const auto lowerBound =
            leadingAnchor(label).constraintGreaterThanOrEqualToAnchor(leadingAnchor(&window), 10);
    const auto atMost =
            leadingAnchor(label).constraintLessThanOrEqualToAnchor(leadingAnchor(&window), 10);
    struct Row
    {
        const char *name;
        QWidget *widget;
        Constraints constraints;
        bool isOpen;
    };
    const Row rows[] = {
        { "no constraints", label, {}, false },
        { "no x", label, { top(label) }, true },
        { "a place and a hint", label, { top(label), leading(label, 10) }, false },
        { "an x that has room", label, { top(label), lowerBound }, true },
        { "an x between two limits", label, { top(label), lowerBound, atMost }, false },
        { "an optional constraint",
          label,
          { top(label), leading(label, 10)->withPriority(LayoutPriority::defaultLow) },
          false },
        { "no size", panel, { top(panel), leading(panel, 10) }, true },
        { "a size",
          panel,
          { top(panel), leading(panel, 10), widthAnchor(panel).constraintEqualToConstant(50),
            heightAnchor(panel).constraintEqualToAnchor(heightAnchor(&window)) },
          false },
        { "a place beside an open one",
          label,
          { top(label), top(panel),
            leadingAnchor(label).constraintEqualToAnchor(trailingAnchor(panel), 8) },
          true },
    };
    for (const Row &row : rows)
        EXPECT_EQ(isOpen(row.widget, row.constraints), row.isOpen) << row.name;
}

TEST(LayoutAmbiguity, an_open_place_is_exercised_there_and_back_and_a_determined_one_is_not)
{
    QWidget window;
    window.resize(400, 300);
    auto *const label = new QLabel(QStringLiteral("Name"), &window);
    auto *const follower = new QLabel(QStringLiteral("Ada"), &window);
    const auto left = leftAnchor(label).constraintEqualToAnchor(leftAnchor(&window), 7);
    LayoutConstraint::activateConstraints({
            left,
            topAnchor(label).constraintLessThanOrEqualToAnchor(topAnchor(&window)),
            leftAnchor(follower).constraintEqualToAnchor(rightAnchor(label)),
            topAnchor(follower).constraintEqualToAnchor(topAnchor(label)),
    });
    layoutSubtreeIfNeeded(&window);
    const QRect before = label->geometry();
    exerciseAmbiguity(label);
    EXPECT_EQ(label->geometry(), before.translated(0, -24)); // it cannot move down
    EXPECT_EQ(follower->y(), -24);
    exerciseAmbiguity(label);
    EXPECT_EQ(label->geometry(), before);
    left->setActive(false);
    layoutSubtreeIfNeeded(&window);
    exerciseAmbiguity(label);
    EXPECT_EQ(label->geometry(), before.translated(24 - 7, -24));
    topAnchor(label).constraintEqualToAnchor(topAnchor(&window))->setActive(true);
    left->setActive(true);
    layoutSubtreeIfNeeded(&window);
    exerciseAmbiguity(label);
    EXPECT_EQ(label->geometry(), before);
    exerciseAmbiguity(&window);
}

TEST(LayoutAmbiguity, a_place_depends_on_the_constraints_that_would_move_it)
{
    QWidget window;
    window.resize(400, 300);
    auto *const label = new QLabel(QStringLiteral("Name"), &window);
    auto *const field = new QWidget(&window);
    const auto labelX = leadingAnchor(label).constraintEqualToAnchor(leadingAnchor(&window), 10);
    const auto labelWidth = widthAnchor(label).constraintEqualToConstant(80);
    const auto fieldX = leadingAnchor(field).constraintEqualToAnchor(trailingAnchor(label), 8);
    const auto fieldEnd = trailingAnchor(field).constraintEqualToAnchor(trailingAnchor(&window));
    const auto wide = widthAnchor(field).constraintGreaterThanOrEqualToConstant(20);
    const auto sameTop = topAnchor(field).constraintEqualToAnchor(topAnchor(label));
    const auto labelY = topAnchor(label).constraintEqualToAnchor(topAnchor(&window), 5);
    LayoutConstraint::activateConstraints(
            { labelX, labelWidth, fieldX, fieldEnd, wide, sameTop, labelY });

    EXPECT_EQ(constraintsAffectingLayout(label, Qt::Horizontal),
              (Constraints { labelX, labelWidth }));
    EXPECT_EQ(constraintsAffectingLayout(field, Qt::Horizontal),
              (Constraints { labelX, labelWidth, fieldX, fieldEnd }));
    EXPECT_EQ(constraintsAffectingLayout(field, Qt::Vertical), (Constraints { sameTop, labelY }));
    EXPECT_EQ(constraintsAffectingLayout(&window, Qt::Horizontal), Constraints());

    labelX->setPriority(LayoutPriority::defaultLow);
    fieldEnd->setActive(false);
    wide->setConstant(400); // now this constraint limits the field
    EXPECT_EQ(constraintsAffectingLayout(field, Qt::Horizontal),
              (Constraints { labelX, labelWidth, fieldX, wide }));
}
