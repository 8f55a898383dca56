// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/Solver/Tableau.h"

namespace Pellarvine::detail {

/// Variables that one constraint determines, each defined as in that constraint: by other
/// variables, which may have definitions too, and by symbols of the tableau. So a chain of n places
/// has n terms and not the square of n. expand() replaces defined variables where a further
/// constraint needs it.
///
/// Definitions have no cycles: a variable is defined only while no definition mentions it, or by
/// symbols without definitions.
class PELLARVINE_INTERNAL_EXPORT VariableDefinitions
{
public:
    using Symbol = LinearRow::Symbol;

    /// Adds the next symbol.
    void addSymbol();
    /// Releases a symbol for reuse. No definition may mention it.
    void forget(Symbol symbol) { m_states[symbol] = {}; }

    bool isDefined(Symbol symbol) const { return m_states[symbol].row >= 0; }
    const LinearRow &definition(Symbol variable) const { return m_rows[m_states[variable].row]; }
    /// Whether a definition mentions the symbol.
    bool isUsed(Symbol symbol) const { return !m_states[symbol].users.empty(); }

    /// Whether the definitions of the row's other symbols depend on `symbol`, which has none.
    bool leadsTo(const LinearRow &row, Symbol symbol);

    void define(Symbol variable, LinearRow definition);
    void undefine(Symbol variable);

    /// Replaces `symbol` by `replacement` in all definitions. A remainder of `partner`, if that is
    /// not -1, is dropped as a rounding error.
    void replace(Symbol symbol, Symbol partner, const LinearRow &replacement);

    /// Removes a symbol that may take any value and is in no row of the tableau. One of the
    /// variables that depend on it loses its definition; the others depend on that one instead.
    void eliminate(Symbol symbol, Symbol partner, const Tableau &tableau);

    /// The same sum in terms of variables without a definition and of symbols that are not basic.
    LinearRow expand(const LinearRow &row, const Tableau &tableau);

    /// The largest `LinearRow::rounding` of all definitions so far.
    double rounding() const { return m_rounding; }

    /// Replaces the symbol by "symbol + delta".
    void shift(Symbol symbol, double delta);

    /// The values of all symbols, while those without a definition or a row are 0.
    void evaluate(const Tableau &tableau, std::vector<double> &values);

private:
    struct State
    {
        int row = -1; // of its definition; -1: none
        SortedIndices users; // the variables whose definitions mention it
    };

    // Usually few.
    using Symbols = QVarLengthArray<Symbol, 32>;

    Symbols dependencies(const Symbols &roots);

    std::vector<State> m_states; // by symbol
    std::vector<LinearRow> m_rows; // the definitions
    std::vector<int> m_unusedRows;
    // The defined variables and their rows, each after those in its definition.
    std::vector<std::pair<Symbol, int>> m_order;
    bool m_isOrderValid = false;
    double m_rounding = 0.0;
    // Scratch space, all zero between calls.
    std::vector<double> m_sums; // by symbol
    std::vector<double> m_sizes; // of the operands of each sum
    std::vector<char> m_marks; // by symbol
};

} // namespace Pellarvine::detail
