// SPDX-License-Identifier: MIT
#include "Layout/Solver/Objective.h"

namespace Pellarvine::detail {

namespace {

// Weights are of the order of 1. A smaller cost is a rounding error.
constexpr double smallestCost = 1e-8;

bool isCost(double cost)
{
    return std::abs(cost) > smallestCost;
}

} // namespace

const double *Objective::costsOf(Symbol symbol) const
{
    return m_costs.data() + std::size_t(symbol) * m_levels.size();
}

double *Objective::costsOf(Symbol symbol)
{
    return m_costs.data() + std::size_t(symbol) * m_levels.size();
}

void Objective::addSymbol()
{
    ++m_symbolCount;
    m_costs.resize(m_costs.size() + m_levels.size());
}

std::size_t Objective::indexOf(double level)
{
    const auto place =
            std::lower_bound(m_levels.begin(), m_levels.end(), level,
                             [](const Level &one, double other) { return one.level > other; });
    const auto index = std::size_t(place - m_levels.begin());
    if (place != m_levels.end() && place->level == level)
        return index;
    // Keeps a few unused levels, because levels are often added and removed again.
    constexpr std::size_t manyLevels = 16;
    if (m_levels.size() == manyLevels && eraseUnused())
        return indexOf(level);
    const std::size_t before = m_levels.size();
    m_levels.insert(place, Level { level });
    std::vector<double> costs(std::size_t(m_symbolCount) * m_levels.size());
    auto target = costs.begin();
    for (auto source = m_costs.cbegin(); source != m_costs.cend(); source += std::ptrdiff_t(before))
        target = std::copy_n(source + std::ptrdiff_t(index), before - index,
                             std::copy_n(source, index, target) + 1);
    m_costs = std::move(costs);
    return index;
}

bool Objective::eraseUnused()
{
    const auto isUnused = [](const Level &level) {
        return level.uses == 0;
    };
    auto target = m_costs.begin();
    for (auto source = m_costs.cbegin(); source != m_costs.cend();) {
        for (const Level &level : m_levels) {
            if (!isUnused(level))
                *target++ = *source;
            ++source;
        }
    }
    m_costs.erase(target, m_costs.end());
    return std::erase_if(m_levels, isUnused) > 0;
}

void Objective::addCost(Symbol symbol, std::size_t index, double share)
{
    double &cost = costsOf(symbol)[index];
    if (cost == 0.0)
        cost = std::abs(share) > smallestCoefficient ? share : 0.0;
    else
        cost = roundedSum(cost + share, std::abs(cost) + std::abs(share), m_levels[index].rounding);
}

void Objective::addToLevel(Symbol symbol, std::size_t index, double factor, const Tableau &tableau)
{
    const auto add = [&](Symbol nonbasic, double share) {
        addCost(nonbasic, index, share);
        m_suspects.push_back(nonbasic);
    };
    if (!tableau.isBasic(symbol))
        return add(symbol, factor);
    for (const auto &entry : tableau.row(tableau.rowOf(symbol)).entries)
        add(entry.symbol, factor * entry.coefficient);
}

void Objective::add(Symbol symbol, double level, double weight, const Tableau &tableau)
{
    const std::size_t index = indexOf(level);
    ++m_levels[index].uses;
    addToLevel(symbol, index, weight, tableau);
}

void Objective::remove(Symbol symbol, double level, double weight, const Tableau &tableau)
{
    const std::size_t index = indexOf(level);
    addToLevel(symbol, index, -weight, tableau);
    // Clears rounding errors.
    if (--m_levels[index].uses == 0)
        clearColumn(index);
}

void Objective::clearColumn(std::size_t index)
{
    m_levels[index].rounding = 0.0;
    for (std::size_t place = index; place < m_costs.size(); place += m_levels.size())
        m_costs[place] = 0.0;
}

void Objective::drop(double level)
{
    for (std::size_t index = 0; index < m_levels.size(); ++index) {
        if (m_levels[index].level <= level)
            clearColumn(index);
    }
}

void Objective::dropColumn(Symbol symbol)
{
    std::fill_n(costsOf(symbol), m_levels.size(), 0.0);
}

void Objective::substitute(Symbol symbol, const LinearRow &value)
{
    double *const costs = costsOf(symbol);
    m_factors.assign(costs, costs + m_levels.size());
    if (std::all_of(m_factors.begin(), m_factors.end(),
                    [](double factor) { return factor == 0.0; }))
        return;
    std::fill_n(costs, m_levels.size(), 0.0);
    for (const auto &entry : value.entries) {
        for (std::size_t index = 0; index < m_factors.size(); ++index) {
            if (m_factors[index] != 0.0)
                addCost(entry.symbol, index, m_factors[index] * entry.coefficient);
        }
        m_suspects.push_back(entry.symbol);
    }
}

void Objective::clear()
{
    m_levels.clear();
    m_costs.clear();
    m_suspects.clear();
}

double Objective::rounding() const
{
    double largest = 0.0;
    for (const Level &level : m_levels)
        largest = std::max(largest, level.rounding);
    return largest;
}

bool Objective::mentions(Symbol symbol) const
{
    const double *const costs = costsOf(symbol);
    return std::any_of(costs, costs + m_levels.size(), isCost);
}

void Objective::mark(std::vector<char> &marks) const
{
    for (Symbol symbol = 0; symbol < m_symbolCount; ++symbol) {
        if (mentions(symbol))
            marks[symbol] = 1;
    }
}

bool Objective::isLoweredBy(Symbol symbol) const
{
    const double *const costs = costsOf(symbol);
    const double *const end = costs + m_levels.size();
    const double *const first = std::find_if(costs, end, isCost);
    return first != end && *first < 0.0;
}

int Objective::compare(Symbol symbol, double coefficient, Symbol other,
                       double otherCoefficient) const
{
    const double *const costs = costsOf(symbol);
    const double *const otherCosts = costsOf(other);
    for (std::size_t index = 0; index < m_levels.size(); ++index) {
        const double cost = costs[index] / coefficient;
        const double otherCost = otherCosts[index] / otherCoefficient;
        if (isCost(cost - otherCost))
            return cost < otherCost ? -1 : 1;
    }
    return 0;
}

Objective::Symbol Objective::entering(const std::vector<char> &isFixed, bool isCareful)
{
    std::erase_if(m_suspects,
                  [&](Symbol symbol) { return isFixed[symbol] || !isLoweredBy(symbol); });
    std::sort(m_suspects.begin(), m_suspects.end());
    m_suspects.erase(std::unique(m_suspects.begin(), m_suspects.end()), m_suspects.end());
    const auto levelOf = [&](Symbol symbol) {
        const double *const costs = costsOf(symbol);
        return std::find_if(costs, costs + m_levels.size(), isCost) - costs;
    };
    Symbol found = -1;
    for (const Symbol symbol : m_suspects) {
        if (found < 0
            || (isCareful ? levelOf(symbol) < levelOf(found)
                          : compare(symbol, 1.0, found, 1.0) < 0))
            found = symbol;
    }
    return found;
}

} // namespace Pellarvine::detail
