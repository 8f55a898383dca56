// SPDX-License-Identifier: MIT
#include "Layout/Solver/SolverState.h"

#include <algorithm>
#include <cmath>

namespace Pellarvine::detail {

namespace {

// A variable is defined only if its coefficient has at least this share of the largest one.
constexpr double smallestShare = 0.4;

} // namespace

// Symbols and records

ConstraintSolver::Private::Symbol ConstraintSolver::Private::makeSymbol(SymbolState state)
{
    if (unusedSymbols.empty()) {
        unusedSymbols.push_back(int(symbols.size()));
        symbols.emplace_back();
        values.push_back(0.0);
        simplex.addSymbol();
        definitions.addSymbol();
    }
    const Symbol symbol = unusedSymbols.back();
    unusedSymbols.pop_back();
    symbols[symbol] = state;
    return symbol;
}

void ConstraintSolver::Private::recycle(Symbol symbol)
{
    symbols[symbol] = {};
    values[symbol] = 0.0;
    simplex.forget(symbol);
    definitions.forget(symbol);
    unusedSymbols.push_back(symbol);
}

int ConstraintSolver::Private::makeRecord(const Record &record)
{
    if (unusedRecords.empty()) {
        records.push_back(record);
        return int(records.size()) - 1;
    }
    const int index = unusedRecords.back();
    unusedRecords.pop_back();
    records[index] = record;
    return index;
}

void ConstraintSolver::Private::recycleRecord(int index)
{
    records[index] = {};
    unusedRecords.push_back(index);
}

// Constraints

ConstraintSolver::Constraint ConstraintSolver::Private::addTarget(const Expression &expression,
                                                                  Strength notBelow,
                                                                  Strength notAbove)
{
    // expression - above + below = 0
    Record record;
    record.constant = expression.constant;
    record.markerSign = -1.0;
    record.terms = termsOf(expression, 1.0);
    record.markerStrength = notAbove;
    record.partnerStrength = notBelow;
    const int index = makeRecord(record);
    records[index].marker = makeSymbol({ .owner = index });
    records[index].partner = makeSymbol({ .owner = index });
    addRow(index);
    return Constraint { index };
}

LinearRow::Entries ConstraintSolver::Private::termsOf(const Expression &expression, double factor)
{
    LinearRow terms;
    for (const auto &[variable, coefficient] : expression.terms)
        terms.add(int(variable), factor * coefficient);
    return terms.entries;
}

// The row for which the constraint is "row = 0".
LinearRow ConstraintSolver::Private::rowOf(const Record &record)
{
    LinearRow row;
    row.entries = record.terms;
    row.constant = record.factor * record.constant;
    row.add(record.marker, record.markerSign);
    if (record.partner >= 0)
        row.add(record.partner, -record.markerSign);
    return row;
}

// Returns the owners of a contradiction, including this constraint, which is then not added.
std::vector<ConstraintSolver::Constraint> ConstraintSolver::Private::addRow(int index)
{
    decidedPivots.reset();
    const Record record = records[index];
    if (record.isEquality)
        simplex.fix(record.marker);
    if (record.partner >= 0)
        simplex.pair(record.marker, record.partner);
    addCosts(record);
    records[index].isIn = true;
    LinearRow row = rowOf(record);
    if (define(row) || simplex.insert(row))
        return {};
    std::vector<Constraint> conflict =
            ownersOf(simplex.insertRequired(std::move(row), record.marker));
    if (!conflict.empty())
        takeOut(index);
    return conflict;
}

void ConstraintSolver::Private::addCosts(const Record &record)
{
    if (record.markerStrength.weight > 0.0)
        simplex.addCost(record.marker, record.markerStrength.level, record.markerStrength.weight);
    if (record.partnerStrength.weight > 0.0)
        simplex.addCost(record.partner, record.partnerStrength.level,
                        record.partnerStrength.weight);
}

void ConstraintSolver::Private::removeCosts(const Record &record)
{
    if (record.markerStrength.weight > 0.0)
        simplex.removeCost(record.marker, record.markerStrength.level,
                           record.markerStrength.weight);
    if (record.partnerStrength.weight > 0.0)
        simplex.removeCost(record.partner, record.partnerStrength.level,
                           record.partnerStrength.weight);
}

// Solves the row for a variable and makes that its definition, if one has none. Otherwise expands
// the row and returns false.
bool ConstraintSolver::Private::define(LinearRow &row)
{
    // Prefers a variable on which no other depends, and a place to a size, because an optional
    // constraint on the size can still define the size.
    Symbol variable = -1;
    for (const bool canBeWanted : { false, true }) {
        if (variable < 0)
            variable = newestFree(row, true, canBeWanted);
        if (variable < 0)
            variable = expandLittle(row, canBeWanted);
    }
    if (variable < 0) {
        row = definitions.expand(row, simplex.tableau());
        variable = newestFree(row, false, true);
    }
    if (variable < 0)
        return false;
    row.solveFor(variable);
    definitions.define(variable, std::move(row));
    return true;
}

// Substitutes a few definitions to find a variable on which the rest of the row does not depend.
// This keeps the row short. If there is none, returns -1 and leaves the row unchanged.
ConstraintSolver::Private::Symbol ConstraintSolver::Private::expandLittle(LinearRow &row,
                                                                          bool canBeWanted)
{
    constexpr int mostSteps = 4;
    const bool canChange =
            std::any_of(row.entries.begin(), row.entries.end(),
                        [&](const auto &entry) { return definitions.isDefined(entry.symbol); });
    if (!canChange && newestFree(row, false, canBeWanted) < 0)
        return -1;
    LinearRow little = row;
    for (int step = 0;; ++step) {
        const Symbol found = newestFree(little, false, canBeWanted);
        if (found >= 0) {
            if (definitions.leadsTo(little, found))
                return -1;
            row = std::move(little);
            return found;
        }
        Symbol newest = -1;
        for (const auto &[symbol, coefficient] : little.entries) {
            if (definitions.isDefined(symbol)
                && (newest < 0 || symbols[symbol].number > symbols[newest].number))
                newest = symbol;
        }
        if (newest < 0 || step == mostSteps)
            return -1;
        little.substitute(newest, definitions.definition(newest));
    }
}

// The last variable of the row that has no definition and, if `isUnused`, that no definition
// mentions. Skips small coefficients, which would make those of the definition large.
ConstraintSolver::Private::Symbol
ConstraintSolver::Private::newestFree(const LinearRow &row, bool isUnused, bool canBeWanted) const
{
    double largest = 0.0;
    const auto newest = [&](double smallest) {
        Symbol found = -1;
        for (const auto &[symbol, coefficient] : row.entries) {
            if (std::abs(coefficient) < smallest || !isVariable(symbol)
                || definitions.isDefined(symbol) || (isUnused && definitions.isUsed(symbol))
                || (!canBeWanted && symbols[symbol].isWanted))
                continue;
            largest = std::max(largest, std::abs(coefficient));
            if (found < 0 || symbols[symbol].number > symbols[found].number)
                found = symbol;
        }
        return found;
    };
    const Symbol found = newest(0.0);
    return found < 0 ? found : newest(smallestShare * largest);
}

std::vector<ConstraintSolver::Constraint>
ConstraintSolver::Private::ownersOf(const std::vector<Symbol> &contradiction) const
{
    std::vector<Constraint> owners;
    for (const Symbol symbol : contradiction) {
        if (symbols[symbol].owner >= 0)
            owners.push_back(Constraint { symbols[symbol].owner });
    }
    std::sort(owners.begin(), owners.end());
    owners.erase(std::unique(owners.begin(), owners.end()), owners.end());
    return owners;
}

void ConstraintSolver::Private::remove(int index)
{
    takeOut(index);
    recycle(records[index].marker);
    if (records[index].partner >= 0)
        recycle(records[index].partner);
    recycleRecord(index);
}

void ConstraintSolver::Private::takeOut(int index)
{
    Record &record = records[index];
    const Symbol marker = record.marker;
    const Symbol partner = record.partner;
    record.isIn = false;
    const auto pivotsBefore = simplex.pivots();
    const bool isCosting =
            record.markerStrength.weight > 0.0 || record.partnerStrength.weight > 0.0;
    removeCosts(record);

    // Without the constraint, its marker may take any value.
    const Tableau &tableau = simplex.tableau();
    const bool isPartnerBasic = partner >= 0 && tableau.isBasic(partner);
    const Symbol basic = isPartnerBasic ? partner : marker;
    simplex.makeBasic(basic);
    if (tableau.isBasic(basic)) {
        definitions.replace(basic, isPartnerBasic ? marker : partner,
                            tableau.row(tableau.rowOf(basic)));
        simplex.dropRow(basic);
    } else {
        definitions.eliminate(marker, partner, tableau);
    }
    for (const Symbol symbol : { marker, partner }) {
        if (symbol >= 0)
            simplex.dropColumn(symbol);
    }
    decidedPivots.reset();
    if (!simplex.isFeasible())
        findOptimum();
    else if (isCosting || simplex.pivots() != pivotsBefore)
        simplex.optimize();
}

// Starts from the current basis.
void ConstraintSolver::Private::findOptimum()
{
    simplex.clearCosts();
    simplex.makeFeasible();
    for (const Record &record : records) {
        if (record.isIn)
            addCosts(record);
    }
    simplex.optimize();
}

// A change of the constant has the effect of a shift of the marker.
std::vector<ConstraintSolver::Constraint> ConstraintSolver::Private::setConstant(int index,
                                                                                 double constant)
{
    Record &record = records[index];
    const double delta = record.factor * record.markerSign * (constant - record.constant);
    record.constant = constant;
    simplex.shift(record.marker, delta);
    definitions.shift(record.marker, delta);
    return ownersOf(simplex.repair());
}

// Solutions

void ConstraintSolver::Private::solve()
{
    if (!isUndecided()) {
        evaluate();
        return;
    }
    Private scratch(*this);
    scratch.decide();
    scratch.values.resize(values.size());
    values = std::move(scratch.values);
}

// Whether there are several best solutions: a symbol without a cost can still change.
bool ConstraintSolver::Private::isUndecided()
{
    if (decidedPivots == simplex.pivots())
        return false;
    const int count = int(symbols.size());
    for (Symbol symbol = 0; symbol < count; ++symbol) {
        if (isVariable(symbol) && !definitions.isDefined(symbol) && definitions.isUsed(symbol))
            return true;
    }
    LinearRow idle;
    for (Symbol symbol = 0; symbol < count; ++symbol) {
        const bool isMentioned =
                definitions.isUsed(symbol) || !simplex.tableau().rowsWith(symbol).empty();
        if (!isVariable(symbol) && !simplex.isFixedOrCosting(symbol) && isMentioned
            && !simplex.tableau().isBasic(symbol))
            idle.entries.push_back({ symbol, -1.0 });
    }
    if (idle.entries.empty()) {
        decidedPivots = simplex.pivots();
        return false;
    }
    const bool isBounded = simplex.minimizeWithinOptimum(idle);
    return !isBounded || -idle.constant > smallestValue;
}

void ConstraintSolver::Private::fixCosts()
{
    simplex.fixCosts();
    for (Record &record : records)
        record.markerStrength = record.partnerStrength = { 0.0, 0.0 };
}

// Brings each variable as near to 0 as the objective and the variables before it allow. Call it on
// a copy: it fixes each decision for good.
void ConstraintSolver::Private::decide()
{
    std::vector<Symbol> variables;
    for (Symbol symbol = 0; symbol < int(symbols.size()); ++symbol) {
        if (isVariable(symbol))
            variables.push_back(symbol);
    }
    std::sort(variables.begin(), variables.end(), [&](Symbol one, Symbol other) {
        return symbols[one].number < symbols[other].number;
    });
    fixCosts();
    for (const Symbol variable : variables) {
        const LinearRow value =
                definitions.expand({ { { variable, 1.0 } }, 0.0 }, simplex.tableau());
        const bool canMove =
                std::any_of(value.entries.begin(), value.entries.end(),
                            [&](const auto &entry) { return !simplex.isFixed(entry.symbol); });
        if (!canMove)
            continue;
        addTarget({ { { Variable { variable } } }, 0.0 }, { 0.0 }, { 0.0 });
        fixCosts();
        if (isWorn())
            renew();
    }
    evaluate();
}

// Tries to move the variable in both directions. Call it on a copy.
bool ConstraintSolver::Private::isDetermined(Symbol variable, double level)
{
    simplex.dropCosts(level);
    for (const double direction : { 1.0, -1.0 }) {
        LinearRow row = definitions.expand({ { { variable, direction } }, 0.0 }, simplex.tableau());
        const bool isFree =
                std::any_of(row.entries.begin(), row.entries.end(),
                            [&](const auto &entry) { return isVariable(entry.symbol); });
        const double before = row.constant;
        if (isFree || !simplex.minimizeWithinOptimum(row) || before - row.constant > smallestValue)
            return false;
    }
    return true;
}

} // namespace Pellarvine::detail
