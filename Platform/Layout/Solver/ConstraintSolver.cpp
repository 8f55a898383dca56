// SPDX-License-Identifier: MIT
#include "Layout/Solver/ConstraintSolver.h"

#include "Layout/Solver/Simplex.h"
#include "Layout/Solver/VariableDefinitions.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Pellarvine::detail {

struct ConstraintSolver::Private
{
    using Symbol = LinearRow::Symbol;

    // Other symbols than variables are never negative: what an inequality leaves, by how much a
    // wanted constraint is missed, or the mark of a required equality, which is fixed.
    struct SymbolState
    {
        int number = -1; // of a variable: its place in the order of all
        int owner = -1; // of another symbol: the constraint that it belongs to
    };

    struct Record
    {
        Symbol marker = -1;
        Symbol partner = -1; // a second symbol that always stands beside the marker, negated
        double markerSign = 1.0;
        double factor = 1.0; // of the expression as it was given
        double constant = 0.0;
        Strength markerStrength { 0.0, 0.0 };
        Strength partnerStrength { 0.0, 0.0 };
    };

    bool isVariable(Symbol symbol) const { return symbols[symbol].number >= 0; }

    Symbol makeSymbol(SymbolState state);
    void recycle(Symbol symbol);
    int makeRecord(const Record &record);
    void recycleRecord(int index);

    Constraint addTarget(const Expression &expression, Strength notBelow, Strength notAbove);
    std::vector<Constraint> addRow(LinearRow row, Symbol marker);
    Symbol newestFree(const LinearRow &row, bool isUnused) const;
    std::vector<Constraint> ownersOf(const std::vector<Symbol> &contradiction) const;
    void remove(int record);
    std::vector<Constraint> shift(Symbol marker, double delta);

    bool isUndecided();
    void decide();
    void evaluate() { definitions.evaluate(simplex.tableau(), values); }

    Simplex simplex;
    VariableDefinitions definitions;
    std::vector<SymbolState> symbols;
    std::vector<double> values; // by symbol, in the last snapshot
    std::vector<Symbol> unusedSymbols;
    std::vector<Record> records;
    std::vector<int> unusedRecords;
    int nextNumber = 0;
    // The basis that is known to have a single optimum whatever the constants are, if any.
    std::optional<unsigned long long> decidedPivots;
};

namespace {

LinearRow rowOf(const ConstraintSolver::Expression &expression, double factor)
{
    LinearRow row;
    row.constant = factor * expression.constant;
    for (const auto &[variable, coefficient] : expression.terms)
        row.add(int(variable), factor * coefficient);
    return row;
}

} // namespace

ConstraintSolver::ConstraintSolver()
    : d(std::make_unique<Private>())
{ }

ConstraintSolver::ConstraintSolver(const ConstraintSolver &other)
    : d(std::make_unique<Private>(*other.d))
{ }

ConstraintSolver::~ConstraintSolver() = default;

ConstraintSolver::Variable ConstraintSolver::addVariable()
{
    return Variable { d->makeSymbol({ .number = d->nextNumber++ }) };
}

void ConstraintSolver::removeVariable(Variable variable)
{
    const int symbol = int(variable);
    if (d->definitions.isDefined(symbol)) {
        d->definitions.replace(symbol, -1, d->definitions.definition(symbol));
        d->definitions.undefine(symbol);
    } else {
        d->definitions.eliminate(symbol, -1, d->simplex.tableau());
    }
    d->recycle(symbol);
}

ConstraintSolver::Addition ConstraintSolver::add(const Expression &expression, Relation relation,
                                                 Strength strength)
{
    const bool isRequired = !std::isfinite(strength.level);
    if (relation == Relation::equal && !isRequired)
        return { addTarget(expression, strength, strength), {} };

    // factor * expression + marker (- error) = 0
    Private::Record record;
    record.factor = relation == Relation::greaterThanOrEqual ? -1.0 : 1.0;
    record.constant = expression.constant;
    const int index = d->makeRecord(record);
    LinearRow row = rowOf(expression, record.factor);
    const int marker = d->makeSymbol({ .owner = index });
    if (relation == Relation::equal)
        d->simplex.fix(marker);
    d->records[index].marker = marker;
    row.add(marker, 1.0);
    if (!isRequired) {
        const int error = d->makeSymbol({ .owner = index });
        d->records[index].partner = error;
        d->records[index].partnerStrength = strength;
        row.add(error, -1.0);
        d->simplex.addCost(error, strength.level, strength.weight);
    }
    std::vector<Constraint> conflict = d->addRow(std::move(row), marker);
    if (conflict.empty())
        return { Constraint { index }, {} };
    std::erase(conflict, Constraint { index });
    d->recycle(marker);
    d->recycleRecord(index);
    return { std::nullopt, std::move(conflict) };
}

ConstraintSolver::Constraint ConstraintSolver::addTarget(const Expression &expression,
                                                         Strength notBelow, Strength notAbove)
{
    return d->addTarget(expression, notBelow, notAbove);
}

void ConstraintSolver::remove(Constraint constraint)
{
    d->remove(int(constraint));
}

std::vector<ConstraintSolver::Constraint> ConstraintSolver::setConstant(Constraint constraint,
                                                                        double constant)
{
    Private::Record &record = d->records[int(constraint)];
    const double delta = record.factor * record.markerSign * (constant - record.constant);
    if (delta == 0.0)
        return {};
    std::vector<Constraint> conflict = d->shift(record.marker, delta);
    if (conflict.empty())
        record.constant = constant;
    else
        d->shift(record.marker, -delta);
    return conflict;
}

double ConstraintSolver::constant(Constraint constraint) const
{
    return d->records[int(constraint)].constant;
}

void ConstraintSolver::solve()
{
    if (!d->isUndecided()) {
        d->evaluate();
        return;
    }
    Private scratch(*d);
    scratch.decide();
    scratch.values.resize(d->values.size());
    d->values = std::move(scratch.values);
}

double ConstraintSolver::value(Variable variable) const
{
    return d->values[int(variable)];
}

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
    records[index].marker = -1;
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
    record.markerStrength = notAbove;
    record.partnerStrength = notBelow;
    const int index = makeRecord(record);
    const int above = makeSymbol({ .owner = index });
    const int below = makeSymbol({ .owner = index });
    records[index].marker = above;
    records[index].partner = below;
    LinearRow row = rowOf(expression, 1.0);
    row.add(above, -1.0);
    row.add(below, 1.0);
    simplex.addCost(above, notAbove.level, notAbove.weight);
    simplex.addCost(below, notBelow.level, notBelow.weight);
    addRow(std::move(row), above);
    return Constraint { index };
}

// Adds "row = 0". Returns the owners of a contradiction, among them the new constraint.
std::vector<ConstraintSolver::Constraint> ConstraintSolver::Private::addRow(LinearRow row,
                                                                            Symbol marker)
{
    decidedPivots.reset();
    // A variable that nothing depends on yet: the constraint says what it is.
    Symbol variable = newestFree(row, true);
    if (variable < 0) {
        row = definitions.expand(row, simplex.tableau());
        variable = newestFree(row, false);
    }
    if (variable >= 0) {
        row.solveFor(variable);
        definitions.define(variable, std::move(row));
        return {};
    }
    if (simplex.insert(row))
        return {};
    const Symbol artificial = makeSymbol({});
    const std::vector<Symbol> contradiction =
            simplex.insertByArtificial(std::move(row), artificial, marker);
    recycle(artificial);
    return ownersOf(contradiction);
}

// The last variable of the row that has no definition, and on request that no definition mentions.
ConstraintSolver::Private::Symbol ConstraintSolver::Private::newestFree(const LinearRow &row,
                                                                        bool isUnused) const
{
    Symbol newest = -1;
    for (const auto &entry : row.entries) {
        const Symbol symbol = entry.symbol;
        if (isVariable(symbol) && !definitions.isDefined(symbol)
            && !(isUnused && definitions.isUsed(symbol))
            && (newest < 0 || symbols[symbol].number > symbols[newest].number))
            newest = symbol;
    }
    return newest;
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
    const Record record = records[index];
    const Symbol marker = record.marker;
    const Symbol partner = record.partner;
    if (record.markerStrength.weight > 0.0)
        simplex.removeCost(marker, record.markerStrength.level, record.markerStrength.weight);
    if (partner >= 0)
        simplex.removeCost(partner, record.partnerStrength.level, record.partnerStrength.weight);

    // Without the constraint its marker may take any value.
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
        if (symbol < 0)
            continue;
        simplex.dropColumn(symbol);
        recycle(symbol);
    }
    recycleRecord(index);
    decidedPivots.reset();
    simplex.optimize();
}

// Another constant acts as if the marker had moved.
std::vector<ConstraintSolver::Constraint> ConstraintSolver::Private::shift(Symbol marker,
                                                                           double delta)
{
    simplex.shift(marker, delta);
    definitions.shift(marker, delta);
    return ownersOf(simplex.repair());
}

// Solutions

// Whether the best solutions are several: then one of the symbols that cost nothing can move.
bool ConstraintSolver::Private::isUndecided()
{
    if (decidedPivots == simplex.pivots())
        return false;
    const int count = int(symbols.size());
    for (Symbol symbol = 0; symbol < count; ++symbol) {
        if (isVariable(symbol) && !definitions.isDefined(symbol) && definitions.isUsed(symbol))
            return true;
    }
    const std::vector<char> isHeld = simplex.fixedOrCosting();
    LinearRow idle;
    for (Symbol symbol = 0; symbol < count; ++symbol) {
        const bool isMentioned =
                !simplex.tableau().rowsWith(symbol).empty() || definitions.isUsed(symbol);
        if (isMentioned && !isVariable(symbol) && !simplex.tableau().isBasic(symbol)
            && !isHeld[symbol])
            idle.entries.push_back({ symbol, -1.0 });
    }
    if (idle.entries.empty()) {
        decidedPivots = simplex.pivots();
        return false;
    }
    const bool isBounded = simplex.minimizeWithinOptimum(idle);
    return !isBounded || -idle.constant > smallestValue;
}

// Brings each variable as near to 0 as those before it and the objective leave it room for. For a
// copy only: what has been decided is frozen for good.
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
    simplex.fixCosts();
    for (const Symbol variable : variables) {
        const LinearRow value =
                definitions.expand({ { { variable, 1.0 } }, 0.0 }, simplex.tableau());
        const bool canMove =
                std::any_of(value.entries.begin(), value.entries.end(),
                            [&](const auto &entry) { return !simplex.isFixed(entry.symbol); });
        if (!canMove)
            continue;
        addTarget({ { { Variable { variable } } }, 0.0 }, { 0.0 }, { 0.0 });
        simplex.fixCosts();
    }
    evaluate();
}

} // namespace Pellarvine::detail
