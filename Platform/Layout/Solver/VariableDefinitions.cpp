// SPDX-License-Identifier: MIT
#include "Layout/Solver/VariableDefinitions.h"

#include <numeric>
#include <utility>

namespace Pellarvine::detail {

void VariableDefinitions::addSymbol()
{
    m_states.emplace_back();
    m_sums.push_back(0.0);
    m_sizes.push_back(0.0);
    m_marks.push_back(0);
}

void VariableDefinitions::define(Symbol variable, LinearRow definition)
{
    for (const auto &entry : definition.entries)
        insertSorted(m_states[entry.symbol].users, variable);
    m_rounding = std::max(m_rounding, definition.rounding);
    if (m_unusedRows.empty()) {
        m_unusedRows.push_back(int(m_rows.size()));
        m_rows.emplace_back();
    }
    const int row = m_unusedRows.back();
    m_unusedRows.pop_back();
    m_rows[row] = std::move(definition);
    m_states[variable].row = row;
    m_isOrderValid = false;
}

void VariableDefinitions::undefine(Symbol variable)
{
    const int row = std::exchange(m_states[variable].row, -1);
    for (const auto &entry : m_rows[row].entries)
        removeSorted(m_states[entry.symbol].users, variable);
    m_rows[row] = {};
    m_unusedRows.push_back(row);
    m_isOrderValid = false;
}

void VariableDefinitions::replace(Symbol symbol, Symbol partner, const LinearRow &replacement)
{
    for (const Symbol user : SortedIndices(m_states[symbol].users)) {
        LinearRow row = definition(user);
        undefine(user);
        row.substitute(symbol, replacement);
        row.erase(partner);
        define(user, std::move(row));
    }
}

void VariableDefinitions::eliminate(Symbol symbol, Symbol partner, const Tableau &tableau)
{
    const SortedIndices &users = m_states[symbol].users;
    if (users.size() == 1) {
        undefine(users.front());
        return;
    }
    // A variable with a large share of the symbol keeps the other coefficients small.
    constexpr double largeShare = 0.1;
    Symbol chosen = -1;
    LinearRow inverse;
    double share = 0.0;
    for (const Symbol user : users) {
        LinearRow row = expand({ { { user, 1.0 } }, 0.0 }, tableau);
        const double size = std::abs(row.coefficientOf(symbol)) / row.largestCoefficient();
        if (!(size > share))
            continue;
        chosen = user;
        inverse = std::move(row);
        share = size;
        if (share > largeShare)
            break;
    }
    if (chosen < 0)
        return;
    const double factor = inverse.coefficientOf(symbol);
    inverse.solveFor(symbol);
    inverse.erase(partner);
    inverse.add(chosen, 1.0 / factor);
    undefine(chosen);
    replace(symbol, partner, inverse);
}

// The defined variables that `roots` depend on, each after those in its definition.
VariableDefinitions::Symbols VariableDefinitions::dependencies(const Symbols &roots)
{
    Symbols order;
    QVarLengthArray<std::pair<Symbol, qsizetype>, 32> path;
    for (const Symbol root : roots) {
        if (m_marks[root] || !isDefined(root))
            continue;
        m_marks[root] = 1;
        path.emplace_back(root, 0);
        while (!path.empty()) {
            auto &[symbol, next] = path.back();
            const auto &entries = definition(symbol).entries;
            if (next == entries.size()) {
                order.push_back(symbol);
                path.pop_back();
                continue;
            }
            const Symbol child = entries[next++].symbol;
            if (!m_marks[child] && isDefined(child)) {
                m_marks[child] = 1;
                path.emplace_back(child, 0);
            }
        }
    }
    for (const Symbol symbol : order)
        m_marks[symbol] = 0;
    return order;
}

// Searches from the symbol to its users: usually it is new, and has few.
bool VariableDefinitions::leadsTo(const LinearRow &row, Symbol symbol)
{
    const bool canLead =
            std::any_of(row.entries.begin(), row.entries.end(), [&](const auto &entry) {
                return isDefined(entry.symbol) && entry.symbol != symbol;
            });
    if (!canLead)
        return false;
    Symbols depending { symbol };
    bool isFound = false;
    for (qsizetype i = 0; i < depending.size() && !isFound; ++i) {
        for (const Symbol user : m_states[depending[i]].users) {
            if (m_marks[user])
                continue;
            m_marks[user] = 1;
            depending.push_back(user);
            isFound = isFound || row.coefficientOf(user) != 0.0;
        }
    }
    for (const Symbol user : depending)
        m_marks[user] = 0;
    return isFound;
}

LinearRow VariableDefinitions::expand(const LinearRow &row, const Tableau &tableau)
{
    Symbols roots;
    for (const auto &entry : row.entries)
        roots.push_back(entry.symbol);
    const Symbols order = dependencies(roots);

    LinearRow result;
    result.constant = row.constant;
    result.rounding = row.rounding;
    Symbols touched;
    const auto add = [&](const LinearRow::Entries &entries, double factor) {
        for (const auto &[symbol, coefficient] : entries) {
            if (!m_marks[symbol]) {
                m_marks[symbol] = 1;
                touched.push_back(symbol);
            }
            m_sums[symbol] += factor * coefficient;
            m_sizes[symbol] += std::abs(factor * coefficient);
        }
    };
    const auto takeSum = [&](Symbol symbol) {
        const double sum = std::exchange(m_sums[symbol], 0.0);
        return roundedSum(sum, std::exchange(m_sizes[symbol], 0.0), result.rounding);
    };
    const auto substitute = [&](Symbol symbol, const LinearRow &value) {
        const double factor = takeSum(symbol);
        if (factor == 0.0)
            return;
        result.constant += factor * value.constant;
        add(value.entries, factor);
    };
    add(row.entries, 1.0);
    for (auto symbol = order.crbegin(); symbol != order.crend(); ++symbol)
        substitute(*symbol, definition(*symbol));
    for (qsizetype i = 0; i < touched.size(); ++i) {
        if (tableau.isBasic(touched[i]))
            substitute(touched[i], tableau.row(tableau.rowOf(touched[i])));
    }
    std::sort(touched.begin(), touched.end());
    for (const Symbol symbol : touched) {
        m_marks[symbol] = 0;
        if (const double sum = takeSum(symbol); sum != 0.0)
            result.entries.push_back({ symbol, sum });
    }
    return result;
}

void VariableDefinitions::shift(Symbol symbol, double delta)
{
    for (const Symbol user : m_states[symbol].users) {
        LinearRow &row = m_rows[m_states[user].row];
        row.constant += delta * row.coefficientOf(symbol);
    }
}

void VariableDefinitions::evaluate(const Tableau &tableau, std::vector<double> &values)
{
    if (!m_isOrderValid) {
        Symbols roots(qsizetype(m_states.size()));
        std::iota(roots.begin(), roots.end(), 0);
        m_order.clear();
        for (const Symbol variable : dependencies(roots))
            m_order.emplace_back(variable, m_states[variable].row);
        m_isOrderValid = true;
    }
    std::fill(values.begin(), values.end(), 0.0);
    for (int index = 0; index < tableau.size(); ++index) {
        if (const Symbol basic = tableau.basic(index); basic >= 0)
            values[basic] = tableau.row(index).constant;
    }
    for (const auto &[variable, index] : m_order) {
        const LinearRow &row = m_rows[index];
        double value = row.constant;
        for (const auto &[symbol, coefficient] : row.entries)
            value += coefficient * values[symbol];
        values[variable] = value;
    }
}

} // namespace Pellarvine::detail
