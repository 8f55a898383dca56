// SPDX-License-Identifier: MIT
#include "Layout/Solver/Objective.h"

namespace Pellarvine::detail {

namespace {

// Weights are of the order of 1; less than that is rounding.
constexpr double smallestCost = 1e-8;

bool isCost(double cost)
{
    return std::abs(cost) > smallestCost;
}

} // namespace

void Objective::addToLevel(Symbol symbol, double level, double factor, int uses,
                           const Tableau &tableau)
{
    Level &state = m_levels[level];
    if (tableau.isBasic(symbol))
        state.cost.add(tableau.row(tableau.rowOf(symbol)), factor);
    else
        state.cost.add(symbol, factor);
    state.uses += uses;
    if (state.uses == 0)
        m_levels.erase(level);
}

void Objective::add(Symbol symbol, double level, double weight, const Tableau &tableau)
{
    addToLevel(symbol, level, weight, 1, tableau);
}

void Objective::remove(Symbol symbol, double level, double weight, const Tableau &tableau)
{
    addToLevel(symbol, level, -weight, -1, tableau);
}

void Objective::dropColumn(Symbol symbol)
{
    for (auto &[level, state] : m_levels)
        state.cost.erase(symbol);
}

void Objective::substitute(Symbol symbol, const LinearRow &value)
{
    for (auto &[level, state] : m_levels)
        state.cost.substitute(symbol, value);
}

double Objective::rounding() const
{
    double largest = 0.0;
    for (const auto &[level, state] : m_levels)
        largest = std::max(largest, state.cost.rounding);
    return largest;
}

bool Objective::mentions(Symbol symbol) const
{
    return std::any_of(m_levels.begin(), m_levels.end(), [&](const auto &level) {
        return isCost(level.second.cost.coefficientOf(symbol));
    });
}

void Objective::mark(std::vector<char> &marks) const
{
    for (const auto &[level, state] : m_levels) {
        for (const auto &entry : state.cost.entries) {
            if (isCost(entry.coefficient))
                marks[entry.symbol] = 1;
        }
    }
}

bool Objective::isLoweredBy(Symbol symbol) const
{
    for (const auto &[level, state] : m_levels) {
        if (const double cost = state.cost.coefficientOf(symbol); isCost(cost))
            return cost < 0.0;
    }
    return false;
}

int Objective::compare(Symbol symbol, double coefficient, Symbol other,
                       double otherCoefficient) const
{
    for (const auto &[level, state] : m_levels) {
        const double cost = state.cost.coefficientOf(symbol) / coefficient;
        const double otherCost = state.cost.coefficientOf(other) / otherCoefficient;
        if (isCost(cost - otherCost))
            return cost < otherCost ? -1 : 1;
    }
    return 0;
}

Objective::Symbol Objective::entering(const std::vector<char> &isFixed) const
{
    for (auto level = m_levels.begin(); level != m_levels.end(); ++level) {
        for (const auto &[symbol, coefficient] : level->second.cost.entries) {
            if (coefficient > -smallestCost || isFixed[symbol])
                continue;
            const bool costsMore =
                    std::any_of(m_levels.begin(), level, [symbol = symbol](const auto &stronger) {
                        return isCost(stronger.second.cost.coefficientOf(symbol));
                    });
            if (!costsMore)
                return symbol;
        }
    }
    return -1;
}

} // namespace Pellarvine::detail
