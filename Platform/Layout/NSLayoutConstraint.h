// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSConstraintItem.h>

#include <QList>
#include <QObject>

#include <memory>

namespace NS {

/// What of a widget a constraint is about: of the part that is to be aligned, see
/// `alignmentRectInsets`. Places grow downwards and rightwards, or, for leading and trailing, away
/// from the leading side.
enum class LayoutAttribute {
    notAnAttribute, ///< the second one of a constraint with the constant alone
    left, ///< the left edge, whichever way text runs
    right, ///< the right edge, whichever way text runs
    top, ///< the upper edge
    bottom, ///< the lower edge
    leading, ///< the left edge where text runs from left to right, else the right one
    trailing, ///< the edge opposite the leading one
    width, ///< in device-independent pixels
    height, ///< in device-independent pixels
    centerX, ///< midway between left and right
    centerY, ///< midway between top and bottom
    firstBaseline, ///< of the first line of text, see `firstBaselineAnchor`
    lastBaseline, ///< of the last line of text, see `lastBaselineAnchor`
};

/// How a constraint's first side stands to its second, of which the constant is part.
enum class LayoutRelation {
    lessThanOrEqual, ///< the first is at most the second
    equal, ///< neither is larger
    greaterThanOrEqual, ///< the first is at least the second
};

/// Priorities run from 1 to 1000. One required holds or is reported; of the others a higher one
/// goes first, whatever the number of lower ones.
namespace LayoutPriority {
inline constexpr double required = 1000.0; ///< without exception
inline constexpr double defaultHigh =
        750.0; ///< at which widgets resist being smaller than they ask
inline constexpr double defaultLow = 250.0; ///< at which they resist being larger
inline constexpr double fittingSizeCompression = 50.0; ///< at which a container is kept small
} // namespace LayoutPriority

/// A linear relation between edges, centres or dimensions of two widgets, or of layout guides:
///
///     const auto gap = NS::topAnchor(field).constraintEqualToAnchor(NS::bottomAnchor(label), 8);
///     gap->setActive(true);
///     gap->setConstant(16); // re-solves what depends on it
///
/// Leading and trailing follow the layout direction of the nearest common ancestor of the two
/// widgets. An active constraint is kept by the layout of that ancestor, or, with one widget, of
/// its parent (its own where a Qt layout places it); the caller need not keep it. It ends, becoming
/// inactive, with either widget, and when either leaves that ancestor.
/// That ancestor gets a QLayout that reports its minimum, preferred and maximum size upwards (see
/// `QLayout::setSizeConstraint`); if it has a layout of another kind, constraints work beside that
/// but report nothing.
///
/// Widgets keep near their size hints: see QSizePolicy for which side gives way first. Only what is
/// constrained is moved. A hidden widget keeps its place and its constraints, unlike in Qt's
/// layouts: others may hang on it. To close the gap, deactivate them or set a constant to 0. Two
/// required constraints that contradict each other: one warning line names them, and the last one
/// stays inactive. Main thread only.
class PELLARVINE_EXPORT LayoutConstraint : public QObject,
                                           public std::enable_shared_from_this<LayoutConstraint>
{
    Q_OBJECT
    Q_PROPERTY(double constant READ constant WRITE setConstant NOTIFY constantChanged USER true)
    Q_PROPERTY(double priority READ priority WRITE setPriority NOTIFY priorityChanged)
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)

public:
    /// "first.attribute relation multiplier * second.attribute + constant". `second` is null and
    /// its attribute `notAnAttribute` for a constraint with the constant alone. Not yet active. The
    /// anchors of <pellarvine/Platform/NSLayoutAnchor.h> make these with less to write. Warns of a
    /// constraint that cannot be, which then never becomes active: between a horizontal and a
    /// vertical attribute, a size and a place, or with a number that is not finite.
    static std::shared_ptr<LayoutConstraint> make(ConstraintItem first,
                                                  LayoutAttribute firstAttribute,
                                                  LayoutRelation relation, ConstraintItem second,
                                                  LayoutAttribute secondAttribute,
                                                  double multiplier, double constant);
    ~LayoutConstraint() override;

    ConstraintItem firstItem() const; ///< null once it is gone
    ConstraintItem secondItem() const; ///< null once it is gone, or if there is none
    LayoutAttribute firstAttribute() const; ///< as it was given
    LayoutAttribute secondAttribute() const; ///< `notAnAttribute` if there is the constant alone
    LayoutRelation relation() const; ///< as it was given
    double multiplier() const; ///< of the second attribute, as it was given

    /// In device-independent pixels, added to the second side. A required constraint that is active
    /// and contradicts others by a new value becomes inactive, with a warning. A value that is not
    /// finite is refused with a warning.
    double constant() const;
    void setConstant(double constant);

    /// Default: `LayoutPriority::required`. Held to 1...1000. A value that is not finite is refused
    /// with a warning.
    double priority() const;
    void setPriority(double priority);
    /// Sets the priority and returns this constraint, to be used where one is made.
    std::shared_ptr<LayoutConstraint> withPriority(double priority);

    /// Default: false. Becomes false again if the layout drops the constraint. Setting it activates
    /// or deactivates this constraint alone, as the functions below do.
    bool isActive() const;
    void setActive(bool isActive);

    /// "title.leading == panel.leading + 8", with the widgets' object names, or else their classes
    /// and places in their parents ("form/QLabel[2]" is the second label of the form), and in
    /// front, in brackets, the constraint's own object name if it has one.
    QString description() const;

    /// Activates all, in order. If the widgets of any have no common ancestor, warns once and
    /// activates none. Passes over those that `make` has refused.
    static void activateConstraints(const QList<std::shared_ptr<LayoutConstraint>> &constraints);
    /// Passes over those that are not active. The layout keeps them no longer: they end where
    /// nobody else does.
    static void deactivateConstraints(const QList<std::shared_ptr<LayoutConstraint>> &constraints);

Q_SIGNALS:
    void constantChanged(double constant);
    void priorityChanged(double priority);
    void activeChanged(bool isActive);

private:
    friend class detail::LayoutEngine;
    LayoutConstraint();
    void setEngine(detail::LayoutEngine *engine);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
