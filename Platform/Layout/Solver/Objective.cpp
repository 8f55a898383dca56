// SPDX-License-Identifier: MIT
#include "Layout/Solver/Objective.h"

namespace Pellarvine::detail {

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

bool Objective::mentions(Symbol symbol) const
{
    return std::any_of(m_levels.begin(), m_levels.end(), [&](const auto &level) {
        return level.second.cost.coefficientOf(symbol) != 0.0;
    });
}

void Objective::mark(std::vector<char> &marks) const
{
    for (const auto &[level, state] : m_levels) {
        for (const auto &entry : state.cost.entries)
            marks[entry.symbol] = 1;
    }
}

bool Objective::isLoweredBy(Symbol symbol) const
{
    for (const auto &[level, state] : m_levels) {
        if (const double cost = state.cost.coefficientOf(symbol); cost != 0.0)
            return cost < 0.0;
    }
    return false;
}

bool Objective::isCheaper(Symbol symbol, double coefficient, Symbol other,
                          double otherCoefficient) const
{
    for (const auto &[level, state] : m_levels) {
        const double cost = state.cost.coefficientOf(symbol) / coefficient;
        const double otherCost = state.cost.coefficientOf(other) / otherCoefficient;
        if (!isZero(cost - otherCost))
            return cost < otherCost;
    }
    return false;
}

Objective::Symbol Objective::entering(const std::vector<char> &isFixed) const
{
    for (auto level = m_levels.begin(); level != m_levels.end(); ++level) {
        for (const auto &[symbol, coefficient] : level->second.cost.entries) {
            if (coefficient > 0.0 || isFixed[symbol])
                continue;
            const bool costsMore =
                    std::any_of(m_levels.begin(), level, [symbol = symbol](const auto &stronger) {
                        return stronger.second.cost.coefficientOf(symbol) != 0.0;
                    });
            if (!costsMore)
                return symbol;
        }
    }
    return -1;
}

} // namespace Pellarvine::detail
