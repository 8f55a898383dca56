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
    if (tableau.isBasic(symbol)) {
        state.cost.add(tableau.row(tableau.rowOf(symbol)), factor);
        suspect(tableau.row(tableau.rowOf(symbol)));
    } else {
        state.cost.add(symbol, factor);
        m_suspects.push_back(symbol);
    }
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
    bool isMentioned = false;
    for (auto &[level, state] : m_levels) {
        isMentioned = isMentioned || state.cost.coefficientOf(symbol) != 0.0;
        state.cost.substitute(symbol, value);
    }
    if (isMentioned)
        suspect(value);
}

void Objective::suspect(const LinearRow &row)
{
    for (const auto &entry : row.entries)
        m_suspects.push_back(entry.symbol);
}

void Objective::clear()
{
    m_levels.clear();
    m_suspects.clear();
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

Objective::Symbol Objective::entering(const std::vector<char> &isFixed)
{
    std::sort(m_suspects.begin(), m_suspects.end());
    m_suspects.erase(std::unique(m_suspects.begin(), m_suspects.end()), m_suspects.end());
    Symbol first = -1;
    double highest = 0.0;
    std::erase_if(m_suspects, [&](Symbol symbol) {
        if (isFixed[symbol])
            return true;
        for (const auto &[level, state] : m_levels) {
            const double cost = state.cost.coefficientOf(symbol);
            if (!isCost(cost))
                continue;
            if (cost < 0.0 && (first < 0 || level > highest)) {
                first = symbol;
                highest = level;
            }
            return cost > 0.0;
        }
        return true;
    });
    return first;
}

} // namespace Pellarvine::detail
