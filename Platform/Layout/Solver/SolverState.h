// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/Solver/ConstraintSolver.h"
#include "Layout/Solver/Simplex.h"
#include "Layout/Solver/VariableDefinitions.h"

namespace Pellarvine::detail {

/// The state of a solver: the original constraints, and the tableau and definitions computed from
/// them. Those are computed again when rounding errors have grown.
struct ConstraintSolver::Private
{
    using Symbol = LinearRow::Symbol;

    // A symbol is a variable, or belongs to a constraint and is never negative: the slack of an
    // inequality, the error of an optional constraint, or the marker of a required equality, which
    // is fixed.
    struct SymbolState
    {
        int number = -1; // the place of a variable in the order of variables
        bool isWanted = false; // whether an optional constraint concerns this variable alone
        int owner = -1; // the constraint of a symbol that is no variable
    };

    struct Record
    {
        Symbol marker = -1;
        Symbol partner = -1; // the second symbol, with the opposite coefficient
        double markerSign = 1.0;
        double factor = 1.0; // of the expression passed to add()
        double constant = 0.0; // of that expression
        LinearRow::Entries terms; // of that expression, times the factor
        bool isEquality = false; // whether it is a required equality
        bool isIn = false; // whether it has been added to the simplex or the definitions
        Strength markerStrength { 0.0, 0.0 };
        Strength partnerStrength { 0.0, 0.0 };
    };

    bool isVariable(Symbol symbol) const { return symbols[symbol].number >= 0; }

    Symbol makeSymbol(SymbolState state);
    void recycle(Symbol symbol);
    int makeRecord(const Record &record);
    void recycleRecord(int index);

    Constraint addTarget(const Expression &expression, Strength notBelow, Strength notAbove);
    std::vector<Constraint> addRow(int record);
    std::vector<Constraint> addReliably(int record);
    void addAnyhow(int record);
    bool define(LinearRow &row);
    Symbol expandLittle(LinearRow &row, bool canBeWanted);
    void addCosts(const Record &record);
    void removeCosts(const Record &record);
    template <typename Change>
    void changeStrengths(int record, Change change);
    static LinearRow::Entries termsOf(const Expression &expression, double factor);
    static LinearRow rowOf(const Record &record);
    Symbol newestFree(const LinearRow &row, bool isUnused, bool canBeWanted) const;
    std::vector<Constraint> ownersOf(const std::vector<Symbol> &contradiction) const;
    void remove(int record);
    void takeOut(int record);
    void findOptimum();
    std::vector<Constraint> setConstant(int record, double constant);

    bool isWorn() const;
    bool isMissed() const;
    bool isUnreliable();
    void renew();
    void startAgain();
    std::vector<char> forgetRows();
    void settle();

    void solve();
    bool isUndecided();
    void decide();
    bool isDetermined(Symbol variable, double level);
    void fixCosts();
    void evaluate() { definitions.evaluate(simplex.tableau(), values); }

    Simplex simplex;
    VariableDefinitions definitions;
    std::vector<SymbolState> symbols;
    std::vector<double> values; // by symbol, in the last solution
    std::vector<Symbol> unusedSymbols;
    std::vector<Record> records;
    std::vector<int> unusedRecords;
    int nextNumber = 0;
    // Simplex::pivots() of a basis that has a single optimum, for all constants.
    std::optional<unsigned long long> decidedPivots;
    int changes = 0; // since the last renew() or startAgain()
    int changesSinceStart = 0; // since the last startAgain()
    double freshRounding = 0.0; // the rounding error just after that
    // Simplex::pivots() and `changes` when a solution was last compared with the records.
    std::optional<unsigned long long> checkedPivots;
    int checkedChanges = 0;
};

template <typename Change>
void ConstraintSolver::Private::changeStrengths(int index, Change change)
{
    const Record old = records[index];
    for (Strength *const strength :
         { &records[index].markerStrength, &records[index].partnerStrength }) {
        if (strength->weight > 0.0)
            change(*strength);
    }
    addCosts(records[index]);
    removeCosts(old);
    decidedPivots.reset();
    simplex.optimize();
}

} // namespace Pellarvine::detail
