// SPDX-License-Identifier: MIT
// After thousands of changes, a solver gives the same results as a new one. Runs a few seeds with
// 1000 changes each, or PELLARVINE_ENDURANCE_SEEDS seeds with 10000; nightly runs use 100.
#include "Layout/Random.h"
#include "Layout/Solver/ConstraintSolver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Pellarvine::detail {

namespace {

using Solver = ConstraintSolver;
using Relation = Solver::Relation;
using Variable = Solver::Variable;

struct Wanted
{
    Solver::Expression expression;
    Relation relation = Relation::equal;
    Solver::Strength strength = Solver::required;
    std::optional<Solver::Strength> notAbove; ///< of a target's upper bound

    bool isRequired() const { return !std::isfinite(strength.level); }
};

// Makes variables as layouts do, an origin and a length for each widget, and random constraints
// between their edges, centres and lengths.
class Random : public RandomNumbers
{
public:
    using RandomNumbers::RandomNumbers;
    bool percent(int share) { return below(100) < share; }

    double constant() { return below(401) - 100; }

    Wanted constraint(const std::vector<Variable> &variables)
    {
        Wanted wanted;
        const int kind = below(10);
        if (kind < 6) {
            addEdge(wanted.expression, variables, 1.0);
            addEdge(wanted.expression, variables, -1.0);
        } else if (kind < 8) {
            wanted.expression.terms = { { extent(variables) },
                                        { extent(variables), -multiplier() } };
        } else {
            wanted.expression.terms = { { extent(variables) } };
        }
        wanted.expression.constant = constant();
        wanted.relation = std::array { Relation::lessThanOrEqual, Relation::equal,
                                       Relation::greaterThanOrEqual }[below(3)];
        if (percent(60))
            return wanted;
        wanted.strength = strength();
        if (percent(30)) {
            wanted.relation = Relation::equal;
            wanted.notAbove = strength();
        }
        return wanted;
    }

private:
    Variable extent(const std::vector<Variable> &variables)
    {
        return variables[below(int(variables.size()) / 2) * 2 + 1];
    }

    void addEdge(Solver::Expression &expression, const std::vector<Variable> &variables,
                 double factor)
    {
        const int pair = below(int(variables.size()) / 2);
        expression.terms.push_back({ variables[pair * 2], factor });
        if (const int halves = below(3); halves > 0)
            expression.terms.push_back({ variables[pair * 2 + 1], factor * halves / 2.0 });
    }

    double multiplier() { return std::array { 1.0, 1.0, 1.0, 0.5, 2.0, 1.5, 1.0 / 3.0 }[below(7)]; }

    Solver::Strength strength()
    {
        return { std::array { 250.0, 500.0, 750.0 }[below(3)], 1.0 + 1.0 / (2.0 + below(100)) };
    }
};

// A solver, and the list of the constraints that it should have.
class Session
{
public:
    explicit Session(int pairs)
    {
        for (int i = 0; i < 2 * pairs; ++i)
            m_variables.push_back(m_solver.addVariable());
    }

    const std::vector<Variable> &variables() const { return m_variables; }
    const std::vector<Wanted> &system() const { return m_system; }

    bool add(const Wanted &wanted)
    {
        const auto handle =
                wanted.notAbove ? std::optional(
                        m_solver.addTarget(wanted.expression, wanted.strength, *wanted.notAbove))
                                : m_solver.add(wanted.expression, wanted.relation, wanted.strength)
                                          .constraint;
        if (!handle)
            return false;
        m_system.push_back(wanted);
        m_handles.push_back(*handle);
        return true;
    }

    void remove(int index)
    {
        m_solver.remove(m_handles[index]);
        m_handles.erase(m_handles.begin() + index);
        m_system.erase(m_system.begin() + index);
    }

    void setConstant(int index, double constant)
    {
        if (m_solver.setConstant(m_handles[index], constant).empty())
            m_system[index].expression.constant = constant;
    }

    std::vector<double> values()
    {
        m_solver.solve();
        std::vector<double> values;
        for (const Variable variable : m_variables)
            values.push_back(m_solver.value(variable));
        return values;
    }

    // The largest error of a required constraint.
    double missed() const
    {
        double most = 0.0;
        for (const Wanted &wanted : m_system) {
            if (!wanted.isRequired())
                continue;
            double sum = wanted.expression.constant;
            for (const auto &[variable, coefficient] : wanted.expression.terms)
                sum += coefficient * m_solver.value(variable);
            const bool isAllowed = wanted.relation == Relation::equal             ? false
                                   : wanted.relation == Relation::lessThanOrEqual ? sum <= 0.0
                                                                                  : sum >= 0.0;
            if (!isAllowed)
                most = std::max(most, std::abs(sum));
        }
        return most;
    }

private:
    Solver m_solver;
    std::vector<Variable> m_variables;
    std::vector<Wanted> m_system;
    std::vector<Solver::Constraint> m_handles;
};

// Whether the results are those of a new solver, and all required constraints hold.
testing::AssertionResult isAsFresh(Session &session)
{
    const std::vector<double> values = session.values();
    Session fresh(int(values.size()) / 2);
    for (const Wanted &wanted : session.system()) {
        if (!fresh.add(wanted))
            return testing::AssertionFailure() << "a fresh solver refuses a constraint";
    }
    const std::vector<double> expected = fresh.values();
    double largest = 1.0;
    double difference = 0.0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        largest = std::max(largest, std::abs(expected[i]));
        difference = std::max(difference, std::abs(expected[i] - values[i]));
    }
    const double missed = session.missed();
    if (difference <= 1e-6 * largest && missed <= 1e-6 * largest)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "differs by " << difference << ", misses what is required by " << missed
           << " (a fresh one by " << fresh.missed() << "), of values up to " << largest;
}

void endure(unsigned seed, int operations)
{
    Random random(seed);
    Session session(5 + random.below(36));
    const int pairs = int(session.variables().size()) / 2;
    for (int step = 1; step <= operations; ++step) {
        const int size = int(session.system().size());
        const int action = random.below(10);
        if (size > 0 && (action < 3 || size > 4 * pairs))
            session.remove(random.below(size));
        else if (size > 0 && action < 6)
            session.setConstant(random.below(size), random.constant());
        else
            session.add(random.constraint(session.variables()));
        if (step % 50 == 0) {
            ASSERT_TRUE(isAsFresh(session))
                    << "seed " << seed << ", " << pairs << " pairs, after " << step;
        }
    }
}

} // namespace

TEST(ConstraintSolver, stands_after_thousands_of_changes_where_a_fresh_one_stands)
{
    const int seeds = qEnvironmentVariableIntValue("PELLARVINE_ENDURANCE_SEEDS");
    for (unsigned seed = 0; seed < unsigned(seeds > 0 ? seeds : 5); ++seed)
        endure(seed, seeds > 0 ? 10000 : 1000);
}

} // namespace Pellarvine::detail
