// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/Solver/Tableau.h"

#include <optional>

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

    bool isDefined(Symbol symbol) const { return m_states[symbol].definition.has_value(); }
    const LinearRow &definition(Symbol variable) const { return *m_states[variable].definition; }
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
        std::optional<LinearRow> definition;
        SortedIndices users; // the variables whose definitions mention it
    };

    std::vector<Symbol> dependencies(const std::vector<Symbol> &roots);

    std::vector<State> m_states; // by symbol
    std::vector<Symbol> m_order; // the defined variables, each after those in its definition
    bool m_isOrderValid = false;
    double m_rounding = 0.0;
    // Scratch space, all zero between calls.
    std::vector<double> m_sums; // by symbol
    std::vector<double> m_sizes; // of the operands of each sum
    std::vector<char> m_marks; // by symbol
};

} // namespace Pellarvine::detail
