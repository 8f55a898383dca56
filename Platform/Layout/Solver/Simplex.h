// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/Solver/Objective.h"

#include <queue>

#include <utility>

namespace Pellarvine::detail {

/// Keeps a tableau at the minimum of its objective, while no symbol is negative. It uses the primal
/// simplex when rows and costs are added or removed, and the dual simplex when constants change.
class Simplex
{
public:
    using Symbol = LinearRow::Symbol;

    const Tableau &tableau() const { return m_tableau; }
    /// How often the basis has changed.
    unsigned long long pivots() const { return m_pivots; }

    /// Adds the next symbol.
    void addSymbol();
    /// Releases a symbol for reuse. No row may mention it.
    void forget(Symbol symbol);

    /// Keeps the symbol at 0 from now on. It may be basic.
    void fix(Symbol symbol) { m_isFixed[symbol] = 1; }
    bool isFixed(Symbol symbol) const { return m_isFixed[symbol]; }
    /// Fixes all symbols with a cost and clears the objective. This keeps the current optimum.
    void fixCosts();
    bool isFixedOrCosting(Symbol symbol) const
    {
        return isFixed(symbol) || m_objective.mentions(symbol);
    }

    /// Declares that each row mentions both symbols, with opposite coefficients, unless one of them
    /// is basic.
    void pair(Symbol one, Symbol other);

    /// The caller has to optimize afterwards.
    void addCost(Symbol symbol, double level, double weight);
    void removeCost(Symbol symbol, double level, double weight);

    /// Adds "row = 0" and optimizes, if one of the row's symbols, none of them basic, can be basic
    /// in it at once. Otherwise returns false and leaves the row unchanged.
    bool insert(LinearRow &row);

    /// Adds "row = 0" of a required constraint, and repairs. No other row mentions `marker`. An
    /// empty result means success. Otherwise it has the symbols of a contradiction, and the caller
    /// has to remove the row.
    std::vector<Symbol> insertRequired(LinearRow row, Symbol marker);

    /// Removes all rows and costs. Returns 1 for each symbol that was basic.
    std::vector<char> startAgain();
    /// Adds "row = 0", feasible or not. No other row mentions `marker`.
    void insertAnyhow(LinearRow row, Symbol marker);
    /// Makes the wanted symbols basic as far as the rows allow it. There must be no costs.
    void makeBasic(const std::vector<char> &isWanted);
    bool isFeasible() const { return firstInfeasibleRow() < 0; }
    /// Makes all rows feasible. There must be no costs. A contradiction is taken for a rounding
    /// error and cleared.
    void makeFeasible();
    void clearCosts() { m_objective.clear(); }
    /// Drops the costs at that level and below it.
    void dropCosts(double level) { m_objective.drop(level); }

    /// Makes a symbol basic that may take any value from now on, if a row mentions it.
    void makeBasic(Symbol symbol);
    /// Drops the row of a basic symbol. The caller has to optimize afterwards.
    void dropRow(Symbol basic) { m_tableau.drop(m_tableau.rowOf(basic)); }
    void dropColumn(Symbol symbol);

    void optimize();

    /// Whether rounding errors have prevented an optimum. The results may then be wrong.
    bool hasFailed() const { return m_hasFailed; }
    /// The largest `LinearRow::rounding` so far.
    double rounding() const { return std::max(m_tableau.rounding(), m_objective.rounding()); }

    /// Minimizes `cost` without changing the objective. Returns false if `cost` has no minimum.
    bool minimizeWithinOptimum(LinearRow &cost) { return minimize(cost, true); }

    /// Replaces the symbol by "symbol + delta". The caller has to repair afterwards.
    void shift(Symbol symbol, double delta);

    /// Makes all rows feasible again after shift(). Returns an empty list, or the symbols of a
    /// contradiction.
    std::vector<Symbol> repair();

private:
    class Effort;

    bool lowersCost(Symbol symbol) const;
    bool minimize(LinearRow &cost, bool isWithinOptimum);
    void passKinks(Symbol entering);
    double roomIn(int index, Symbol entering, double slack) const;
    int leavingRow(Symbol entering, bool isCareful) const;
    bool isFeasible(int index) const;
    void check(int index);
    int infeasibleRow();
    int firstInfeasibleRow() const;
    double excess(int index) const;
    void pivot(int index, Symbol entering);
    std::vector<Symbol> symbolsOf(int index) const;

    Tableau m_tableau;
    Objective m_objective;
    std::vector<char> m_isFixed; // by symbol
    std::vector<Symbol> m_partners; // by symbol; -1: none
    unsigned long long m_pivots = 0;
    bool m_hasFailed = false;
    // Excess and index of all infeasible rows, and outdated entries.
    std::priority_queue<std::pair<double, int>> m_misses;
};

/// The largest rounding error of a value, in device-independent pixels.
inline constexpr double smallestValue = 1e-7;

} // namespace Pellarvine::detail
