// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <limits>
#include <map>
#include <optional>
#include <vector>

namespace Pellarvine::detail {

/// Solves systems of linear equalities and inequalities, some required and some merely wanted, and
/// re-solves them incrementally as they change: Cassowary, after Badros, Borning and Stuckey,
/// "The Cassowary Linear Arithmetic Constraint Solving Algorithm" (2001).
///
///     ConstraintSolver solver;
///     const auto left = solver.addVariable(), width = solver.addVariable();
///     solver.add({ { { left }, { width } }, -100 }, Relation::lessThanOrEqual); // left + width <= 100
///     solver.add({ { { width } }, -120 }, Relation::equal, { 250 }); // width = 120, if possible
///     solver.solve(); // solver.value(width) is 100
///
/// Three things differ from the paper:
/// - Strengths are compared level by level: no number of errors at a weaker level outweighs the
///   smallest one at a stronger level. Within a level, weighted errors are summed up.
/// - The answer is a function of the constraints alone, not of the order in which they came and
///   went: what they leave open is as near to 0 as it can be, for the variables in their order.
/// - A variable that one constraint determines is kept as that constraint says it, by the other
///   variables, and is multiplied out only when a further constraint needs it. So a chain of n
///   places costs n terms and not their square.
///
/// Copyable: a copy answers "what if" and leaves the original alone.
class PELLARVINE_INTERNAL_EXPORT ConstraintSolver
{
public:
    enum class Variable : int {
    };
    enum class Constraint : int {
    };
    enum class Relation {
        lessThanOrEqual,
        equal,
        greaterThanOrEqual,
    };

    struct Term
    {
        Variable variable;
        double coefficient = 1.0;
    };

    /// The sum of its terms and the constant. A variable may occur in it more than once.
    struct Expression
    {
        std::vector<Term> terms;
        double constant = 0.0;
    };

    /// How much a constraint is wanted: any finite level, higher ones first; the weight, above 0,
    /// counts within the level.
    struct Strength
    {
        double level;
        double weight = 1.0;
    };
    static const Strength required;

    /// What became of an added constraint: it is in, or `conflict` names the required constraints
    /// that it cannot hold together with, of which each is needed for the contradiction. It is
    /// empty if the constraint contradicts itself.
    struct Addition
    {
        std::optional<Constraint> constraint;
        std::vector<Constraint> conflict;
    };

    Variable addVariable();

    /// No constraint may mention it any more.
    void removeVariable(Variable variable);

    /// Adds "expression relation 0". Fails only for a required one; the solver is then as before.
    Addition add(const Expression &expression, Relation relation, Strength strength = required);

    /// Adds "expression = 0" that is wanted, with a strength of its own for either side: how
    /// strongly the expression is kept from falling below 0, and from rising above it.
    Constraint addTarget(const Expression &expression, Strength notBelow, Strength notAbove);

    void remove(Constraint constraint);

    /// Gives the constraint's expression another constant. Returns nothing, or the required
    /// constraints that contradict each other with that constant; the old one then stays.
    std::vector<Constraint> setConstant(Constraint constraint, double constant);
    double constant(Constraint constraint) const;

    /// Takes a snapshot of the solution, which `value` reads until the next one.
    void solve();
    double value(Variable variable) const;

private:
    using Symbol = int; // a variable, or one of a constraint's own, which are never negative

    enum class Kind {
        unused,
        variable,
        slack, // what an inequality leaves
        error, // by how much a wanted constraint is missed
        dummy, // marks a required equality; always 0
    };

    struct Entry
    {
        Symbol symbol;
        double coefficient;
    };

    // constant + the sum of the entries, which are in the order of their symbols
    struct Row
    {
        std::vector<Entry> entries;
        double constant = 0.0;
        Symbol basic = -1;
    };

    struct SymbolState
    {
        Kind kind = Kind::unused;
        int owner = -1; // the constraint it belongs to
        int row = -1; // the row of the tableau that gives its value, if it is basic
        std::vector<int> rows; // the rows of the tableau that mention it, in order
        std::vector<Symbol> users; // the variables whose definitions mention it
        std::optional<Row> definition; // of a variable
        double value = 0.0; // in the last snapshot
        int number = 0; // of a variable: its place in the order of all
    };

    struct Level
    {
        Row cost;
        int uses = 0;
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

    static double coefficientOf(const Row &row, Symbol symbol);
    static void scale(Row &row, double factor);
    static void erase(Row &row, Symbol symbol);
    static void addTo(Row &row, Symbol symbol, double coefficient);
    static void addTo(Row &row, const Row &other, double factor);

    Symbol makeSymbol(Kind kind, int owner);
    void recycle(Symbol symbol);
    int makeRecord(const Record &record);
    Row rowOf(const Expression &expression, double factor) const;

    std::vector<Symbol> dependencies(const std::vector<Symbol> &roots);
    Row expand(const Row &row);
    void define(Symbol variable, Row definition);
    void undefine(Symbol variable);
    void replaceInDefinition(Symbol user, Symbol symbol, Symbol partner, const Row &replacement);
    void eliminate(Symbol symbol, Symbol partner);

    int insertRow(Row row);
    void dropRow(int index);
    void dropColumn(Symbol symbol);
    void addToTableau(int index, const Row &other, double factor);
    void pivot(int index, Symbol entering);

    void addCost(Symbol symbol, Strength strength, double sign);
    bool hasCost(Symbol symbol) const;
    bool lowersCost(Symbol symbol) const;
    bool isCheaper(Symbol symbol, double coefficient, Symbol other, double otherCoefficient) const;

    std::vector<Constraint> addRow(Row row, Symbol marker);
    std::vector<Constraint> addArtificially(Row row, Symbol marker);
    int leavingRow(Symbol entering) const;
    Symbol enteringSymbol() const;
    void optimize();
    bool minimizePhase(bool withinOptimum);
    std::vector<Constraint> repair();
    std::vector<Constraint> ownersOf(const Row &row) const;
    void shift(const Record &record, double delta);

    bool isUndecided();
    void decide();
    void evaluate();

    std::vector<SymbolState> m_symbols;
    std::vector<Symbol> m_unusedSymbols;
    std::vector<Row> m_tableau;
    std::vector<int> m_unusedRows;
    std::vector<Record> m_records;
    std::vector<int> m_unusedRecords;
    std::map<double, Level, std::greater<>> m_levels;
    std::optional<Row> m_phase; // a passing objective: an artificial variable, or idle symbols
    std::vector<Symbol> m_order; // the defined variables, each after those it is defined by
    bool m_isOrderValid = false;
    bool m_isDecided = false; // known to have a single optimum whatever the constants are
    int m_nextNumber = 0;
    std::vector<double> m_sums; // expand()'s, all zero between its calls
    std::vector<char> m_marks; // likewise
};

inline constexpr ConstraintSolver::Strength ConstraintSolver::required {
    std::numeric_limits<double>::infinity(), 1.0
};

} // namespace Pellarvine::detail
