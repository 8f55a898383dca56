// SPDX-License-Identifier: MIT
#include "Layout/AnchorExpression.h"

using NS::LayoutAttribute;

namespace Pellarvine::detail {

namespace {

using Solver = ConstraintSolver;

bool followsDirection(LayoutAttribute attribute)
{
    return attribute == LayoutAttribute::leading || attribute == LayoutAttribute::trailing;
}

void addPlace(Solver::Expression &expression, const AnchorAxis &axis, double fraction,
              double factor)
{
    if (axis.origin)
        expression.terms.push_back({ *axis.origin, factor });
    expression.constant +=
            factor * (axis.startInset - fraction * (axis.startInset + axis.endInset));
    if (fraction != 0.0)
        expression.terms.push_back({ axis.extent, factor * fraction });
}

void addExtent(Solver::Expression &expression, const AnchorAxis &axis, double factor)
{
    expression.terms.push_back({ axis.extent, factor });
    expression.constant -= factor * (axis.startInset + axis.endInset);
}

void addAnchor(Solver::Expression &expression, const Anchor &anchor, double factor,
               const std::optional<AnchorAxis> &mirroring)
{
    const bool isMirrored = mirroring.has_value();
    const auto addX = [&](double fraction) {
        if (isMirrored && mirroring->origin)
            expression.terms.push_back({ *mirroring->origin, factor });
        if (isMirrored)
            expression.terms.push_back({ mirroring->extent, factor });
        addPlace(expression, anchor.x, fraction, isMirrored ? -factor : factor);
    };
    const auto addY = [&](double fraction) {
        addPlace(expression, anchor.y, fraction, factor);
    };
    switch (anchor.attribute) {
    case LayoutAttribute::notAnAttribute:
        return;
    case LayoutAttribute::left:
        return addX(0.0);
    case LayoutAttribute::right:
        return addX(1.0);
    case LayoutAttribute::leading:
        return addX(isMirrored ? 1.0 : 0.0);
    case LayoutAttribute::trailing:
        return addX(isMirrored ? 0.0 : 1.0);
    case LayoutAttribute::centerX:
        return addX(0.5);
    case LayoutAttribute::top:
        return addY(0.0);
    case LayoutAttribute::bottom:
        return addY(1.0);
    case LayoutAttribute::centerY:
        return addY(0.5);
    case LayoutAttribute::firstBaseline:
    case LayoutAttribute::lastBaseline:
        addY(anchor.baseline.fraction);
        expression.constant += factor * anchor.baseline.offset;
        return;
    case LayoutAttribute::width:
        return addExtent(expression, anchor.x, factor);
    case LayoutAttribute::height:
        return addExtent(expression, anchor.y, factor);
    }
}

} // namespace

Solver::Expression anchorExpression(const Anchor &first, double multiplier, const Anchor &second,
                                    double constant, const std::optional<AnchorAxis> &mirroring)
{
    const auto axis = followsDirection(first.attribute) || followsDirection(second.attribute)
                              ? mirroring
                              : std::nullopt;
    Solver::Expression expression { {}, -constant };
    addAnchor(expression, first, 1.0, axis);
    addAnchor(expression, second, -multiplier, axis);
    return expression;
}

} // namespace Pellarvine::detail
