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

    /// Makes room for one symbol more, the next in order.
    void addSymbol();
    /// Releases the symbol for another use. No row may mention it any more.
    void forget(Symbol symbol);

    /// From now on the symbol is 0. It may be basic.
    void fix(Symbol symbol) { m_isFixed[symbol] = 1; }
    bool isFixed(Symbol symbol) const { return m_isFixed[symbol]; }
    /// Fixes all symbols with a cost and clears the objective, so that the optimum so far is kept.
    void fixCosts();
    /// 1 for each symbol that is fixed or costs something.
    std::vector<char> fixedOrCosting() const;

    /// From now on the second symbol accompanies the first one, negated, in each row, unless one of
    /// them is basic.
    void pair(Symbol one, Symbol other);

    /// The caller optimizes after that.
    void addCost(Symbol symbol, double level, double weight);
    void removeCost(Symbol symbol, double level, double weight);

    /// Adds "row = 0", of symbols that are not basic, if one of them can be basic in it right away,
    /// and optimizes. Returns false, with the row as it was, if none can.
    bool insert(LinearRow &row);

    /// Adds "row = 0", which requires something, and repairs. This row alone mentions `marker`.
    /// Returns nothing, or the symbols of a contradiction; the caller then takes the row out.
    std::vector<Symbol> insertRequired(LinearRow row, Symbol marker);

    /// Forgets all rows and costs. Returns 1 for each symbol that was basic.
    std::vector<char> startAgain();
    /// Adds "row = 0", feasible or not. This row alone mentions `marker`.
    void insertAnyhow(LinearRow row, Symbol marker);
    /// Makes those symbols basic, as far as the rows allow it, while there are no costs.
    void makeBasic(const std::vector<char> &isWanted);
    bool isFeasible() const { return firstInfeasibleRow() < 0; }
    /// Makes all rows feasible while there are no costs. If they cannot be, that is rounding.
    void makeFeasible();
    void clearCosts() { m_objective.clear(); }
    /// Drops the costs at that level and below it.
    void dropCosts(double level) { m_objective.drop(level); }

    /// Makes a symbol that may take any value from now on basic, if a row mentions it.
    void makeBasic(Symbol symbol);
    /// Drops the row of a basic symbol. The caller optimizes after that.
    void dropRow(Symbol basic) { m_tableau.drop(m_tableau.rowOf(basic)); }
    void dropColumn(Symbol symbol);

    void optimize();

    /// Whether rounding has kept an optimum from being found. Answers may then be wrong.
    bool hasFailed() const { return m_hasFailed; }
    /// The largest `LinearRow::rounding` so far.
    double rounding() const { return std::max(m_tableau.rounding(), m_objective.rounding()); }

    /// Brings `cost` down by symbols alone that leave the objective where it is. Returns false if
    /// there is no limit to it.
    bool minimizeWithinOptimum(LinearRow &cost) { return minimize(cost, true); }

    /// Puts "symbol + delta" in the place of the symbol. The caller repairs after that.
    void shift(Symbol symbol, double delta);

    /// Makes all rows feasible again after shift(). Returns nothing, or the symbols of a
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
    // By how much rows are, or once were, infeasible; among them all that are.
    std::priority_queue<std::pair<double, int>> m_misses;
};

/// What rounding may leave of a value that should not be there, in device-independent pixels.
inline constexpr double smallestValue = 1e-7;

} // namespace Pellarvine::detail
