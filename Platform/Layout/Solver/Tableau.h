// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/Solver/LinearRow.h"
#include "Layout/Solver/SortedIndices.h"

namespace Pellarvine::detail {

/// Linear equations, each solved for one symbol, the basic one, in terms of symbols that are not
/// basic. Knows the rows of each symbol, but not the objective.
class PELLARVINE_INTERNAL_EXPORT Tableau
{
public:
    using Symbol = LinearRow::Symbol;

    /// Adds the next symbol.
    void addSymbol() { m_columns.emplace_back(); }
    /// Releases a symbol for reuse. No row may mention it.
    void forget(Symbol symbol) { m_columns[symbol] = {}; }

    /// The number of rows, including unused ones, which have no basic symbol.
    int size() const { return int(m_rows.size()); }
    const LinearRow &row(int index) const { return m_rows[index]; }
    /// -1 for an unused row.
    Symbol basic(int index) const { return m_basics[index]; }
    /// The row where the symbol is basic; -1 if there is none.
    int rowOf(Symbol symbol) const { return m_columns[symbol].row; }
    bool isBasic(Symbol symbol) const { return rowOf(symbol) >= 0; }
    /// The rows that mention a symbol that is not basic, in order.
    const SortedIndices &rowsWith(Symbol symbol) const { return m_columns[symbol].rows; }
    /// The value of a symbol while all symbols that are not basic are 0.
    double value(Symbol symbol) const { return isBasic(symbol) ? row(rowOf(symbol)).constant : 0; }

    /// The largest `LinearRow::rounding` of all rows so far.
    double rounding() const { return m_rounding; }

    /// Adds "basic = row". No other row may mention `basic`, and `row` no basic symbol.
    int insert(LinearRow row, Symbol basic);
    void drop(int index);
    void dropColumn(Symbol symbol);
    /// Makes `entering` basic in the row, in place of its basic symbol. The row must mention it.
    void pivot(int index, Symbol entering);
    /// Clears a constant that is a rounding error.
    void clearConstant(int index) { m_rows[index].constant = 0.0; }
    /// Replaces the symbol by "symbol + delta".
    void shift(Symbol symbol, double delta);

private:
    struct Column
    {
        int row = -1;
        SortedIndices rows;
    };

    std::vector<Column> m_columns; // by symbol
    std::vector<LinearRow> m_rows;
    std::vector<Symbol> m_basics; // by row
    std::vector<int> m_unusedRows;
    double m_rounding = 0.0;
};

} // namespace Pellarvine::detail
