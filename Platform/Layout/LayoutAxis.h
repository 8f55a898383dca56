// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/IntrinsicLength.h"
#include "Layout/Solver/ConstraintSolver.h"

namespace Pellarvine::detail {

/// One direction of a widget's aligned part in a solver: where it begins, how long it is, and what
/// is wanted of both.
class PELLARVINE_INTERNAL_EXPORT LayoutAxis
{
public:
    /// Of two axes that want the same at the same level, the one with the larger weight gets it.
    LayoutAxis(ConstraintSolver &solver, double weight);

    ConstraintSolver::Variable origin() const { return m_origin; }
    ConstraintSolver::Variable extent() const { return m_extent; }

    void setWeight(ConstraintSolver &solver, double weight);

    void setIntrinsicLength(ConstraintSolver &solver, const IntrinsicLength &intrinsic);

    /// Another target for the intrinsic that there is. Returns whether it is another one.
    bool setTarget(ConstraintSolver &solver, double length) const;
    double target(const ConstraintSolver &solver) const { return -solver.constant(*m_target); }

    /// Holds the axis to that place, or to none.
    void setPlace(ConstraintSolver &solver, std::optional<double> origin);

    /// Whether the last solution has the place that was set and the target.
    bool isWhereGiven(const ConstraintSolver &solver) const;

    /// No constraint of others may mention the axis any more.
    void removeFrom(ConstraintSolver &solver);

private:
    using Limit = std::optional<ConstraintSolver::Constraint>;

    double m_weight;
    ConstraintSolver::Variable m_origin;
    ConstraintSolver::Variable m_extent;
    IntrinsicLength m_intrinsic;
    Limit m_target;
    Limit m_lower;
    Limit m_upper;
    Limit m_place;
};

} // namespace Pellarvine::detail
