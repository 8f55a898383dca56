// SPDX-License-Identifier: MIT
#include "Layout/Solver/Tableau.h"

#include <utility>

namespace Pellarvine::detail {

int Tableau::insert(LinearRow row, Symbol basic)
{
    if (m_unusedRows.empty()) {
        m_unusedRows.push_back(size());
        m_rows.emplace_back();
        m_basics.push_back(-1);
    }
    const int index = m_unusedRows.back();
    m_unusedRows.pop_back();
    for (const auto &entry : row.entries)
        insertSorted(m_columns[entry.symbol].rows, index);
    m_columns[basic].row = index;
    m_basics[index] = basic;
    m_rounding = std::max(m_rounding, row.rounding);
    m_rows[index] = std::move(row);
    return index;
}

void Tableau::drop(int index)
{
    for (const auto &entry : m_rows[index].entries)
        removeSorted(m_columns[entry.symbol].rows, index);
    m_columns[m_basics[index]].row = -1;
    m_basics[index] = -1;
    m_rows[index] = {};
    m_unusedRows.push_back(index);
}

void Tableau::dropColumn(Symbol symbol)
{
    for (const int index : std::exchange(m_columns[symbol].rows, {}))
        m_rows[index].erase(symbol);
}

void Tableau::pivot(int index, Symbol entering)
{
    LinearRow &row = m_rows[index];
    const Symbol leaving = std::exchange(m_basics[index], entering);
    const double factor = row.coefficientOf(entering);
    row.solveFor(entering);
    row.add(leaving, 1.0 / factor);

    m_columns[leaving].row = -1;
    m_columns[entering].row = index;
    insertSorted(m_columns[leaving].rows, index);
    for (const int other : std::exchange(m_columns[entering].rows, {})) {
        if (other == index)
            continue;
        const double share = m_rows[other].coefficientOf(entering);
        m_rows[other].erase(entering);
        m_rows[other].add(
                row, share, [&](Symbol symbol) { insertSorted(m_columns[symbol].rows, other); },
                [&](Symbol symbol) { removeSorted(m_columns[symbol].rows, other); });
        m_rounding = std::max(m_rounding, m_rows[other].rounding);
    }
}

void Tableau::shift(Symbol symbol, double delta)
{
    if (isBasic(symbol))
        m_rows[rowOf(symbol)].constant -= delta;
    for (const int index : rowsWith(symbol))
        m_rows[index].constant += delta * m_rows[index].coefficientOf(symbol);
}

} // namespace Pellarvine::detail
