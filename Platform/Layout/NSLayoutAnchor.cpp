// SPDX-License-Identifier: MIT
#include "Layout/NSLayoutAnchor.h"

#include "Base/Failure.h"

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

void warnOfFraction(const NS::LayoutConstraint &constraint)
{
    const NS::LayoutAttribute attribute = constraint.firstAttribute();
    const double constant = constraint.constant();
    const bool isSize =
            attribute == NS::LayoutAttribute::width || attribute == NS::LayoutAttribute::height;
    if (!isSize || constant <= 0.0 || constant >= 1.0)
        return;
    const QString text = u"Warning: the constraint %1 adds %2 units. To multiply, write "
                         "multipliedBy(%2)"_s.arg(constraint.description())
                                 .arg(constant);
    printWarning(text.toStdString());
}

} // namespace Pellarvine::detail

namespace NS {

namespace {

using Constraint = LayoutDimension::Constraint;

Constraint makeFor(LayoutDimension dimension, LayoutRelation relation,
                   const LayoutDimension::Multiple &multiple, double constant)
{
    return LayoutConstraint::make(dimension.item(), dimension.attribute(), relation,
                                  multiple.anchor.item(), multiple.anchor.attribute(),
                                  multiple.multiplier, constant);
}

Constraint makeFor(LayoutDimension dimension, LayoutRelation relation, double constant)
{
    return LayoutConstraint::make(dimension.item(), dimension.attribute(), relation, nullptr,
                                  LayoutAttribute::notAnAttribute, 0.0, constant);
}

} // namespace

Constraint LayoutDimension::constraintEqualToAnchor(const Multiple &multiple, double constant) const
{
    return makeFor(*this, LayoutRelation::equal, multiple, constant);
}

Constraint LayoutDimension::constraintLessThanOrEqualToAnchor(const Multiple &multiple,
                                                              double constant) const
{
    return makeFor(*this, LayoutRelation::lessThanOrEqual, multiple, constant);
}

Constraint LayoutDimension::constraintGreaterThanOrEqualToAnchor(const Multiple &multiple,
                                                                 double constant) const
{
    return makeFor(*this, LayoutRelation::greaterThanOrEqual, multiple, constant);
}

Constraint LayoutDimension::constraintEqualToConstant(double constant) const
{
    return makeFor(*this, LayoutRelation::equal, constant);
}

Constraint LayoutDimension::constraintLessThanOrEqualToConstant(double constant) const
{
    return makeFor(*this, LayoutRelation::lessThanOrEqual, constant);
}

Constraint LayoutDimension::constraintGreaterThanOrEqualToConstant(double constant) const
{
    return makeFor(*this, LayoutRelation::greaterThanOrEqual, constant);
}

LayoutXAxisAnchor leftAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::left };
}

LayoutXAxisAnchor rightAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::right };
}

LayoutXAxisAnchor leadingAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::leading };
}

LayoutXAxisAnchor trailingAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::trailing };
}

LayoutXAxisAnchor centerXAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::centerX };
}

LayoutYAxisAnchor topAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::top };
}

LayoutYAxisAnchor bottomAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::bottom };
}

LayoutYAxisAnchor centerYAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::centerY };
}

LayoutYAxisAnchor firstBaselineAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::firstBaseline };
}

LayoutYAxisAnchor lastBaselineAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::lastBaseline };
}

LayoutDimension widthAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::width };
}

LayoutDimension heightAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::height };
}

} // namespace NS
