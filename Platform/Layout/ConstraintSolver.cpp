// SPDX-License-Identifier: MIT
#include "Layout/ConstraintSolver.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace Pellarvine::detail {

namespace {

constexpr double smallestCoefficient = 1e-9;
// What rounding may leave of a value that should not be there, in units of the screen.
constexpr double smallestValue = 1e-7;

bool isZero(double coefficient)
{
    return std::abs(coefficient) < smallestCoefficient;
}

void insertSorted(std::vector<int> &indices, int index)
{
    const auto place = std::lower_bound(indices.begin(), indices.end(), index);
    if (place == indices.end() || *place != index)
        indices.insert(place, index);
}

void removeSorted(std::vector<int> &indices, int index)
{
    const auto place = std::lower_bound(indices.begin(), indices.end(), index);
    if (place != indices.end() && *place == index)
        indices.erase(place);
}

template <typename Entries>
auto find(Entries &entries, int symbol)
{
    const auto place =
            std::lower_bound(entries.begin(), entries.end(), symbol,
                             [](const auto &entry, int wanted) { return entry.symbol < wanted; });
    return place != entries.end() && place->symbol == symbol ? place : entries.end();
}

// Adds `other` times `factor` to `entries`. Calls `appears` and `vanishes` with the symbols that
// enter and leave the sum.
template <typename Entries, typename Appears, typename Vanishes>
void merge(Entries &entries, const Entries &other, double factor, Appears appears,
           Vanishes vanishes)
{
    // Into a long sum a short one goes entry by entry, so that the rest need not be copied.
    if (other.size() * 16 < entries.size()) {
        for (const auto &entry : other) {
            const double share = factor * entry.coefficient;
            const auto place = std::lower_bound(
                    entries.begin(), entries.end(), entry.symbol,
                    [](const auto &mine, int wanted) { return mine.symbol < wanted; });
            if (place == entries.end() || place->symbol != entry.symbol) {
                if (!isZero(share)) {
                    entries.insert(place, { entry.symbol, share });
                    appears(entry.symbol);
                }
            } else if (isZero(place->coefficient += share)) {
                entries.erase(place);
                vanishes(entry.symbol);
            }
        }
        return;
    }
    Entries sum;
    sum.reserve(entries.size() + other.size());
    auto mine = entries.cbegin();
    auto theirs = other.cbegin();
    while (mine != entries.cend() || theirs != other.cend()) {
        if (theirs == other.cend() || (mine != entries.cend() && mine->symbol < theirs->symbol)) {
            sum.push_back(*mine++);
        } else if (mine == entries.cend() || theirs->symbol < mine->symbol) {
            const double coefficient = factor * theirs->coefficient;
            if (!isZero(coefficient)) {
                sum.push_back({ theirs->symbol, coefficient });
                appears(theirs->symbol);
            }
            ++theirs;
        } else {
            const double coefficient = mine->coefficient + factor * theirs->coefficient;
            if (isZero(coefficient))
                vanishes(mine->symbol);
            else
                sum.push_back({ mine->symbol, coefficient });
            ++mine;
            ++theirs;
        }
    }
    entries.swap(sum);
}

} // namespace

ConstraintSolver::Variable ConstraintSolver::addVariable()
{
    const Symbol symbol = makeSymbol(Kind::variable, -1);
    m_symbols[symbol].number = m_nextNumber++;
    return Variable { symbol };
}

void ConstraintSolver::removeVariable(Variable variable)
{
    const Symbol symbol = int(variable);
    if (m_symbols[symbol].definition) {
        const Row definition = *m_symbols[symbol].definition;
        for (const Symbol user : std::vector<Symbol>(m_symbols[symbol].users))
            replaceInDefinition(user, symbol, -1, definition);
        undefine(symbol);
    } else {
        eliminate(symbol, -1);
    }
    recycle(symbol);
}

ConstraintSolver::Addition ConstraintSolver::add(const Expression &expression, Relation relation,
                                                 Strength strength)
{
    const bool isRequired = !std::isfinite(strength.level);
    if (relation == Relation::equal && !isRequired)
        return { addTarget(expression, strength, strength), {} };

    // factor * expression + marker (- error) = 0
    Record record;
    record.factor = relation == Relation::greaterThanOrEqual ? -1.0 : 1.0;
    record.constant = expression.constant;
    const int index = makeRecord(record);
    Row row = rowOf(expression, record.factor);
    const Symbol marker =
            makeSymbol(relation == Relation::equal ? Kind::dummy : Kind::slack, index);
    m_records[index].marker = marker;
    addTo(row, marker, 1.0);
    Symbol partner = -1;
    if (!isRequired) {
        partner = makeSymbol(Kind::error, index);
        m_records[index].partner = partner;
        m_records[index].partnerStrength = strength;
        addTo(row, partner, -1.0);
        addCost(partner, strength, 1.0);
    }
    std::vector<Constraint> conflict = addRow(std::move(row), marker);
    if (conflict.empty())
        return { Constraint { index }, {} };
    std::erase(conflict, Constraint { index });
    recycle(marker);
    m_records[index].marker = -1;
    m_unusedRecords.push_back(index);
    return { std::nullopt, std::move(conflict) };
}

ConstraintSolver::Constraint ConstraintSolver::addTarget(const Expression &expression,
                                                         Strength notBelow, Strength notAbove)
{
    // expression - above + below = 0
    Record record;
    record.constant = expression.constant;
    record.markerSign = -1.0;
    record.markerStrength = notAbove;
    record.partnerStrength = notBelow;
    const int index = makeRecord(record);
    const Symbol above = makeSymbol(Kind::error, index);
    const Symbol below = makeSymbol(Kind::error, index);
    m_records[index].marker = above;
    m_records[index].partner = below;
    Row row = rowOf(expression, 1.0);
    addTo(row, above, -1.0);
    addTo(row, below, 1.0);
    addCost(above, notAbove, 1.0);
    addCost(below, notBelow, 1.0);
    addRow(std::move(row), above);
    return Constraint { index };
}

void ConstraintSolver::remove(Constraint constraint)
{
    const Record record = m_records[int(constraint)];
    const Symbol marker = record.marker;
    const Symbol partner = record.partner;
    if (record.markerStrength.weight > 0.0)
        addCost(marker, record.markerStrength, -1.0);
    if (partner >= 0)
        addCost(partner, record.partnerStrength, -1.0);

    Symbol basic = marker;
    if (partner >= 0 && m_symbols[partner].row >= 0)
        basic = partner;
    if (m_symbols[basic].row < 0 && !m_symbols[basic].rows.empty()) {
        // Into the basis, by the row that keeps the others feasible: the marker has no sign any
        // more, so it may also move below 0.
        int leaving = leavingRow(basic);
        if (leaving < 0) {
            double smallest = std::numeric_limits<double>::infinity();
            for (const int index : m_symbols[basic].rows) {
                const double ratio =
                        m_tableau[index].constant / coefficientOf(m_tableau[index], basic);
                if (ratio < smallest) {
                    smallest = ratio;
                    leaving = index;
                }
            }
        }
        pivot(leaving, basic);
    }
    if (m_symbols[basic].row >= 0) {
        const int index = m_symbols[basic].row;
        const Row row = m_tableau[index];
        const Symbol other = basic == marker ? partner : marker;
        for (const Symbol user : std::vector<Symbol>(m_symbols[basic].users))
            replaceInDefinition(user, basic, other, row);
        dropRow(index);
    } else {
        eliminate(marker, partner);
    }
    for (const Symbol symbol : { marker, partner }) {
        if (symbol < 0)
            continue;
        dropColumn(symbol);
        recycle(symbol);
    }
    m_records[int(constraint)].marker = -1;
    m_unusedRecords.push_back(int(constraint));
    m_isDecided = false;
    optimize();
}

std::vector<ConstraintSolver::Constraint> ConstraintSolver::setConstant(Constraint constraint,
                                                                        double constant)
{
    Record &record = m_records[int(constraint)];
    const double delta = record.factor * record.markerSign * (constant - record.constant);
    if (delta == 0.0)
        return {};
    shift(record, delta);
    std::vector<Constraint> conflict = repair();
    if (conflict.empty()) {
        record.constant = constant;
        return {};
    }
    shift(record, -delta);
    repair();
    return conflict;
}

double ConstraintSolver::constant(Constraint constraint) const
{
    return m_records[int(constraint)].constant;
}

void ConstraintSolver::solve()
{
    if (!isUndecided()) {
        evaluate();
        return;
    }
    ConstraintSolver scratch(*this);
    scratch.decide();
    for (std::size_t i = 0; i < m_symbols.size(); ++i)
        m_symbols[i].value = scratch.m_symbols[i].value;
}

double ConstraintSolver::value(Variable variable) const
{
    return m_symbols[int(variable)].value;
}

// Rows

double ConstraintSolver::coefficientOf(const Row &row, Symbol symbol)
{
    const auto place = find(row.entries, symbol);
    return place == row.entries.end() ? 0.0 : place->coefficient;
}

void ConstraintSolver::scale(Row &row, double factor)
{
    row.constant *= factor;
    for (Entry &entry : row.entries)
        entry.coefficient *= factor;
}

void ConstraintSolver::erase(Row &row, Symbol symbol)
{
    const auto place = find(row.entries, symbol);
    if (place != row.entries.end())
        row.entries.erase(place);
}

void ConstraintSolver::addTo(Row &row, Symbol symbol, double coefficient)
{
    const auto place = std::lower_bound(
            row.entries.begin(), row.entries.end(), symbol,
            [](const Entry &entry, Symbol wanted) { return entry.symbol < wanted; });
    if (place == row.entries.end() || place->symbol != symbol)
        row.entries.insert(place, { symbol, coefficient });
    else if (isZero(place->coefficient += coefficient))
        row.entries.erase(place);
}

void ConstraintSolver::addTo(Row &row, const Row &other, double factor)
{
    row.constant += factor * other.constant;
    merge(
            row.entries, other.entries, factor, [](Symbol) {}, [](Symbol) {});
}

// Symbols and records

ConstraintSolver::Symbol ConstraintSolver::makeSymbol(Kind kind, int owner)
{
    if (m_unusedSymbols.empty()) {
        m_unusedSymbols.push_back(int(m_symbols.size()));
        m_symbols.emplace_back();
        m_sums.push_back(0.0);
        m_marks.push_back(0);
    }
    const Symbol symbol = m_unusedSymbols.back();
    m_unusedSymbols.pop_back();
    m_symbols[symbol].kind = kind;
    m_symbols[symbol].owner = owner;
    return symbol;
}

void ConstraintSolver::recycle(Symbol symbol)
{
    m_symbols[symbol] = SymbolState();
    m_unusedSymbols.push_back(symbol);
}

int ConstraintSolver::makeRecord(const Record &record)
{
    if (m_unusedRecords.empty()) {
        m_records.push_back(record);
        return int(m_records.size()) - 1;
    }
    const int index = m_unusedRecords.back();
    m_unusedRecords.pop_back();
    m_records[index] = record;
    return index;
}

ConstraintSolver::Row ConstraintSolver::rowOf(const Expression &expression, double factor) const
{
    Row row;
    row.constant = factor * expression.constant;
    for (const Term &term : expression.terms)
        addTo(row, int(term.variable), factor * term.coefficient);
    return row;
}

// Definitions. They never go in a circle, since a variable is defined only while no definition
// mentions it, or by symbols that have no definition.

// The defined variables that `roots` lead to, each after those it is defined by.
std::vector<ConstraintSolver::Symbol>
ConstraintSolver::dependencies(const std::vector<Symbol> &roots)
{
    std::vector<Symbol> order;
    std::vector<std::pair<Symbol, std::size_t>> path;
    for (const Symbol root : roots) {
        if (m_marks[root] || !m_symbols[root].definition)
            continue;
        m_marks[root] = 1;
        path.emplace_back(root, 0);
        while (!path.empty()) {
            auto &[symbol, next] = path.back();
            const std::vector<Entry> &entries = m_symbols[symbol].definition->entries;
            if (next == entries.size()) {
                order.push_back(symbol);
                path.pop_back();
                continue;
            }
            const Symbol child = entries[next++].symbol;
            if (!m_marks[child] && m_symbols[child].definition) {
                m_marks[child] = 1;
                path.emplace_back(child, 0);
            }
        }
    }
    for (const Symbol symbol : order)
        m_marks[symbol] = 0;
    return order;
}

// The same sum in terms of variables without a definition and of symbols outside the basis.
ConstraintSolver::Row ConstraintSolver::expand(const Row &row)
{
    std::vector<Symbol> roots;
    for (const Entry &entry : row.entries)
        roots.push_back(entry.symbol);
    const std::vector<Symbol> order = dependencies(roots);

    Row result;
    result.constant = row.constant;
    std::vector<Symbol> touched;
    const auto add = [&](const std::vector<Entry> &entries, double factor) {
        for (const Entry &entry : entries) {
            if (!m_marks[entry.symbol]) {
                m_marks[entry.symbol] = 1;
                touched.push_back(entry.symbol);
            }
            m_sums[entry.symbol] += factor * entry.coefficient;
        }
    };
    const auto substitute = [&](Symbol symbol, const Row &value) {
        const double factor = std::exchange(m_sums[symbol], 0.0);
        if (isZero(factor))
            return;
        result.constant += factor * value.constant;
        add(value.entries, factor);
    };
    add(row.entries, 1.0);
    for (auto symbol = order.crbegin(); symbol != order.crend(); ++symbol)
        substitute(*symbol, *m_symbols[*symbol].definition);
    for (std::size_t i = 0; i < touched.size(); ++i) {
        if (m_symbols[touched[i]].row >= 0)
            substitute(touched[i], m_tableau[m_symbols[touched[i]].row]);
    }
    std::sort(touched.begin(), touched.end());
    for (const Symbol symbol : touched) {
        const double sum = std::exchange(m_sums[symbol], 0.0);
        m_marks[symbol] = 0;
        if (!isZero(sum))
            result.entries.push_back({ symbol, sum });
    }
    return result;
}

void ConstraintSolver::define(Symbol variable, Row definition)
{
    for (const Entry &entry : definition.entries)
        insertSorted(m_symbols[entry.symbol].users, variable);
    m_symbols[variable].definition = std::move(definition);
    m_isOrderValid = false;
}

void ConstraintSolver::undefine(Symbol variable)
{
    for (const Entry &entry : m_symbols[variable].definition->entries)
        removeSorted(m_symbols[entry.symbol].users, variable);
    m_symbols[variable].definition.reset();
    m_isOrderValid = false;
}

// Puts `replacement` in the place of `symbol`. What is left of `partner` is rounding.
void ConstraintSolver::replaceInDefinition(Symbol user, Symbol symbol, Symbol partner,
                                           const Row &replacement)
{
    Row definition = *m_symbols[user].definition;
    const double factor = coefficientOf(definition, symbol);
    undefine(user);
    erase(definition, symbol);
    addTo(definition, replacement, factor);
    erase(definition, partner);
    define(user, std::move(definition));
}

// Removes a symbol that may take any value, and is in no row of the tableau, from all definitions:
// one of the variables that depend on it becomes free in its place, and the others depend on that.
void ConstraintSolver::eliminate(Symbol symbol, Symbol partner)
{
    const std::vector<Symbol> users = m_symbols[symbol].users;
    if (users.size() == 1) {
        undefine(users.front());
        return;
    }
    for (const Symbol chosen : users) {
        Row inverse = expand({ { { chosen, 1.0 } }, 0.0, -1 });
        const double factor = coefficientOf(inverse, symbol);
        if (isZero(factor))
            continue;
        erase(inverse, symbol);
        erase(inverse, partner);
        scale(inverse, -1.0 / factor);
        addTo(inverse, chosen, 1.0 / factor);
        undefine(chosen);
        for (const Symbol user : users) {
            if (user != chosen)
                replaceInDefinition(user, symbol, partner, inverse);
        }
        return;
    }
}

// The tableau

int ConstraintSolver::insertRow(Row row)
{
    if (m_unusedRows.empty()) {
        m_unusedRows.push_back(int(m_tableau.size()));
        m_tableau.emplace_back();
    }
    const int index = m_unusedRows.back();
    m_unusedRows.pop_back();
    for (const Entry &entry : row.entries)
        insertSorted(m_symbols[entry.symbol].rows, index);
    m_symbols[row.basic].row = index;
    m_tableau[index] = std::move(row);
    return index;
}

void ConstraintSolver::dropRow(int index)
{
    for (const Entry &entry : m_tableau[index].entries)
        removeSorted(m_symbols[entry.symbol].rows, index);
    m_symbols[m_tableau[index].basic].row = -1;
    m_tableau[index] = Row();
    m_unusedRows.push_back(index);
}

void ConstraintSolver::dropColumn(Symbol symbol)
{
    for (const int index : std::exchange(m_symbols[symbol].rows, {}))
        erase(m_tableau[index], symbol);
    for (auto &[level, state] : m_levels)
        erase(state.cost, symbol);
}

void ConstraintSolver::addToTableau(int index, const Row &other, double factor)
{
    Row &row = m_tableau[index];
    row.constant += factor * other.constant;
    merge(
            row.entries, other.entries, factor,
            [&](Symbol symbol) { insertSorted(m_symbols[symbol].rows, index); },
            [&](Symbol symbol) { removeSorted(m_symbols[symbol].rows, index); });
}

// `entering` takes the place of the row's basic symbol.
void ConstraintSolver::pivot(int index, Symbol entering)
{
    Row row = std::move(m_tableau[index]);
    const Symbol leaving = row.basic;
    const double factor = coefficientOf(row, entering);
    erase(row, entering);
    scale(row, -1.0 / factor);
    addTo(row, leaving, 1.0 / factor);
    row.basic = entering;

    m_symbols[leaving].row = -1;
    m_symbols[entering].row = index;
    insertSorted(m_symbols[leaving].rows, index);
    for (const int other : std::exchange(m_symbols[entering].rows, {})) {
        if (other == index)
            continue;
        const double share = coefficientOf(m_tableau[other], entering);
        erase(m_tableau[other], entering);
        addToTableau(other, row, share);
    }
    const auto substitute = [&](Row &cost) {
        const double share = coefficientOf(cost, entering);
        if (share == 0.0)
            return;
        erase(cost, entering);
        addTo(cost, row, share);
    };
    for (auto &[level, state] : m_levels)
        substitute(state.cost);
    if (m_phase)
        substitute(*m_phase);
    m_tableau[index] = std::move(row);
    m_isDecided = false;
}

// The objective

void ConstraintSolver::addCost(Symbol symbol, Strength strength, double sign)
{
    Level &level = m_levels[strength.level];
    if (m_symbols[symbol].row >= 0)
        addTo(level.cost, m_tableau[m_symbols[symbol].row], sign * strength.weight);
    else
        addTo(level.cost, symbol, sign * strength.weight);
    level.uses += sign > 0.0 ? 1 : -1;
    if (level.uses == 0)
        m_levels.erase(strength.level);
}

bool ConstraintSolver::hasCost(Symbol symbol) const
{
    return std::any_of(m_levels.begin(), m_levels.end(), [&](const auto &level) {
        return coefficientOf(level.second.cost, symbol) != 0.0;
    });
}

bool ConstraintSolver::lowersCost(Symbol symbol) const
{
    if (m_symbols[symbol].kind == Kind::dummy)
        return false;
    for (const auto &[level, state] : m_levels) {
        if (const double cost = coefficientOf(state.cost, symbol); cost != 0.0)
            return cost < 0.0;
    }
    return false;
}

// Of two candidates to enter in the dual simplex: the one whose cost rises less.
bool ConstraintSolver::isCheaper(Symbol symbol, double coefficient, Symbol other,
                                 double otherCoefficient) const
{
    for (const auto &[level, state] : m_levels) {
        const double cost = coefficientOf(state.cost, symbol) / coefficient;
        const double otherCost = coefficientOf(state.cost, other) / otherCoefficient;
        if (!isZero(cost - otherCost))
            return cost < otherCost;
    }
    return false;
}

// Adds "row = 0". Returns the owners of a contradiction, among them the new constraint.
std::vector<ConstraintSolver::Constraint> ConstraintSolver::addRow(Row row, Symbol marker)
{
    m_isDecided = false;
    const auto solveFor = [&](Row &equation, Symbol symbol) {
        const double factor = coefficientOf(equation, symbol);
        erase(equation, symbol);
        scale(equation, -1.0 / factor);
    };
    const auto newest = [&](const Row &candidates, bool isUnmentioned) {
        Symbol found = -1;
        for (const Entry &entry : candidates.entries) {
            const SymbolState &state = m_symbols[entry.symbol];
            if (state.kind == Kind::variable && !state.definition
                && !(isUnmentioned && !state.users.empty())
                && (found < 0 || state.number > m_symbols[found].number))
                found = entry.symbol;
        }
        return found;
    };

    // A variable that nothing depends on yet: the constraint says what it is.
    if (const Symbol variable = newest(row, true); variable >= 0) {
        solveFor(row, variable);
        define(variable, std::move(row));
        return {};
    }
    row = expand(row);
    if (const Symbol variable = newest(row, false); variable >= 0) {
        solveFor(row, variable);
        define(variable, std::move(row));
        return {};
    }

    // A basic symbol that starts feasible and that no other row mentions: the cheapest one, which
    // is what the optimum would choose among these.
    Symbol basic = -1;
    double coefficient = 0.0;
    for (const Entry &entry : row.entries) {
        const SymbolState &state = m_symbols[entry.symbol];
        if (state.kind == Kind::dummy || !state.rows.empty()
            || -row.constant / entry.coefficient < 0.0)
            continue;
        if (basic < 0 || isCheaper(entry.symbol, std::abs(entry.coefficient), basic, coefficient)) {
            basic = entry.symbol;
            coefficient = std::abs(entry.coefficient);
        }
    }
    if (basic < 0)
        return addArtificially(std::move(row), marker);
    solveFor(row, basic);
    row.basic = basic;
    for (auto &[level, state] : m_levels) {
        const double share = coefficientOf(state.cost, basic);
        if (share == 0.0)
            continue;
        erase(state.cost, basic);
        addTo(state.cost, row, share);
    }
    // Only what the row mentions costs something else than before.
    const bool isOptimal =
            std::none_of(row.entries.begin(), row.entries.end(),
                         [&](const Entry &entry) { return lowersCost(entry.symbol); });
    insertRow(std::move(row));
    if (!isOptimal)
        optimize();
    return {};
}

// An artificial variable stands for what is missing, and is brought down to 0.
std::vector<ConstraintSolver::Constraint> ConstraintSolver::addArtificially(Row row, Symbol marker)
{
    if (row.constant < 0.0)
        scale(row, -1.0);
    const Symbol artificial = makeSymbol(Kind::slack, -1);
    row.basic = artificial;
    m_phase = row;
    insertRow(std::move(row));
    minimizePhase(false);
    m_phase.reset();

    std::vector<Constraint> conflict;
    if (const int index = m_symbols[artificial].row; index >= 0) {
        if (m_tableau[index].constant < smallestValue) {
            m_tableau[index].constant = 0.0;
            Symbol entering = marker;
            for (const Entry &entry : m_tableau[index].entries) {
                if (m_symbols[entry.symbol].kind != Kind::dummy)
                    entering = entry.symbol;
            }
            pivot(index, entering);
        } else {
            conflict = ownersOf(m_tableau[index]);
            dropRow(index);
        }
    }
    dropColumn(artificial);
    recycle(artificial);
    optimize();
    return conflict;
}

// The row that first keeps a nonbasic symbol from growing; -1 if none does.
int ConstraintSolver::leavingRow(Symbol entering) const
{
    int leaving = -1;
    double smallest = std::numeric_limits<double>::infinity();
    for (const int index : m_symbols[entering].rows) {
        const Row &row = m_tableau[index];
        const double coefficient = coefficientOf(row, entering);
        const bool isFixed = m_symbols[row.basic].kind == Kind::dummy;
        if (!isFixed && coefficient > 0.0)
            continue;
        const double ratio = isFixed ? 0.0 : std::max(0.0, -row.constant / coefficient);
        if (ratio < smallest || (ratio == smallest && row.basic < m_tableau[leaving].basic)) {
            smallest = ratio;
            leaving = index;
        }
    }
    return leaving;
}

// The first symbol, after Bland's rule, that lowers the strongest level it has a cost in; else -1.
ConstraintSolver::Symbol ConstraintSolver::enteringSymbol() const
{
    for (auto level = m_levels.begin(); level != m_levels.end(); ++level) {
        for (const Entry &entry : level->second.cost.entries) {
            if (entry.coefficient > 0.0 || m_symbols[entry.symbol].kind == Kind::dummy)
                continue;
            const bool costsMore = std::any_of(m_levels.begin(), level, [&](const auto &stronger) {
                return coefficientOf(stronger.second.cost, entry.symbol) != 0.0;
            });
            if (!costsMore)
                return entry.symbol;
        }
    }
    return -1;
}

void ConstraintSolver::optimize()
{
    for (Symbol entering = enteringSymbol(); entering >= 0; entering = enteringSymbol()) {
        const int leaving = leavingRow(entering);
        if (leaving < 0)
            return; // Rounding: errors are never negative, so that a cost has a lower bound.
        pivot(leaving, entering);
    }
}

// Brings m_phase down, on request by symbols alone that leave the objective where it is. Returns
// false if there is no limit to it. The cheapest symbol goes first, so that little is left for
// optimize() to do; the first one, after Bland's rule, where that gets nowhere.
bool ConstraintSolver::minimizePhase(bool withinOptimum)
{
    bool isStuck = false;
    while (true) {
        Symbol entering = -1;
        double coefficient = 0.0;
        for (const Entry &entry : m_phase->entries) {
            if (entry.coefficient > 0.0 || m_symbols[entry.symbol].kind == Kind::dummy
                || (withinOptimum && hasCost(entry.symbol)))
                continue;
            if (entering < 0
                || (!isStuck
                    && isCheaper(entry.symbol, -entry.coefficient, entering, coefficient))) {
                entering = entry.symbol;
                coefficient = -entry.coefficient;
            }
        }
        if (entering < 0)
            return true;
        const int leaving = leavingRow(entering);
        if (leaving < 0)
            return false;
        const double before = m_phase->constant;
        pivot(leaving, entering);
        isStuck = m_phase->constant >= before - smallestValue;
    }
}

// The dual simplex: the objective is at its optimum, but some basic symbols have the wrong sign.
std::vector<ConstraintSolver::Constraint> ConstraintSolver::repair()
{
    while (true) {
        int leaving = -1;
        double sign = 1.0;
        for (int index = 0; index < int(m_tableau.size()); ++index) {
            const Row &row = m_tableau[index];
            if (row.basic < 0)
                continue;
            const bool isAbove =
                    m_symbols[row.basic].kind == Kind::dummy && row.constant > smallestValue;
            if (!isAbove && row.constant > -smallestValue)
                continue;
            if (leaving < 0 || row.basic < m_tableau[leaving].basic) {
                leaving = index;
                sign = isAbove ? -1.0 : 1.0;
            }
        }
        if (leaving < 0)
            return {};

        Symbol entering = -1;
        double coefficient = 0.0;
        for (const Entry &entry : m_tableau[leaving].entries) {
            if (sign * entry.coefficient < 0.0 || m_symbols[entry.symbol].kind == Kind::dummy)
                continue;
            if (entering < 0
                || isCheaper(entry.symbol, sign * entry.coefficient, entering, coefficient)) {
                entering = entry.symbol;
                coefficient = sign * entry.coefficient;
            }
        }
        if (entering < 0)
            return ownersOf(m_tableau[leaving]);
        pivot(leaving, entering);
    }
}

// A row that cannot become 0 names the constraints whose weighted sum is the contradiction.
std::vector<ConstraintSolver::Constraint> ConstraintSolver::ownersOf(const Row &row) const
{
    std::vector<Constraint> owners;
    if (m_symbols[row.basic].owner >= 0)
        owners.push_back(Constraint { m_symbols[row.basic].owner });
    for (const Entry &entry : row.entries) {
        if (m_symbols[entry.symbol].owner >= 0)
            owners.push_back(Constraint { m_symbols[entry.symbol].owner });
    }
    std::sort(owners.begin(), owners.end());
    owners.erase(std::unique(owners.begin(), owners.end()), owners.end());
    return owners;
}

// Another constant acts as if the marker had moved.
void ConstraintSolver::shift(const Record &record, double delta)
{
    const SymbolState &marker = m_symbols[record.marker];
    if (marker.row >= 0)
        m_tableau[marker.row].constant -= delta;
    for (const int index : marker.rows)
        m_tableau[index].constant += delta * coefficientOf(m_tableau[index], record.marker);
    for (const Symbol user : marker.users) {
        Row &definition = *m_symbols[user].definition;
        definition.constant += delta * coefficientOf(definition, record.marker);
    }
}

// Solutions

// Whether the best solutions are several: then one of the symbols that cost nothing can move.
bool ConstraintSolver::isUndecided()
{
    if (m_isDecided)
        return false;
    for (const SymbolState &state : m_symbols) {
        if (state.kind == Kind::variable && !state.definition && !state.users.empty())
            return true;
    }
    for (const auto &[level, state] : m_levels) {
        for (const Entry &entry : state.cost.entries)
            m_marks[entry.symbol] = 1;
    }
    Row idle;
    for (Symbol symbol = 0; symbol < int(m_symbols.size()); ++symbol) {
        const SymbolState &state = m_symbols[symbol];
        const bool isFree = (state.kind == Kind::slack || state.kind == Kind::error)
                            && state.row < 0 && !m_marks[symbol];
        if (isFree && !(state.rows.empty() && state.users.empty()))
            idle.entries.push_back({ symbol, -1.0 });
    }
    for (const auto &[level, state] : m_levels) {
        for (const Entry &entry : state.cost.entries)
            m_marks[entry.symbol] = 0;
    }
    if (idle.entries.empty()) {
        m_isDecided = true;
        return false;
    }
    m_phase = std::move(idle);
    const bool isBounded = minimizePhase(true);
    const double moved = -m_phase->constant;
    m_phase.reset();
    return !isBounded || moved > smallestValue;
}

// Brings each variable as near to 0 as those before it and the objective leave it room for. For a
// copy only: what has been decided is frozen for good.
void ConstraintSolver::decide()
{
    const auto freeze = [&] {
        for (const auto &[level, state] : m_levels) {
            for (const Entry &entry : state.cost.entries)
                m_symbols[entry.symbol].kind = Kind::dummy;
        }
        m_levels.clear();
    };
    std::vector<Symbol> variables;
    for (Symbol symbol = 0; symbol < int(m_symbols.size()); ++symbol) {
        if (m_symbols[symbol].kind == Kind::variable)
            variables.push_back(symbol);
    }
    std::sort(variables.begin(), variables.end(), [&](Symbol one, Symbol other) {
        return m_symbols[one].number < m_symbols[other].number;
    });
    freeze();
    for (const Symbol variable : variables) {
        const Row value = expand({ { { variable, 1.0 } }, 0.0, -1 });
        const bool canMove =
                std::any_of(value.entries.begin(), value.entries.end(), [&](const Entry &entry) {
                    return m_symbols[entry.symbol].kind != Kind::dummy;
                });
        if (!canMove)
            continue;
        addTarget({ { { Variable { variable } } }, 0.0 }, { 0.0 }, { 0.0 });
        freeze();
    }
    evaluate();
}

void ConstraintSolver::evaluate()
{
    if (!m_isOrderValid) {
        std::vector<Symbol> roots(m_symbols.size());
        std::iota(roots.begin(), roots.end(), 0);
        m_order = dependencies(roots);
        m_isOrderValid = true;
    }
    for (SymbolState &state : m_symbols)
        state.value = state.row >= 0 ? m_tableau[state.row].constant : 0.0;
    for (const Symbol variable : m_order) {
        const Row &definition = *m_symbols[variable].definition;
        double value = definition.constant;
        for (const Entry &entry : definition.entries)
            value += entry.coefficient * m_symbols[entry.symbol].value;
        m_symbols[variable].value = value;
    }
}

} // namespace Pellarvine::detail
