// SPDX-License-Identifier: MIT
#include "Layout/Solver/ConstraintSolver.h"

#include "Layout/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Pellarvine::detail {

namespace {

using Solver = ConstraintSolver;
using Relation = Solver::Relation;
using Variable = Solver::Variable;
using Constraint = Solver::Constraint;

// A constraint with one coefficient for each variable, so that it can be checked without a solver.
struct Wanted
{
    std::vector<double> coefficients;
    double constant = 0.0;
    Relation relation = Relation::equal;
    Solver::Strength strength = Solver::required;

    bool isRequired() const { return !std::isfinite(strength.level); }

    double error(const std::vector<double> &values) const
    {
        double sum = constant;
        for (std::size_t i = 0; i < coefficients.size(); ++i)
            sum += coefficients[i] * values[i];
        switch (relation) {
        case Relation::lessThanOrEqual:
            return std::max(0.0, sum);
        case Relation::equal:
            return std::abs(sum);
        case Relation::greaterThanOrEqual:
            return std::max(0.0, -sum);
        }
        return 0.0;
    }

    Solver::Expression expression(const std::vector<Variable> &variables) const
    {
        Solver::Expression result { {}, constant };
        for (std::size_t i = 0; i < coefficients.size(); ++i) {
            if (coefficients[i] != 0.0)
                result.terms.push_back({ variables[i], coefficients[i] });
        }
        return result;
    }
};

constexpr std::array levels { 3.0, 2.0, 1.0 };

// The cost of a solution, compared lexicographically: the errors by level, then the distance of
// each variable from 0.
std::vector<double> costOf(const std::vector<Wanted> &system, const std::vector<double> &values)
{
    std::vector<double> cost;
    for (const double level : levels) {
        double sum = 0.0;
        for (const Wanted &wanted : system) {
            if (wanted.strength.level == level)
                sum += wanted.strength.weight * wanted.error(values);
        }
        cost.push_back(sum);
    }
    for (const double value : values)
        cost.push_back(std::abs(value));
    return cost;
}

bool isLess(const std::vector<double> &one, const std::vector<double> &other)
{
    for (std::size_t i = 0; i < one.size(); ++i) {
        if (std::abs(one[i] - other[i]) > 1e-6)
            return one[i] < other[i];
    }
    return false;
}

// Solves a square system by Gauss's elimination; nothing if it is singular.
std::optional<std::vector<double>> intersection(std::vector<std::vector<double>> planes)
{
    const std::size_t count = planes.size();
    for (std::size_t column = 0; column < count; ++column) {
        std::size_t largest = column;
        for (std::size_t row = column; row < count; ++row) {
            if (std::abs(planes[row][column]) > std::abs(planes[largest][column]))
                largest = row;
        }
        if (std::abs(planes[largest][column]) < 1e-9)
            return std::nullopt;
        std::swap(planes[column], planes[largest]);
        for (std::size_t row = 0; row < count; ++row) {
            const double factor = planes[row][column] / planes[column][column];
            if (row == column || factor == 0.0)
                continue;
            for (std::size_t i = column; i <= count; ++i)
                planes[row][i] -= factor * planes[column][i];
        }
    }
    std::vector<double> point;
    for (std::size_t row = 0; row < count; ++row)
        point.push_back(-planes[row][count] / planes[row][row]);
    return point;
}

// The best of all points where as many planes (of constraints and axes) intersect as there are
// variables. The optimum is one of them, because the cost is linear between them.
std::optional<std::vector<double>> bruteForce(const std::vector<Wanted> &system, std::size_t count)
{
    std::vector<std::vector<double>> planes;
    for (const Wanted &wanted : system) {
        planes.push_back(wanted.coefficients);
        planes.back().push_back(wanted.constant);
    }
    for (std::size_t i = 0; i < count; ++i) {
        planes.emplace_back(count + 1, 0.0);
        planes.back()[i] = 1.0;
    }
    std::vector<bool> chosen(planes.size(), false);
    std::fill_n(chosen.begin(), count, true);
    std::optional<std::vector<double>> best;
    std::vector<double> bestCost;
    do {
        std::vector<std::vector<double>> square;
        for (std::size_t i = 0; i < planes.size(); ++i) {
            if (chosen[i])
                square.push_back(planes[i]);
        }
        const auto point = intersection(std::move(square));
        if (!point)
            continue;
        const bool isFeasible =
                std::all_of(system.begin(), system.end(), [&](const Wanted &wanted) {
                    return !wanted.isRequired() || wanted.error(*point) < 1e-6;
                });
        if (!isFeasible)
            continue;
        std::vector<double> cost = costOf(system, *point);
        if (!best || isLess(cost, bestCost)) {
            best = point;
            bestCost = std::move(cost);
        }
    } while (std::prev_permutation(chosen.begin(), chosen.end()));
    return best;
}

class Random : public RandomNumbers
{
public:
    using RandomNumbers::RandomNumbers;

    Wanted constraint(std::size_t variables)
    {
        Wanted wanted;
        wanted.coefficients.assign(variables, 0.0);
        const int terms = 1 + below(3);
        for (int i = 0; i < terms; ++i)
            wanted.coefficients[below(int(variables))] = below(5) - 2;
        wanted.constant = constant();
        wanted.relation = std::array { Relation::lessThanOrEqual, Relation::equal,
                                       Relation::greaterThanOrEqual }[below(3)];
        if (const int level = below(5); level < 3)
            wanted.strength = { levels[level], 1.0 + below(3) };
        return wanted;
    }

    double constant() { return below(41) - 20; }
};

std::vector<Variable> addVariables(Solver &solver, std::size_t count)
{
    std::vector<Variable> variables;
    for (std::size_t i = 0; i < count; ++i)
        variables.push_back(solver.addVariable());
    return variables;
}

std::vector<double> solution(Solver &solver, const std::vector<Variable> &variables)
{
    solver.solve();
    std::vector<double> values;
    values.reserve(variables.size());
    for (const Variable variable : variables)
        values.push_back(solver.value(variable));
    return values;
}

testing::AssertionResult areNear(const std::vector<double> &one, const std::vector<double> &other)
{
    for (std::size_t i = 0; i < one.size(); ++i) {
        if (std::abs(one[i] - other[i]) > 1e-5)
            return testing::AssertionFailure()
                   << testing::PrintToString(one) << " and " << testing::PrintToString(other);
    }
    return testing::AssertionSuccess();
}

// A solver, and the list of the constraints that it should have.
struct Session
{
    explicit Session(std::size_t count)
        : variables(addVariables(solver, count))
    { }

    bool add(const Wanted &wanted, std::vector<Constraint> *conflict = nullptr)
    {
        const auto added =
                solver.add(wanted.expression(variables), wanted.relation, wanted.strength);
        if (!added.constraint) {
            if (conflict)
                *conflict = added.conflict;
            return false;
        }
        system.push_back(wanted);
        handles.push_back(*added.constraint);
        return true;
    }

    void remove(int index)
    {
        solver.remove(handles[index]);
        handles.erase(handles.begin() + index);
        system.erase(system.begin() + index);
    }

    std::vector<Constraint> setConstant(int index, double constant)
    {
        auto conflict = solver.setConstant(handles[index], constant);
        if (conflict.empty())
            system[index].constant = constant;
        return conflict;
    }

    std::vector<double> values() { return solution(solver, variables); }

    Solver solver;
    std::vector<Variable> variables;
    std::vector<Wanted> system;
    std::vector<Constraint> handles;
};

} // namespace

TEST(ConstraintSolver, finds_what_brute_force_finds_while_constraints_come_go_and_change)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        Random random(seed);
        const std::size_t count = 1 + random.below(3);
        Session session(count);
        for (int step = 0; step < 40; ++step) {
            const int size = int(session.system.size());
            const int action = random.below(4);
            std::vector<Wanted> next = session.system;
            if (size > 0 && (action == 0 || size > 8)) {
                session.remove(random.below(size));
            } else if (size > 0 && action == 1) {
                const int index = random.below(size);
                next[index].constant = random.constant();
                const auto conflict = session.setConstant(index, next[index].constant);
                ASSERT_EQ(conflict.empty(), bruteForce(next, count).has_value())
                        << "seed " << seed << " step " << step;
            } else {
                next.push_back(random.constraint(count));
                ASSERT_EQ(session.add(next.back()), bruteForce(next, count).has_value())
                        << "seed " << seed << " step " << step;
            }
            ASSERT_TRUE(areNear(session.values(), *bruteForce(session.system, count)))
                    << "seed " << seed << " step " << step;
        }
    }
}

TEST(ConstraintSolver, names_a_smallest_set_of_required_constraints_that_contradict_each_other)
{
    int conflicts = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        Random random(seed);
        const std::size_t count = 3;
        Session session(count);
        for (int i = 0; i < 12; ++i) {
            const Wanted wanted = random.constraint(count);
            std::vector<Constraint> named;
            if (session.add(wanted, &named))
                continue;
            ++conflicts;
            std::vector<Wanted> culprits { wanted };
            for (const Constraint handle : named) {
                const auto place =
                        std::find(session.handles.begin(), session.handles.end(), handle);
                ASSERT_NE(place, session.handles.end());
                culprits.push_back(session.system[place - session.handles.begin()]);
            }
            EXPECT_FALSE(bruteForce(culprits, count)) << "seed " << seed;
            for (std::size_t k = 0; k < culprits.size(); ++k) {
                std::vector<Wanted> fewer = culprits;
                fewer.erase(fewer.begin() + std::ptrdiff_t(k));
                EXPECT_TRUE(bruteForce(fewer, count)) << "seed " << seed << " without " << k;
            }
        }
    }
    EXPECT_GT(conflicts, 100);
}

TEST(ConstraintSolver, no_number_of_weaker_errors_outweighs_a_stronger_one)
{
    Solver solver;
    const Variable x = solver.addVariable();
    solver.add({ { { x } }, -1.0 }, Relation::equal, { 251.0 });
    for (int i = 0; i < 1000; ++i)
        solver.add({ { { x } }, -2.0 }, Relation::equal, { 250.0, 1000.0 });
    EXPECT_EQ(solution(solver, { x }), std::vector { 1.0 });
}

TEST(ConstraintSolver, a_target_gives_way_on_either_side_by_its_own_strength)
{
    Solver solver;
    const Variable x = solver.addVariable();
    solver.addTarget({ { { x } }, -100.0 }, { 750.0 }, { 250.0 });
    const auto other = solver.add({ { { x } }, -140.0 }, Relation::equal, { 500.0 }).constraint;
    EXPECT_EQ(solution(solver, { x }), std::vector { 140.0 });
    solver.setConstant(*other, -60.0);
    EXPECT_EQ(solution(solver, { x }), std::vector { 100.0 });
}

TEST(ConstraintSolver, a_term_times_0_says_nothing_of_its_variable)
{
    Solver solver;
    const Variable x = solver.addVariable();
    const Variable y = solver.addVariable();
    ASSERT_TRUE(solver.add({ { { x }, { y, 0.0 } }, -50.0 }, Relation::equal).constraint);
    solver.add({ { { y } }, -7.0 }, Relation::equal, { 1.0 });
    EXPECT_EQ(solution(solver, { x, y }), (std::vector { 50.0, 7.0 }));
}

TEST(ConstraintSolver, a_snapshot_stays_until_the_next_one)
{
    Solver solver;
    const Variable x = solver.addVariable();
    const auto equality = solver.add({ { { x } }, -5.0 }, Relation::equal).constraint;
    solver.solve();
    solver.setConstant(*equality, -7.0);
    EXPECT_EQ(solver.value(x), 5.0);
    solver.solve();
    EXPECT_EQ(solver.value(x), 7.0);
}

TEST(ConstraintSolver, variables_come_and_go_without_a_trace_in_the_others)
{
    Random random(7);
    Session session(4);
    for (int step = 0; step < 200; ++step) {
        const Variable passing = session.solver.addVariable();
        Solver::Expression expression {
            { { passing }, { session.variables[random.below(4)], -1.0 } }, random.constant()
        };
        const auto first = session.solver.add(expression, Relation::equal).constraint;
        session.add(random.constraint(4));
        expression.constant += 1.0;
        const auto second =
                session.solver.add(expression, Relation::lessThanOrEqual, { 2.0 }).constraint;
        session.solver.remove(step % 2 ? *first : *second);
        session.solver.remove(step % 2 ? *second : *first);
        session.solver.removeVariable(passing);
        if (session.system.size() > 8)
            session.remove(random.below(int(session.system.size())));
        if (step % 10 != 0)
            continue;
        ASSERT_TRUE(areNear(session.values(), *bruteForce(session.system, 4)));
    }
}

} // namespace Pellarvine::detail
