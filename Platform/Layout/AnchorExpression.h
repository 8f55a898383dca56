// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/Baseline.h"
#include "Layout/Solver/ConstraintSolver.h"

namespace Pellarvine::detail {

/// One direction of the rectangle of an item that its anchors refer to.
struct AnchorAxis
{
    std::optional<ConstraintSolver::Variable> origin; ///< none for the host, which starts at 0
    ConstraintSolver::Variable extent {};
    double startInset = 0.0; ///< from the start of the widget to that of its aligned part
    double endInset = 0.0;
};

struct Anchor
{
    NS::LayoutAttribute attribute = NS::LayoutAttribute::notAnAttribute;
    AnchorAxis x;
    AnchorAxis y;
    Baseline baseline; ///< for a baseline attribute
};

/// "first - multiplier * second - constant", which a constraint compares with 0. `mirroring` is the
/// nearest common ancestor if its layout direction is from right to left: leading and trailing
/// places, and the constant between them, then count from its right edge.
PELLARVINE_INTERNAL_EXPORT ConstraintSolver::Expression
anchorExpression(const Anchor &first, double multiplier, const Anchor &second, double constant,
                 const std::optional<AnchorAxis> &mirroring);

} // namespace Pellarvine::detail
