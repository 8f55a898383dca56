// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/Solver/Tableau.h"

#include <cstddef>

namespace Pellarvine::detail {

/// The function to minimize: a cost for each level, in terms of symbols that are not basic. Levels
/// are compared from the highest down, so that no cost outweighs one of a higher level.
class Objective
{
public:
    using Symbol = LinearRow::Symbol;

    /// Adds the next symbol.
    void addSymbol();

    /// Adds `weight` times the symbol, which is never negative.
    void add(Symbol symbol, double level, double weight, const Tableau &tableau);
    /// Reverts add() with the same values.
    void remove(Symbol symbol, double level, double weight, const Tableau &tableau);
    void clear();
    /// Drops the costs at that level and below it.
    void drop(double level);
    void dropColumn(Symbol symbol);
    /// Replaces a symbol that becomes basic by `value`.
    void substitute(Symbol symbol, const LinearRow &value);

    /// The largest `LinearRow::rounding` of a cost.
    double rounding() const;

    bool mentions(Symbol symbol) const;
    /// Sets `marks` to 1 for each symbol with a cost.
    void mark(std::vector<char> &marks) const;
    /// Whether the costs fall as the symbol grows.
    bool isLoweredBy(Symbol symbol) const;
    /// Compares the costs of the two symbols, divided by their coefficients: negative if those of
    /// `symbol` are lower, 0 if they are equal, else positive.
    int compare(Symbol symbol, double coefficient, Symbol other, double otherCoefficient) const;
    /// The symbol, not fixed, that lowers the costs most; -1 if none lowers them. If careful, the
    /// first one that lowers the highest level, by Bland's rule. A symbol that is fixed in one call
    /// has to stay so until clear().
    Symbol entering(const std::vector<char> &isFixed, bool isCareful);

private:
    struct Level
    {
        double level;
        int uses = 0;
        double rounding = 0.0;
    };

    std::size_t indexOf(double level);
    bool eraseUnused();
    void clearColumn(std::size_t index);
    void addToLevel(Symbol symbol, std::size_t index, double factor, const Tableau &tableau);
    void addCost(Symbol symbol, std::size_t index, double share);
    const double *costsOf(Symbol symbol) const;
    double *costsOf(Symbol symbol);

    std::vector<Level> m_levels; // the highest first
    int m_symbolCount = 0;
    std::vector<double> m_costs; // one for each level, for each symbol
    std::vector<double> m_factors; // scratch space of substitute()
    std::vector<Symbol> m_suspects; // symbols with changed costs, which may be negative now
};

} // namespace Pellarvine::detail
