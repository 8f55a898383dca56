// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSLayoutConstraint.h>

/// @cond internal
namespace Pellarvine::detail {
/// Warns if the constant between two widths or heights lies between 0 and 1, like a multiplier.
PELLARVINE_EXPORT void warnOfFraction(const NS::LayoutConstraint &constraint);
} // namespace Pellarvine::detail
/// @endcond

namespace NS {

/// One edge, centre or dimension of a widget or a layout guide, from which constraints are made:
///
///     NS::LayoutConstraint::activateConstraints({
///         NS::leadingAnchor(label).constraintEqualToAnchor(NS::leadingAnchor(panel), 16),
///         NS::firstBaselineAnchor(label).constraintEqualToAnchor(NS::firstBaselineAnchor(field)),
///         NS::widthAnchor(label)
///                 .constraintEqualToAnchor(NS::widthAnchor(panel).multipliedBy(0.5))
///                 ->withPriority(NS::LayoutPriority::defaultHigh),
///     });
///
/// `a.constraintEqualToAnchor(b, c)` means a = b + c. Constants grow downwards and rightwards; with
/// leading and trailing, away from the leading side. The constraints are required, and inactive at
/// first. Anchors of different kinds, x and y or a place and a dimension, do not compile together.
/// An anchor is a value; its item must exist during each call. Main thread only.
template <typename Kind>
class LayoutAnchor
{
public:
    /// Shared by the program and, while it is active, the layout.
    using Constraint = std::shared_ptr<LayoutConstraint>;

    /// Use leftAnchor() and the other functions below instead.
    LayoutAnchor(ConstraintItem item, LayoutAttribute attribute)
        : m_item(item)
        , m_attribute(attribute)
    { }
    ConstraintItem item() const { return m_item; } ///< the widget or guide
    LayoutAttribute attribute() const { return m_attribute; } ///< its edge, centre or dimension

    /// This = `anchor` + `constant`.
    Constraint constraintEqualToAnchor(LayoutAnchor anchor, double constant = 0.0) const
    {
        return make(LayoutRelation::equal, anchor, constant);
    }
    /// This ≤ `anchor` + `constant`.
    Constraint constraintLessThanOrEqualToAnchor(LayoutAnchor anchor, double constant = 0.0) const
    {
        return make(LayoutRelation::lessThanOrEqual, anchor, constant);
    }
    /// This ≥ `anchor` + `constant`.
    Constraint constraintGreaterThanOrEqualToAnchor(LayoutAnchor anchor,
                                                    double constant = 0.0) const
    {
        return make(LayoutRelation::greaterThanOrEqual, anchor, constant);
    }

private:
    Constraint make(LayoutRelation relation, LayoutAnchor anchor, double constant) const
    {
        Constraint made = LayoutConstraint::make(m_item, m_attribute, relation, anchor.m_item,
                                                 anchor.m_attribute, 1.0, constant);
#ifndef QT_NO_DEBUG
        if (m_item != anchor.m_item)
            Pellarvine::detail::warnOfFraction(*made);
#endif
        return made;
    }
    ConstraintItem m_item;
    LayoutAttribute m_attribute;
};

/// A vertical edge or a horizontal centre.
using LayoutXAxisAnchor = LayoutAnchor<struct XAxis>;
/// A horizontal edge, a vertical centre or a baseline.
using LayoutYAxisAnchor = LayoutAnchor<struct YAxis>;

/// A width or a height. It can also be compared with a multiple of another, or with a number.
class PELLARVINE_EXPORT LayoutDimension : public LayoutAnchor<struct Dimension>
{
public:
    using LayoutAnchor::constraintEqualToAnchor;
    using LayoutAnchor::constraintGreaterThanOrEqualToAnchor;
    using LayoutAnchor::constraintLessThanOrEqualToAnchor;
    using LayoutAnchor::LayoutAnchor;

    /// A dimension times a number.
    struct Multiple
    {
        LayoutAnchor anchor; ///< the dimension
        double multiplier; ///< the number
    };
    /// For the second side of a constraint. A plain number after an anchor is the constant: debug
    /// builds warn of one between 0 and 1, unless the anchor is `multipliedBy(1)`.
    Multiple multipliedBy(double multiplier) const { return { *this, multiplier }; }

    /// This = `multiple` + `constant`.
    Constraint constraintEqualToAnchor(const Multiple &multiple, double constant = 0.0) const;
    /// This ≤ `multiple` + `constant`.
    Constraint constraintLessThanOrEqualToAnchor(const Multiple &multiple,
                                                 double constant = 0.0) const;
    /// This ≥ `multiple` + `constant`.
    Constraint constraintGreaterThanOrEqualToAnchor(const Multiple &multiple,
                                                    double constant = 0.0) const;

    Constraint constraintEqualToConstant(double constant) const; ///< in device-independent pixels
    Constraint constraintLessThanOrEqualToConstant(double constant) const; ///< this ≤ `constant`
    Constraint constraintGreaterThanOrEqualToConstant(double constant) const; ///< this ≥ `constant`
};

/// @name Anchors of a widget or a guide
/// Those of a widget refer to its aligned part, see `alignmentRectInsets`. Lengths are in
/// device-independent pixels.
/// @{
PELLARVINE_EXPORT LayoutXAxisAnchor leftAnchor(ConstraintItem item); ///< the left edge
PELLARVINE_EXPORT LayoutXAxisAnchor rightAnchor(ConstraintItem item); ///< the right edge
/// The left edge where text runs from left to right, else the right one.
PELLARVINE_EXPORT LayoutXAxisAnchor leadingAnchor(ConstraintItem item);
/// The edge opposite the leading one.
PELLARVINE_EXPORT LayoutXAxisAnchor trailingAnchor(ConstraintItem item);
PELLARVINE_EXPORT LayoutXAxisAnchor centerXAnchor(ConstraintItem item); ///< between left and right
PELLARVINE_EXPORT LayoutYAxisAnchor topAnchor(ConstraintItem item); ///< the upper edge
PELLARVINE_EXPORT LayoutYAxisAnchor bottomAnchor(ConstraintItem item); ///< the lower edge
PELLARVINE_EXPORT LayoutYAxisAnchor centerYAnchor(ConstraintItem item); ///< between top and bottom
/// The baseline of the first line of text. A widget's property `firstBaselineOffsetFromTop` sets
/// it. Other widgets count as one line: centred, aligned as a QLabel, or at a scroll area's top.
PELLARVINE_EXPORT LayoutYAxisAnchor firstBaselineAnchor(ConstraintItem item);
/// The baseline of the last line of text; the property is `lastBaselineOffsetFromBottom`.
PELLARVINE_EXPORT LayoutYAxisAnchor lastBaselineAnchor(ConstraintItem item);
PELLARVINE_EXPORT LayoutDimension widthAnchor(ConstraintItem item); ///< the width
PELLARVINE_EXPORT LayoutDimension heightAnchor(ConstraintItem item); ///< the height
/// @}

} // namespace NS
