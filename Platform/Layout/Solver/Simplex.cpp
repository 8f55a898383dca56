// SPDX-License-Identifier: MIT
#include "Layout/Solver/Simplex.h"

#include <limits>
#include <utility>

namespace Pellarvine::detail {

namespace {

// The smallest coefficient for a pivot, beside others of 1. Division by a smaller one would let
// rounding errors grow.
constexpr double smallestPivot = 1e-7;
// The choice of a large pivot may push other symbols below 0, by at most this much.
constexpr double leeway = 1e-9;

} // namespace

// Counts the pivots of one search. A long search continues with Bland's rule, which never cycles. A
// very long one, which only rounding errors can cause, is given up.
class Simplex::Effort
{
public:
    explicit Effort(Simplex &simplex)
        : m_simplex(simplex)
        , m_patience(100ULL + 4ULL * simplex.m_tableau.size())
    { }

    bool isCareful() const { return m_count > m_patience; }

    bool goesOn()
    {
        if (++m_count <= 10 * m_patience)
            return true;
        m_simplex.m_hasFailed = true;
        return false;
    }

private:
    Simplex &m_simplex;
    unsigned long long m_patience;
    unsigned long long m_count = 0;
};

void Simplex::addSymbol()
{
    m_tableau.addSymbol();
    m_objective.addSymbol();
    m_isFixed.push_back(0);
    m_partners.push_back(-1);
}

void Simplex::forget(Symbol symbol)
{
    m_tableau.forget(symbol);
    m_isFixed[symbol] = 0;
    m_partners[symbol] = -1;
}

void Simplex::pair(Symbol one, Symbol other)
{
    m_partners[one] = other;
    m_partners[other] = one;
}

void Simplex::fixCosts()
{
    m_objective.mark(m_isFixed);
    m_objective.clear();
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
    // Looks for a basic symbol that is feasible and that no other row mentions. The optimum has the
    // cheapest one.
    constexpr double smallest = 0.01; // the constraint's own symbols have 1
    Symbol basic = -1;
    double coefficient = 0.0;
    for (const auto &entry : row.entries) {
        const double size = std::abs(entry.coefficient);
        if (size < smallest || isFixed(entry.symbol) || !m_tableau.rowsWith(entry.symbol).empty()
            || -row.constant / entry.coefficient < 0.0)
            continue;
        if (basic < 0 || m_objective.compare(entry.symbol, size, basic, coefficient) < 0) {
            basic = entry.symbol;
            coefficient = size;
        }
    }
    if (basic < 0)
        return false;
    row.solveFor(basic);
    m_objective.substitute(basic, row);
    // The costs of all other symbols are unchanged.
    const bool isOptimal =
            std::none_of(row.entries.begin(), row.entries.end(),
                         [&](const auto &entry) { return lowersCost(entry.symbol); });
    m_tableau.insert(std::move(row), basic);
    if (!isOptimal)
        optimize();
    return true;
}

std::vector<Simplex::Symbol> Simplex::insertRequired(LinearRow row, Symbol marker)
{
    row.solveFor(marker);
    check(m_tableau.insert(std::move(row), marker));
    return repair();
}

std::vector<char> Simplex::startAgain()
{
    std::vector<char> wasBasic(m_isFixed.size());
    for (Symbol symbol = 0; symbol < int(wasBasic.size()); ++symbol)
        wasBasic[symbol] = m_tableau.isBasic(symbol);
    m_tableau = {};
    m_misses = {};
    m_objective.clear();
    for (std::size_t i = 0; i < wasBasic.size(); ++i)
        m_tableau.addSymbol();
    m_hasFailed = false;
    ++m_pivots;
    return wasBasic;
}

void Simplex::insertAnyhow(LinearRow row, Symbol marker)
{
    row.solveFor(marker);
    m_tableau.insert(std::move(row), marker);
}

// Gaussian elimination. The symbol that the fewest rows mention is first, so that rows stay short.
// It becomes basic in the row with its largest coefficient, so that rounding errors do not grow.
void Simplex::makeBasic(const std::vector<char> &isWanted)
{
    std::vector<Symbol> left;
    for (Symbol symbol = 0; symbol < int(isWanted.size()); ++symbol) {
        if (isWanted[symbol] && !m_tableau.isBasic(symbol))
            left.push_back(symbol);
    }
    while (!left.empty()) {
        const auto next = std::min_element(left.begin(), left.end(), [&](Symbol one, Symbol other) {
            return m_tableau.rowsWith(one).size() < m_tableau.rowsWith(other).size();
        });
        const Symbol entering = *next;
        *next = left.back();
        left.pop_back();
        int leaving = -1;
        double largest = smallestPivot;
        for (const int index : m_tableau.rowsWith(entering)) {
            const double size = std::abs(m_tableau.row(index).coefficientOf(entering));
            if (size > largest && !isWanted[m_tableau.basic(index)]) {
                leaving = index;
                largest = size;
            }
        }
        if (leaving >= 0)
            pivot(leaving, entering);
    }
}

void Simplex::makeFeasible()
{
    for (int index = 0; index < m_tableau.size(); ++index)
        check(index);
    while (true) {
        const std::vector<Symbol> contradiction = repair();
        if (contradiction.empty())
            return;
        m_tableau.clearConstant(m_tableau.rowOf(contradiction.front()));
    }
}

void Simplex::makeBasic(Symbol symbol)
{
    if (m_tableau.isBasic(symbol) || m_tableau.rowsWith(symbol).empty())
        return;
    // Chooses the row that keeps the others feasible. The symbol may also become negative.
    int leaving = leavingRow(symbol, false);
    if (leaving < 0) {
        double smallest = std::numeric_limits<double>::infinity();
        double largest = 0.0;
        for (const int index : m_tableau.rowsWith(symbol)) {
            const LinearRow &row = m_tableau.row(index);
            const double size = std::abs(row.coefficientOf(symbol));
            const double ratio = row.constant / size;
            if (ratio > smallest + leeway || (ratio >= smallest - leeway && size < largest))
                continue;
            smallest = ratio;
            largest = size;
            leaving = index;
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
    Effort effort(*this);
    while (effort.goesOn()) {
        const Symbol entering = m_objective.entering(m_isFixed, effort.isCareful());
        if (entering < 0)
            return;
        if (!effort.isCareful())
            passKinks(entering);
        const int leaving = leavingRow(entering, effort.isCareful());
        if (leaving < 0) {
            // Costs are bounded, because errors are never negative: this is a rounding error.
            m_hasFailed = true;
            return;
        }
        pivot(leaving, entering);
    }
}

// As the symbol grows, an error falls to 0 and then the opposite error rises: a kink in the costs.
// Exchanges such errors, one after the other, as long as the costs still fall. An exchange changes
// one row; making the symbol basic at each kink would change all rows that mention it.
void Simplex::passKinks(Symbol entering)
{
    double most = std::numeric_limits<double>::infinity();
    std::vector<std::pair<double, int>> kinks;
    for (const int index : m_tableau.rowsWith(entering)) {
        const double room = roomIn(index, entering, 0.0);
        if (room == std::numeric_limits<double>::infinity())
            continue;
        const Symbol partner = m_partners[m_tableau.basic(index)];
        if (partner >= 0 && !isFixed(partner) && !isFixed(m_tableau.basic(index))
            && m_tableau.rowsWith(partner).size() == 1
            && m_tableau.rowsWith(partner).front() == index)
            kinks.emplace_back(room, index);
        else
            most = std::min(most, room);
    }
    std::sort(kinks.begin(), kinks.end());
    for (const auto &[room, index] : kinks) {
        if (room >= most)
            return;
        const Symbol basic = m_tableau.basic(index);
        pivot(index, m_partners[basic]);
        if (!lowersCost(entering)) {
            pivot(index, basic);
            return;
        }
    }
}

void Simplex::shift(Symbol symbol, double delta)
{
    m_tableau.shift(symbol, delta);
    if (m_tableau.isBasic(symbol))
        check(m_tableau.rowOf(symbol));
    for (const int index : m_tableau.rowsWith(symbol))
        check(index);
}

// The dual simplex: the objective is optimal, but some basic symbols have the wrong sign.
std::vector<Simplex::Symbol> Simplex::repair()
{
    Effort effort(*this);
    for (int leaving = infeasibleRow(); leaving >= 0 && effort.goesOn();
         leaving = effort.isCareful() ? firstInfeasibleRow() : infeasibleRow()) {
        const LinearRow &row = m_tableau.row(leaving);
        const double sign = row.constant > 0.0 ? -1.0 : 1.0;
        const double smallest = smallestPivot * std::max(1.0, row.largestCoefficient());
        Symbol entering = -1;
        double coefficient = 0.0;
        for (const auto &entry : row.entries) {
            const double size = sign * entry.coefficient;
            if (size < smallest || isFixed(entry.symbol))
                continue;
            const int order =
                    entering < 0 ? -1
                                 : m_objective.compare(entry.symbol, size, entering, coefficient);
            if (order < 0 || (order == 0 && !effort.isCareful() && size > coefficient)) {
                entering = entry.symbol;
                coefficient = size;
            }
        }
        if (entering < 0)
            return symbolsOf(leaving);
        const SortedIndices changing = m_tableau.rowsWith(entering);
        pivot(leaving, entering);
        for (const int index : changing)
            check(index);
    }
    return {};
}

bool Simplex::lowersCost(Symbol symbol) const
{
    return !isFixed(symbol) && m_objective.isLoweredBy(symbol);
}

// Chooses the cheapest symbol, which leaves the least work for optimize(). After a step without
// progress it chooses the first symbol, by Bland's rule.
bool Simplex::minimize(LinearRow &cost, bool isWithinOptimum)
{
    Effort effort(*this);
    bool isStuck = false;
    while (effort.goesOn()) {
        const double smallest = smallestPivot * cost.largestCoefficient();
        Symbol entering = -1;
        double coefficient = 0.0;
        for (const auto &entry : cost.entries) {
            if (entry.coefficient > -smallest || isFixed(entry.symbol)
                || (isWithinOptimum && m_objective.mentions(entry.symbol)))
                continue;
            if (entering < 0
                || (!isStuck
                    && m_objective.compare(entry.symbol, -entry.coefficient, entering, coefficient)
                               < 0)) {
                entering = entry.symbol;
                coefficient = -entry.coefficient;
            }
        }
        if (entering < 0)
            return true;
        const int leaving = leavingRow(entering, isStuck);
        if (leaving < 0)
            return false;
        const double before = cost.constant;
        pivot(leaving, entering);
        cost.substitute(entering, m_tableau.row(leaving));
        isStuck = cost.constant >= before - smallestValue;
    }
    return true;
}

// How far the row alone lets a nonbasic symbol grow; infinite if it does not limit the symbol.
double Simplex::roomIn(int index, Symbol entering, double slack) const
{
    const LinearRow &row = m_tableau.row(index);
    const double coefficient = row.coefficientOf(entering);
    const double size = std::abs(coefficient);
    if (size < smallestPivot)
        return std::numeric_limits<double>::infinity();
    if (isFixed(m_tableau.basic(index)))
        return slack / size;
    return coefficient > 0.0 ? std::numeric_limits<double>::infinity()
                             : (std::max(0.0, row.constant) + slack) / size;
}

// The row that limits the growth of a nonbasic symbol most; -1 if none does. If several have about
// the same limit, the one with the largest pivot.
int Simplex::leavingRow(Symbol entering, bool isCareful) const
{
    const double slack = isCareful ? 0.0 : leeway;
    const auto &rows = m_tableau.rowsWith(entering);
    double most = std::numeric_limits<double>::infinity();
    for (const int index : rows)
        most = std::min(most, roomIn(index, entering, slack));
    if (most == std::numeric_limits<double>::infinity())
        return -1;
    int leaving = -1;
    double largest = 0.0;
    for (const int index : rows) {
        if (roomIn(index, entering, 0.0) > most)
            continue;
        const double size = std::abs(m_tableau.row(index).coefficientOf(entering));
        if (leaving < 0
            || (isCareful ? m_tableau.basic(index) < m_tableau.basic(leaving) : size > largest)) {
            leaving = index;
            largest = size;
        }
    }
    return leaving;
}

// The size of the row's basic symbol if it has the wrong sign; a fixed one should be 0.
double Simplex::excess(int index) const
{
    const double constant = m_tableau.row(index).constant;
    return isFixed(m_tableau.basic(index)) ? std::abs(constant) : -constant;
}

bool Simplex::isFeasible(int index) const
{
    return m_tableau.basic(index) < 0 || excess(index) <= smallestValue;
}

void Simplex::check(int index)
{
    if (!isFeasible(index))
        m_misses.emplace(excess(index), index);
}

// The row with the largest excess; -1 if all are feasible.
int Simplex::infeasibleRow()
{
    while (!m_misses.empty()) {
        const auto [miss, index] = m_misses.top();
        if (!isFeasible(index) && excess(index) == miss)
            return index;
        m_misses.pop();
    }
    return -1;
}

// The infeasible row with the first basic symbol, by Bland's rule.
int Simplex::firstInfeasibleRow() const
{
    int found = -1;
    for (int index = 0; index < m_tableau.size(); ++index) {
        if (!isFeasible(index) && (found < 0 || m_tableau.basic(index) < m_tableau.basic(found)))
            found = index;
    }
    return found;
}

void Simplex::pivot(int index, Symbol entering)
{
    m_tableau.pivot(index, entering);
    m_objective.substitute(entering, m_tableau.row(index));
    ++m_pivots;
}

// All symbols of a row that cannot be 0. The weighted sum of their owners is the contradiction.
std::vector<Simplex::Symbol> Simplex::symbolsOf(int index) const
{
    std::vector<Symbol> symbols { m_tableau.basic(index) };
    for (const auto &entry : m_tableau.row(index).entries)
        symbols.push_back(entry.symbol);
    return symbols;
}

} // namespace Pellarvine::detail
