// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSLayoutConstraint.h>

/// @cond internal
namespace Pellarvine::detail {
/// Warns if a constant between two widths or heights looks like a multiplier: it lies between 0
/// and 1.
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
/// The receiver is the constraint's first item, the argument its second: first = second + constant.
/// Constants grow rightwards (for leading and trailing: away from the leading side) and downwards.
/// Anchors of different kinds do not mix: x with y, or a place with a dimension, does not compile.
/// A value; the widget must outlive the call.
template <typename Kind>
class LayoutAnchor
{
public:
    /// Made by the functions below. The kind has to be the attribute's; the widget is not owned.
    LayoutAnchor(ConstraintItem item, LayoutAttribute attribute)
        : m_item(item)
        , m_attribute(attribute)
    { }

    ConstraintItem item() const { return m_item; } ///< the widget or guide
    LayoutAttribute attribute() const { return m_attribute; } ///< what of the widget

    /// This = `anchor` + `constant`. Like all that are made here, required and not yet active.
    std::shared_ptr<LayoutConstraint> constraintEqualToAnchor(LayoutAnchor anchor,
                                                              double constant = 0.0) const
    {
        return make(LayoutRelation::equal, anchor, constant);
    }

    /// This ≤ `anchor` + `constant`.
    std::shared_ptr<LayoutConstraint> constraintLessThanOrEqualToAnchor(LayoutAnchor anchor,
                                                                        double constant = 0.0) const
    {
        return make(LayoutRelation::lessThanOrEqual, anchor, constant);
    }

    /// This ≥ `anchor` + `constant`.
    std::shared_ptr<LayoutConstraint>
    constraintGreaterThanOrEqualToAnchor(LayoutAnchor anchor, double constant = 0.0) const
    {
        return make(LayoutRelation::greaterThanOrEqual, anchor, constant);
    }

protected:
    /// This, `relation`, `anchor` + `constant`.
    std::shared_ptr<LayoutConstraint> make(LayoutRelation relation, LayoutAnchor anchor,
                                           double constant) const
    {
        std::shared_ptr<LayoutConstraint> made = make(relation, anchor, 1.0, constant);
#ifndef QT_NO_DEBUG
        if (m_item != anchor.m_item)
            detail::warnOfFraction(*made);
#endif
        return made;
    }

    /// This, `relation`, `multiplier` × `anchor` + `constant`.
    std::shared_ptr<LayoutConstraint> make(LayoutRelation relation, LayoutAnchor anchor,
                                           double multiplier, double constant) const
    {
        return LayoutConstraint::make(m_item, m_attribute, relation, anchor.m_item,
                                      anchor.m_attribute, multiplier, constant);
    }

    ConstraintItem m_item; ///< item()
    LayoutAttribute m_attribute; ///< attribute()
};

/// A vertical edge or a horizontal centre.
using LayoutXAxisAnchor = LayoutAnchor<struct XAxis>;
/// A horizontal edge, a vertical centre or a baseline.
using LayoutYAxisAnchor = LayoutAnchor<struct YAxis>;

class LayoutMultiple;

/// A width or a height: also by a multiple of another, or by a number alone.
class LayoutDimension : public LayoutAnchor<struct Dimension>
{
public:
    using LayoutAnchor::constraintEqualToAnchor;
    using LayoutAnchor::constraintGreaterThanOrEqualToAnchor;
    using LayoutAnchor::constraintLessThanOrEqualToAnchor;
    using LayoutAnchor::LayoutAnchor;

    /// For the second side of a constraint. A number alone behind an anchor is the constant: debug
    /// builds warn of one between 0 and 1. `multipliedBy(1)` says that it is meant.
    LayoutMultiple multipliedBy(double multiplier) const;

    /// This = `multiple` + `constant`.
    std::shared_ptr<LayoutConstraint> constraintEqualToAnchor(const LayoutMultiple &multiple,
                                                              double constant = 0.0) const;
    /// This ≤ `multiple` + `constant`.
    std::shared_ptr<LayoutConstraint>
    constraintLessThanOrEqualToAnchor(const LayoutMultiple &multiple, double constant = 0.0) const;
    /// This ≥ `multiple` + `constant`.
    std::shared_ptr<LayoutConstraint>
    constraintGreaterThanOrEqualToAnchor(const LayoutMultiple &multiple,
                                         double constant = 0.0) const;

    /// This = `multiplier` × `anchor` + `constant`.
    std::shared_ptr<LayoutConstraint>
    constraintEqualToAnchor(LayoutDimension anchor, double multiplier, double constant) const
    {
        return make(LayoutRelation::equal, anchor, multiplier, constant);
    }

    /// This ≤ `multiplier` × `anchor` + `constant`.
    std::shared_ptr<LayoutConstraint> constraintLessThanOrEqualToAnchor(LayoutDimension anchor,
                                                                        double multiplier,
                                                                        double constant) const
    {
        return make(LayoutRelation::lessThanOrEqual, anchor, multiplier, constant);
    }

    /// This ≥ `multiplier` × `anchor` + `constant`.
    std::shared_ptr<LayoutConstraint> constraintGreaterThanOrEqualToAnchor(LayoutDimension anchor,
                                                                           double multiplier,
                                                                           double constant) const
    {
        return make(LayoutRelation::greaterThanOrEqual, anchor, multiplier, constant);
    }

    /// This = `constant`, in device-independent pixels, without another widget.
    std::shared_ptr<LayoutConstraint> constraintEqualToConstant(double constant) const
    {
        return make(LayoutRelation::equal, none(), 0.0, constant);
    }

    /// This ≤ `constant`.
    std::shared_ptr<LayoutConstraint> constraintLessThanOrEqualToConstant(double constant) const
    {
        return make(LayoutRelation::lessThanOrEqual, none(), 0.0, constant);
    }

    /// This ≥ `constant`.
    std::shared_ptr<LayoutConstraint> constraintGreaterThanOrEqualToConstant(double constant) const
    {
        return make(LayoutRelation::greaterThanOrEqual, none(), 0.0, constant);
    }

private:
    static LayoutDimension none() { return { nullptr, LayoutAttribute::notAnAttribute }; }
};

/// A width or a height times a number, made by `LayoutDimension::multipliedBy`.
class LayoutMultiple
{
public:
    LayoutDimension anchor() const { return m_anchor; } ///< what is multiplied
    double multiplier() const { return m_multiplier; } ///< as it was given

private:
    friend class LayoutDimension;
    LayoutMultiple(LayoutDimension anchor, double multiplier)
        : m_anchor(anchor)
        , m_multiplier(multiplier)
    { }

    LayoutDimension m_anchor;
    double m_multiplier;
};

inline LayoutMultiple LayoutDimension::multipliedBy(double multiplier) const
{
    return { *this, multiplier };
}

inline std::shared_ptr<LayoutConstraint>
LayoutDimension::constraintEqualToAnchor(const LayoutMultiple &multiple, double constant) const
{
    return make(LayoutRelation::equal, multiple.anchor(), multiple.multiplier(), constant);
}

inline std::shared_ptr<LayoutConstraint>
LayoutDimension::constraintLessThanOrEqualToAnchor(const LayoutMultiple &multiple,
                                                   double constant) const
{
    return make(LayoutRelation::lessThanOrEqual, multiple.anchor(), multiple.multiplier(),
                constant);
}

inline std::shared_ptr<LayoutConstraint>
LayoutDimension::constraintGreaterThanOrEqualToAnchor(const LayoutMultiple &multiple,
                                                      double constant) const
{
    return make(LayoutRelation::greaterThanOrEqual, multiple.anchor(), multiple.multiplier(),
                constant);
}

/// @name Anchors of a widget
/// Of the part of the widget that is to be aligned, see `alignmentRectInsets`.
/// @{

/// The left edge, whichever way text runs.
inline LayoutXAxisAnchor leftAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::left };
}
/// The right edge, whichever way text runs.
inline LayoutXAxisAnchor rightAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::right };
}
/// The left edge where text runs from left to right, else the right one.
inline LayoutXAxisAnchor leadingAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::leading };
}
/// The edge opposite the leading one.
inline LayoutXAxisAnchor trailingAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::trailing };
}
/// Midway between left and right.
inline LayoutXAxisAnchor centerXAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::centerX };
}
/// The upper edge. From here constants grow downwards.
inline LayoutYAxisAnchor topAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::top };
}
/// The lower edge.
inline LayoutYAxisAnchor bottomAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::bottom };
}
/// Midway between top and bottom.
inline LayoutYAxisAnchor centerYAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::centerY };
}
/// The baseline of the first line of text. A widget may declare the property
/// `firstBaselineOffsetFromTop`; for others it is that of one line, centred as in Qt's controls, at
/// the top or bottom as a QLabel's alignment says, or at the top of what scrolls.
inline LayoutYAxisAnchor firstBaselineAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::firstBaseline };
}
/// Likewise of the last line: `lastBaselineOffsetFromBottom`.
inline LayoutYAxisAnchor lastBaselineAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::lastBaseline };
}
/// From left to right, in device-independent pixels.
inline LayoutDimension widthAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::width };
}
/// From top to bottom, in device-independent pixels.
inline LayoutDimension heightAnchor(ConstraintItem item)
{
    return { item, LayoutAttribute::height };
}
/// @}

} // namespace NS
