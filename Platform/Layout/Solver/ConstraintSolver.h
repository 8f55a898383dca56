// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QVarLengthArray>

#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace Pellarvine::detail {

/// Solves systems of required and optional linear equalities and inequalities, and re-solves them
/// incrementally as they change: Cassowary, after Badros, Borning and Stuckey,
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
///   smallest one at a stronger level. Within a level, the sum of the weighted errors counts.
/// - The solution is a function of the constraints alone, not of the order in which they were added
///   and removed. Variables that they do not determine are as near to 0 as possible, one after the
///   other in their order.
/// - A variable that one constraint determines is stored as that constraint defines it, by other
///   variables. It is expanded only when a further constraint needs that. So a chain of n places
///   has n terms and not the square of n.
///
/// Rounding errors do not accumulate: the solver keeps the original constraints, measures the
/// rounding errors of coefficients that cancel out, and recomputes everything from the constraints
/// before the errors matter.
///
/// Copyable. Changes of a copy do not affect the original.
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
        QVarLengthArray<Term, 4> terms;
        double constant = 0.0;
    };

    /// The strength of an optional constraint. The level is any finite number, and higher ones go
    /// first. The weight is positive and counts within the level.
    struct Strength
    {
        double level;
        double weight = 1.0;
    };
    static const Strength required;

    /// The result of add(): the constraint, or none and the required constraints that contradict
    /// it. Each of these is needed for the contradiction. The list is empty if the constraint
    /// contradicts itself.
    struct Addition
    {
        std::optional<Constraint> constraint;
        std::vector<Constraint> conflict;
    };

    ConstraintSolver();
    ConstraintSolver(const ConstraintSolver &other);
    ConstraintSolver &operator=(const ConstraintSolver &) = delete;
    ~ConstraintSolver();

    /// `isWanted` announces an optional constraint on the variable alone, such as a preferred
    /// length. The solver then defines other variables first, which is faster.
    Variable addVariable(bool isWanted = false);

    /// No constraint may mention the variable.
    void removeVariable(Variable variable);

    /// Changes the order of all variables, see above. Default: the order of addVariable().
    void setOrder(const std::vector<Variable> &variables);

    /// Adds "expression relation 0". Only a required constraint can fail; the solver is then
    /// unchanged.
    Addition add(const Expression &expression, Relation relation, Strength strength = required);

    /// Adds the optional constraint "expression = 0", with one strength against values below 0 and
    /// another one against values above 0.
    Constraint addTarget(const Expression &expression, Strength notBelow, Strength notAbove);

    void remove(Constraint constraint);

    /// Changes the weight of an optional constraint, for both sides.
    void setWeight(Constraint constraint, double weight);
    /// Changes the level of an optional constraint, for both sides.
    void setLevel(Constraint constraint, double level);

    /// Changes the constant in the expression of the constraint. Returns an empty list, or the
    /// required constraints that contradict each other with that constant. The old one then stays.
    std::vector<Constraint> setConstant(Constraint constraint, double constant);
    double constant(Constraint constraint) const;

    /// Computes the solution that value() returns until the next call.
    void solve();
    double value(Variable variable) const;

    /// Whether the required constraints, and the optional ones above that level, determine the
    /// value of the variable.
    bool isDetermined(Variable variable, double level) const;
    /// The constraints that determine the current value of the variable.
    std::vector<Constraint> determining(Variable variable) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

inline constexpr ConstraintSolver::Strength ConstraintSolver::required {
    std::numeric_limits<double>::infinity(), 1.0
};

} // namespace Pellarvine::detail
