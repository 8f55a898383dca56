// SPDX-License-Identifier: MIT
#include "Layout/Solver/Simplex.h"

#include <limits>
#include <utility>

namespace Pellarvine::detail {

void Simplex::addSymbol()
{
    m_tableau.addSymbol();
    m_isFixed.push_back(0);
}

void Simplex::forget(Symbol symbol)
{
    m_tableau.forget(symbol);
    m_isFixed[symbol] = 0;
}

void Simplex::fixCosts()
{
    m_objective.mark(m_isFixed);
    m_objective.clear();
}

std::vector<char> Simplex::fixedOrCosting() const
{
    std::vector<char> marks = m_isFixed;
    m_objective.mark(marks);
    return marks;
}

void Simplex::addCost(Symbol symbol, double level, double weight)
{
    m_objective.add(symbol, level, weight, m_tableau);
}

void Simplex::removeCost(Symbol symbol, double level, double weight)
{
    m_objective.remove(symbol, level, weight, m_tableau);
}

bool Simplex::insert(LinearRow &row)
{
    // A basic symbol that starts feasible and that no other row mentions: the cheapest one, which
    // is what the optimum would choose among these.
    Symbol basic = -1;
    double coefficient = 0.0;
    for (const auto &entry : row.entries) {
        if (isFixed(entry.symbol) || !m_tableau.rowsWith(entry.symbol).empty()
            || -row.constant / entry.coefficient < 0.0)
            continue;
        if (basic < 0
            || m_objective.isCheaper(entry.symbol, std::abs(entry.coefficient), basic,
                                     coefficient)) {
            basic = entry.symbol;
            coefficient = std::abs(entry.coefficient);
        }
    }
    if (basic < 0)
        return false;
    row.solveFor(basic);
    m_objective.substitute(basic, row);
    // Only what the row mentions costs something else than before.
    const bool isOptimal =
            std::none_of(row.entries.begin(), row.entries.end(),
                         [&](const auto &entry) { return lowersCost(entry.symbol); });
    m_tableau.insert(std::move(row), basic);
    if (!isOptimal)
        optimize();
    return true;
}

// The artificial symbol stands for what is missing, and is brought down to 0.
std::vector<Simplex::Symbol> Simplex::insertByArtificial(LinearRow row, Symbol artificial,
                                                         Symbol marker)
{
    if (row.constant < 0.0)
        row.scale(-1.0);
    LinearRow missing = row;
    m_tableau.insert(std::move(row), artificial);
    minimize(missing, false);

    std::vector<Symbol> conflict;
    if (const int index = m_tableau.rowOf(artificial); index >= 0) {
        if (m_tableau.row(index).constant < smallestValue) {
            m_tableau.clearConstant(index);
            Symbol entering = marker;
            for (const auto &entry : m_tableau.row(index).entries) {
                if (!isFixed(entry.symbol))
                    entering = entry.symbol;
            }
            pivot(index, entering);
        } else {
            conflict = symbolsOf(index);
            m_tableau.drop(index);
        }
    }
    dropColumn(artificial);
    optimize();
    return conflict;
}

void Simplex::makeBasic(Symbol symbol)
{
    if (m_tableau.isBasic(symbol) || m_tableau.rowsWith(symbol).empty())
        return;
    // By the row that keeps the others feasible: the symbol may also move below 0.
    int leaving = leavingRow(symbol);
    if (leaving < 0) {
        double smallest = std::numeric_limits<double>::infinity();
        for (const int index : m_tableau.rowsWith(symbol)) {
            const LinearRow &row = m_tableau.row(index);
            const double ratio = row.constant / row.coefficientOf(symbol);
            if (ratio < smallest) {
                smallest = ratio;
                leaving = index;
            }
        }
    }
    pivot(leaving, symbol);
}

void Simplex::dropColumn(Symbol symbol)
{
    m_tableau.dropColumn(symbol);
    m_objective.dropColumn(symbol);
}

void Simplex::optimize()
{
    for (Symbol entering = m_objective.entering(m_isFixed); entering >= 0;
         entering = m_objective.entering(m_isFixed)) {
        const int leaving = leavingRow(entering);
        if (leaving < 0)
            return; // Rounding: errors are never negative, so that a cost has a lower bound.
        pivot(leaving, entering);
    }
}

// The dual simplex: the objective is at its optimum, but some basic symbols have the wrong sign.
std::vector<Simplex::Symbol> Simplex::repair()
{
    while (true) {
        int leaving = -1;
        double sign = 1.0;
        for (int index = 0; index < m_tableau.size(); ++index) {
            const Symbol basic = m_tableau.basic(index);
            if (basic < 0)
                continue;
            const double constant = m_tableau.row(index).constant;
            const bool isAbove = isFixed(basic) && constant > smallestValue;
            if (!isAbove && constant > -smallestValue)
                continue;
            if (leaving < 0 || basic < m_tableau.basic(leaving)) {
                leaving = index;
                sign = isAbove ? -1.0 : 1.0;
            }
        }
        if (leaving < 0)
            return {};

        Symbol entering = -1;
        double coefficient = 0.0;
        for (const auto &entry : m_tableau.row(leaving).entries) {
            if (sign * entry.coefficient < 0.0 || isFixed(entry.symbol))
                continue;
            if (entering < 0
                || m_objective.isCheaper(entry.symbol, sign * entry.coefficient, entering,
                                         coefficient)) {
                entering = entry.symbol;
                coefficient = sign * entry.coefficient;
            }
        }
        if (entering < 0)
            return symbolsOf(leaving);
        pivot(leaving, entering);
    }
}

bool Simplex::lowersCost(Symbol symbol) const
{
    return !isFixed(symbol) && m_objective.isLoweredBy(symbol);
}

// The cheapest symbol goes first, so that little is left for optimize() to do; the first one, after
// Bland's rule, where that gets nowhere.
bool Simplex::minimize(LinearRow &cost, bool isWithinOptimum)
{
    bool isStuck = false;
    while (true) {
        Symbol entering = -1;
        double coefficient = 0.0;
        for (const auto &entry : cost.entries) {
            if (entry.coefficient > 0.0 || isFixed(entry.symbol)
                || (isWithinOptimum && m_objective.mentions(entry.symbol)))
                continue;
            if (entering < 0
                || (!isStuck
                    && m_objective.isCheaper(entry.symbol, -entry.coefficient, entering,
                                             coefficient))) {
                entering = entry.symbol;
                coefficient = -entry.coefficient;
            }
        }
        if (entering < 0)
            return true;
        const int leaving = leavingRow(entering);
        if (leaving < 0)
            return false;
        const double before = cost.constant;
        pivot(leaving, entering);
        cost.substitute(entering, m_tableau.row(leaving));
        isStuck = cost.constant >= before - smallestValue;
    }
}

// The row that first keeps a nonbasic symbol from growing; -1 if none does.
int Simplex::leavingRow(Symbol entering) const
{
    int leaving = -1;
    double smallest = std::numeric_limits<double>::infinity();
    for (const int index : m_tableau.rowsWith(entering)) {
        const LinearRow &row = m_tableau.row(index);
        const Symbol basic = m_tableau.basic(index);
        const double coefficient = row.coefficientOf(entering);
        if (!isFixed(basic) && coefficient > 0.0)
            continue;
        const double ratio = isFixed(basic) ? 0.0 : std::max(0.0, -row.constant / coefficient);
        if (ratio < smallest || (ratio == smallest && basic < m_tableau.basic(leaving))) {
            smallest = ratio;
            leaving = index;
        }
    }
    return leaving;
}

void Simplex::pivot(int index, Symbol entering)
{
    m_tableau.pivot(index, entering);
    m_objective.substitute(entering, m_tableau.row(index));
    ++m_pivots;
}

// Of a row that cannot become 0: their owners' weighted sum is the contradiction.
std::vector<Simplex::Symbol> Simplex::symbolsOf(int index) const
{
    std::vector<Symbol> symbols { m_tableau.basic(index) };
    for (const auto &entry : m_tableau.row(index).entries)
        symbols.push_back(entry.symbol);
    return symbols;
}

} // namespace Pellarvine::detail
