// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace Pellarvine::detail {

/// Solves systems of linear equalities and inequalities, some required and some merely wanted, and
/// re-solves them incrementally as they change: Cassowary, after Badros, Borning and Stuckey,
/// "The Cassowary Linear Arithmetic Constraint Solving Algorithm" (2001).
///
///     ConstraintSolver solver;
///     const auto left = solver.addVariable(), width = solver.addVariable();
///     // left + width <= 100
///     solver.add({ { { left }, { width } }, -100 }, Relation::lessThanOrEqual);
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
/// Rounding does not add up over a long life: the solver keeps each constraint as it was given,
/// sees how much rounding leaves of coefficients that cancel out, and computes the others again in
/// time.
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
        bool operator==(const Term &) const = default;
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

    ConstraintSolver();
    ConstraintSolver(const ConstraintSolver &other);
    ConstraintSolver &operator=(const ConstraintSolver &) = delete;
    ~ConstraintSolver();

    /// `isWanted` says that a constraint will want a value of the variable alone. The solver then
    /// works best if other constraints say what other variables are.
    Variable addVariable(bool isWanted = false);

    /// No constraint may mention it any more.
    void removeVariable(Variable variable);

    /// Gives all variables another order, in which they come near to 0. Default: as they were
    /// added.
    void setOrder(const std::vector<Variable> &variables);

    /// Adds "expression relation 0". Fails only for a required one; the solver is then as before.
    Addition add(const Expression &expression, Relation relation, Strength strength = required);

    /// Adds "expression = 0" that is wanted, with a strength of its own for either side: how
    /// strongly the expression is kept from falling below 0, and from rising above it.
    Constraint addTarget(const Expression &expression, Strength notBelow, Strength notAbove);

    void remove(Constraint constraint);

    /// Gives a wanted constraint another weight, for either side.
    void setWeight(Constraint constraint, double weight);
    /// Gives a wanted constraint another level, for either side.
    void setLevel(Constraint constraint, double level);

    /// Gives the constraint's expression another constant. Returns nothing, or the required
    /// constraints that contradict each other with that constant; the old one then stays.
    std::vector<Constraint> setConstant(Constraint constraint, double constant);
    double constant(Constraint constraint) const;

    /// Takes a snapshot of the solution, which `value` reads until the next one.
    void solve();
    double value(Variable variable) const;

    /// Whether the constraints that are wanted at a higher level than that, and the required ones,
    /// leave the variable a single value.
    bool isDetermined(Variable variable, double level) const;
    /// The constraints on which its value depends just now, or nearby.
    std::vector<Constraint> determining(Variable variable) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

inline constexpr ConstraintSolver::Strength ConstraintSolver::required {
    std::numeric_limits<double>::infinity(), 1.0
};

} // namespace Pellarvine::detail
