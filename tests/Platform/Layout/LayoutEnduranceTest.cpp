// SPDX-License-Identifier: MIT
// After thousands of changes, widgets are at the same places as in a new window with the same
// constraints. PELLARVINE_ENDURANCE_SEEDS sets the number of seeds; nightly runs use 100.
#include "Layout/Random.h"

#include <pellarvine/Platform/NSLayoutConstraint.h>
#include <pellarvine/Platform/NSView.h>

#include <QPushButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

using namespace NS;

namespace {

constexpr int widgets = 12;
constexpr int candidates = 60;

// A constraint between two of the widgets, or one of them and the window (-1).
struct Candidate
{
    int first;
    LayoutAttribute firstAttribute;
    LayoutRelation relation;
    int second;
    LayoutAttribute secondAttribute;
    double multiplier;
    double constant;
    double priority;
};

class Random : public RandomNumbers
{
public:
    using RandomNumbers::RandomNumbers;

    Candidate candidate()
    {
        using Attribute = LayoutAttribute;
        const std::array x { Attribute::left, Attribute::right, Attribute::centerX,
                             Attribute::leading, Attribute::trailing };
        const std::array y { Attribute::top, Attribute::bottom, Attribute::centerY };
        Candidate made {};
        made.first = below(widgets);
        made.second = below(widgets + 4) % (widgets + 1) - 1;
        made.multiplier = 1.0;
        switch (below(3)) {
        case 0:
            made.firstAttribute = x[below(5)];
            made.secondAttribute = x[below(5)];
            break;
        case 1:
            made.firstAttribute = y[below(3)];
            made.secondAttribute = y[below(3)];
            break;
        default:
            made.firstAttribute = below(2) ? Attribute::width : Attribute::height;
            made.secondAttribute = made.firstAttribute;
            made.multiplier = std::array { 1.0, 1.0, 0.5, 2.0 }[below(4)];
        }
        made.relation = std::array { LayoutRelation::lessThanOrEqual, LayoutRelation::equal,
                                     LayoutRelation::greaterThanOrEqual }[below(3)];
        made.constant = constant();
        made.priority = priority();
        return made;
    }

    double constant() { return below(200) - 50; }
    double priority() { return std::array { 1000.0, 1000.0, 1000.0, 750.0, 300.0 }[below(5)]; }
};

class Form
{
public:
    Form()
    {
        m_window.setFixedSize(600, 500);
        for (int i = 0; i < widgets; ++i)
            m_buttons.push_back(new QPushButton(QString(3 + i, u'x'), &m_window));
    }

    std::shared_ptr<LayoutConstraint> make(const Candidate &candidate)
    {
        auto made = LayoutConstraint::make(widget(candidate.first), candidate.firstAttribute,
                                           candidate.relation, widget(candidate.second),
                                           candidate.secondAttribute, candidate.multiplier,
                                           candidate.constant);
        made->setPriority(candidate.priority);
        return made;
    }

    std::vector<QRect> places()
    {
        layoutSubtreeIfNeeded(&m_window);
        std::vector<QRect> places;
        for (const QWidget *const button : m_buttons)
            places.push_back(button->geometry());
        return places;
    }

private:
    QWidget *widget(int index) { return index < 0 ? &m_window : m_buttons[index]; }

    QWidget m_window;
    std::vector<QWidget *> m_buttons;
};

// Each edge may differ by one unit, because of rounding.
bool isNear(const QRect &one, const QRect &other)
{
    return std::abs(one.left() - other.left()) <= 1 && std::abs(one.top() - other.top()) <= 1
           && std::abs(one.right() - other.right()) <= 1
           && std::abs(one.bottom() - other.bottom()) <= 1;
}

std::string textOf(const QRect &rect)
{
    return std::to_string(rect.x()) + ' ' + std::to_string(rect.y()) + ' '
           + std::to_string(rect.width()) + 'x' + std::to_string(rect.height());
}

// The differences between the two windows. Empty if there are none.
std::string endure(unsigned seed, int operations)
{
    Random random(seed);
    Form form;
    std::vector<Candidate> all;
    std::vector<std::shared_ptr<LayoutConstraint>> constraints;
    for (int i = 0; i < candidates; ++i) {
        all.push_back(random.candidate());
        constraints.push_back(form.make(all.back()));
    }
    std::vector<int> order; // of activation
    for (int step = 1; step <= operations; ++step) {
        const int index = random.below(candidates);
        LayoutConstraint *const constraint = constraints[index].get();
        const int action = random.below(4);
        if (action == 0) {
            constraint->setConstant(all[index].constant = random.constant());
        } else if (action == 1) {
            constraint->setPriority(all[index].priority = random.priority());
        } else if (constraint->isActive() || order.size() < 24) {
            std::erase(order, index);
            constraint->setActive(!constraint->isActive());
            order.push_back(index);
        }
        std::erase_if(order, [&](int i) { return !constraints[i]->isActive(); });
        if (step % 50 != 0)
            continue;
        Form fresh;
        QList<std::shared_ptr<LayoutConstraint>> same;
        for (const int i : order)
            same.append(fresh.make(all[i]));
        LayoutConstraint::activateConstraints(same);
        const auto when = [&] {
            return "seed " + std::to_string(seed) + " after " + std::to_string(step);
        };
        if (!std::all_of(same.begin(), same.end(),
                         [](const auto &made) { return made->isActive(); }))
            return when() + ": a fresh window refuses a constraint";
        const std::vector<QRect> places = form.places();
        const std::vector<QRect> expected = fresh.places();
        for (int i = 0; i < widgets; ++i) {
            const bool isConstrained = std::any_of(order.begin(), order.end(), [&](int k) {
                return all[k].first == i || all[k].second == i;
            });
            if (isConstrained && !isNear(places[i], expected[i]))
                return when() + ", widget " + std::to_string(i) + ": " + textOf(places[i])
                       + " and not " + textOf(expected[i]);
        }
    }
    return {};
}

} // namespace

TEST(LayoutConstraint, widgets_stand_after_thousands_of_changes_where_those_of_a_fresh_window_stand)
{
    const int seeds = qEnvironmentVariableIntValue("PELLARVINE_ENDURANCE_SEEDS");
    for (unsigned seed = 0; seed < unsigned(seeds > 0 ? seeds : 4); ++seed) {
        ::testing::internal::CaptureStdout(); // the warnings about conflicts
        const std::string difference = endure(seed, seeds > 0 ? 10000 : 1000);
        ::testing::internal::GetCapturedStdout();
        EXPECT_EQ(difference, "");
    }
}
