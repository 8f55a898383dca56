// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/Baseline.h"
#include "Layout/Solver/ConstraintSolver.h"

namespace Pellarvine::detail {

/// One direction of the rectangle that a widget's anchors are about.
struct AnchorAxis
{
    std::optional<ConstraintSolver::Variable> origin; ///< none: the host, which begins at 0
    ConstraintSolver::Variable extent {};
    double startInset = 0.0; ///< how far inside that begins and ends what is aligned
    double endInset = 0.0;
};

struct Anchor
{
    NS::LayoutAttribute attribute = NS::LayoutAttribute::notAnAttribute;
    AnchorAxis x;
    AnchorAxis y;
    Baseline baseline; ///< of a baseline attribute
};

/// "first - multiplier * second - constant", which a constraint compares with 0. Where the layout
/// of the view that holds both runs from right to left, `mirroring` is that view: leading and
/// trailing places, and the constant between them, count from its right.
PELLARVINE_INTERNAL_EXPORT ConstraintSolver::Expression
anchorExpression(const Anchor &first, double multiplier, const Anchor &second, double constant,
                 const std::optional<AnchorAxis> &mirroring);

} // namespace Pellarvine::detail
