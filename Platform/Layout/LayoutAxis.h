// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/IntrinsicLength.h"
#include "Layout/Solver/ConstraintSolver.h"

namespace Pellarvine::detail {

/// One direction of an item in a solver: the variables for the start and the length of its aligned
/// part, and the constraints of its own.
class PELLARVINE_INTERNAL_EXPORT LayoutAxis
{
public:
    /// Of two axes that compete at the same level, the one with the larger weight keeps its length.
    LayoutAxis(ConstraintSolver &solver, double weight);

    ConstraintSolver::Variable origin() const { return m_origin; }
    ConstraintSolver::Variable extent() const { return m_extent; }

    void setWeight(ConstraintSolver &solver, double weight);

    void setIntrinsicLength(ConstraintSolver &solver, const IntrinsicLength &intrinsic);

    /// Changes the target of the intrinsic length. Returns whether it was another one.
    bool setTarget(ConstraintSolver &solver, double length) const;
    double target(const ConstraintSolver &solver) const { return -solver.constant(*m_target); }

    /// Fixes the start, or makes it free again.
    void setPlace(ConstraintSolver &solver, std::optional<double> origin);

    /// Whether the last solution has the start that was set and the target.
    bool isWhereGiven(const ConstraintSolver &solver) const;

    /// No other constraint may mention the axis any more.
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
