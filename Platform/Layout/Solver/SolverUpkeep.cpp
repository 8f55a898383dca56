// SPDX-License-Identifier: MIT
// Keeps rounding errors from growing.
#include "Layout/Solver/SolverState.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Pellarvine::detail {

namespace {

// With larger rounding errors, coefficients have lost too many of their sixteen digits.
constexpr double largestRounding = 1e-11;
// Larger rounding errors could be taken for coefficients. No system may keep them.
constexpr double fatalRounding = 1e-10;

} // namespace

// Whether rounding errors have grown too large. Those of a difficult system are large from the
// start: computing it again would not help.
bool ConstraintSolver::Private::isWorn() const
{
    const double rounding = std::max(simplex.rounding(), definitions.rounding());
    return simplex.hasFailed() || rounding > std::max(largestRounding, 10.0 * freshRounding)
           || (changes > 0 && rounding > fatalRounding);
}

// Whether the last solution violates the original constraints.
bool ConstraintSolver::Private::isMissed() const
{
    double largest = 1.0;
    for (const double value : values)
        largest = std::max(largest, std::abs(value));
    const double allowed = 1e-9 * largest + smallestValue;
    return std::any_of(records.begin(), records.end(), [&](const Record &record) {
        if (!record.isIn)
            return false;
        double sum = record.factor * record.constant;
        for (const auto &[symbol, coefficient] : record.terms)
            sum += coefficient * values[symbol];
        const double marker = values[record.marker];
        const double partner = record.partner >= 0 ? values[record.partner] : 0.0;
        return !(std::abs(sum + record.markerSign * (marker - partner)) <= allowed)
               || (record.isEquality ? !(std::abs(marker) <= allowed) : !(marker >= -allowed))
               || !(partner >= -allowed);
    });
}

// Checks the solution after each change of the basis, and after some changes without one.
bool ConstraintSolver::Private::isUnreliable()
{
    constexpr int mostUnchecked = 64;
    if (simplex.hasFailed() || std::max(simplex.rounding(), definitions.rounding()) > fatalRounding)
        return true;
    if (checkedPivots == simplex.pivots() && std::abs(changes - checkedChanges) < mostUnchecked)
        return false;
    checkedPivots = simplex.pivots();
    checkedChanges = changes;
    return isMissed();
}

std::vector<char> ConstraintSolver::Private::forgetRows()
{
    definitions = {};
    for (std::size_t i = 0; i < symbols.size(); ++i)
        definitions.addSymbol();
    decidedPivots.reset();
    changes = 0;
    return simplex.startAgain();
}

void ConstraintSolver::Private::addAnyhow(int index)
{
    LinearRow row = rowOf(records[index]);
    if (!define(row))
        simplex.insertAnyhow(std::move(row), records[index].marker);
}

// Computes everything again for the current basis, from the records, which have no rounding errors.
void ConstraintSolver::Private::renew()
{
    const std::vector<char> wasBasic = forgetRows();
    for (int index = 0; index < int(records.size()); ++index) {
        if (records[index].isIn)
            addAnyhow(index);
    }
    simplex.makeBasic(wasBasic);
    findOptimum();
    freshRounding = std::max(simplex.rounding(), definitions.rounding());
}

// Computes everything again, as a new solver does, without the current basis.
void ConstraintSolver::Private::startAgain()
{
    std::vector<int> all;
    for (int index = 0; index < int(records.size()); ++index) {
        if (std::exchange(records[index].isIn, false))
            all.push_back(index);
    }
    forgetRows();
    std::vector<int> contradicting;
    for (const int index : all) {
        if (!addReliably(index).empty())
            contradicting.push_back(index);
    }
    // All constraints held before, so the contradiction is a rounding error.
    for (const int index : contradicting) {
        records[index].isIn = true;
        addAnyhow(index);
    }
    if (!contradicting.empty())
        findOptimum();
    changesSinceStart = 0;
    freshRounding = std::max(simplex.rounding(), definitions.rounding());
}

// Adds a row. Tries again if rounding errors may be the reason of a contradiction.
std::vector<ConstraintSolver::Constraint> ConstraintSolver::Private::addReliably(int index)
{
    std::vector<Constraint> conflict = addRow(index);
    if (!conflict.empty() && isWorn()) {
        renew();
        conflict = addRow(index);
    }
    ++changes;
    if (isWorn())
        renew();
    return conflict;
}

// Called after each change.
void ConstraintSolver::Private::settle()
{
    // Renewals are rare enough to add little to the cost of a change.
    const int most = 1000 + 4 * int(records.size());
    ++changesSinceStart;
    if (++changes > most || isWorn())
        renew();
    if (simplex.hasFailed())
        startAgain();
}

} // namespace Pellarvine::detail
