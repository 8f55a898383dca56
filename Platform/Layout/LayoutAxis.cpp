// SPDX-License-Identifier: MIT
#include "Layout/LayoutAxis.h"

#include "Base/Assign.h"
#include "Layout/LayoutLevel.h"

#include <cmath>

namespace Pellarvine::detail {

using Solver = ConstraintSolver;

LayoutAxis::LayoutAxis(Solver &solver, double weight)
    : m_weight(weight)
    , m_origin(solver.addVariable())
    , m_extent(solver.addVariable(true))
{ }

void LayoutAxis::setWeight(Solver &solver, double weight)
{
    if (!assign(m_weight, weight))
        return;
    for (const Limit &limit : { m_target, m_lower, m_upper }) {
        if (limit)
            solver.setWeight(*limit, weight);
    }
}

void LayoutAxis::setIntrinsicLength(Solver &solver, const IntrinsicLength &intrinsic)
{
    const Solver::Term extent { m_extent };
    const bool isSameTarget = m_target && m_intrinsic.notBelow == intrinsic.notBelow
                              && m_intrinsic.notAbove == intrinsic.notAbove;
    if (isSameTarget) {
        solver.setConstant(*m_target, -intrinsic.target);
    } else {
        if (m_target)
            solver.remove(*m_target);
        m_target = solver.addTarget({ { extent }, -intrinsic.target },
                                    { intrinsic.notBelow, m_weight },
                                    { intrinsic.notAbove, m_weight });
    }
    const auto setLimit = [&](Limit &limit, std::optional<double> length, Solver::Relation relation,
                              double level, bool isSameLevel) {
        if (limit && (!length || !isSameLevel)) {
            solver.remove(*limit);
            limit.reset();
        }
        if (limit)
            solver.setConstant(*limit, -*length);
        else if (length)
            limit = solver.add({ { extent }, -*length }, relation, { level, m_weight }).constraint;
    };
    setLimit(m_lower, intrinsic.lower, Solver::Relation::greaterThanOrEqual, intrinsic.lowerLevel,
             m_intrinsic.lowerLevel == intrinsic.lowerLevel);
    setLimit(m_upper, intrinsic.upper, Solver::Relation::lessThanOrEqual,
             LayoutLevel::explicitLimit, true);
    m_intrinsic = intrinsic;
}

bool LayoutAxis::setTarget(Solver &solver, double length) const
{
    const bool isOther = solver.constant(*m_target) != -length;
    solver.setConstant(*m_target, -length);
    return isOther;
}

void LayoutAxis::setPlace(Solver &solver, std::optional<double> origin)
{
    if (m_place && origin) {
        solver.setConstant(*m_place, -*origin);
    } else if (m_place) {
        solver.remove(*m_place);
        m_place.reset();
    } else if (origin) {
        m_place = solver.addTarget({ { { m_origin } }, -*origin }, { LayoutLevel::container },
                                   { LayoutLevel::container });
    }
}

// A difference of less than a unit is rounding.
bool LayoutAxis::isWhereGiven(const Solver &solver) const
{
    return std::abs(solver.value(m_origin) + solver.constant(*m_place)) < 1.0
           && std::abs(solver.value(m_extent) - target(solver)) < 1.0;
}

void LayoutAxis::removeFrom(Solver &solver)
{
    for (const Limit &limit : { m_target, m_lower, m_upper, m_place }) {
        if (limit)
            solver.remove(*limit);
    }
    solver.removeVariable(m_origin);
    solver.removeVariable(m_extent);
}

} // namespace Pellarvine::detail
