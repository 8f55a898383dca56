// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSConstraintItem.h>

#include <QList>
#include <QObject>

#include <memory>

namespace NS {

/// The edge, centre, dimension or baseline of an item in a constraint. For a widget, of its aligned
/// part: see `alignmentRectInsets`. Places grow downwards and rightwards; leading and trailing,
/// away from the leading side.
enum class LayoutAttribute {
    notAnAttribute, ///< the second attribute of a constraint with a constant alone
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

/// How the first side of a constraint compares with the second, which includes the constant.
enum class LayoutRelation {
    lessThanOrEqual, ///< the first is at most the second
    equal, ///< both are equal
    greaterThanOrEqual, ///< the first is at least the second
};

/// Priorities are from 1 to 1000. A required constraint holds, or a warning reports it. Any other
/// constraint prevails over any number of constraints with lower priorities.
namespace LayoutPriority {
inline constexpr double required = 1000.0; ///< without exception
inline constexpr double defaultHigh = 750.0; ///< a widget is not smaller than its size hint
inline constexpr double defaultLow = 250.0; ///< a widget is not larger than its size hint
inline constexpr double fittingSizeCompression = 50.0; ///< a container's preferred size is small
} // namespace LayoutPriority

/// A linear relation between edges, centres or dimensions of two widgets, or of layout guides:
///
///     const auto gap = NS::topAnchor(field).constraintEqualToAnchor(NS::bottomAnchor(label), 8);
///     gap->setActive(true);
///     gap->setConstant(16); // the next layout pass moves the field
///
/// The layout of the items' nearest common ancestor keeps an active constraint, so the caller need
/// not. The constraint becomes inactive when an item is destroyed or leaves that ancestor. Only
/// widgets with constraints are moved; a hidden one keeps its place. If two required constraints
/// contradict each other, a warning names them, and the last one stays inactive. For a single item,
/// sizes, Qt's layouts and other warnings, see docs/layout.md. Main thread only.
class PELLARVINE_EXPORT LayoutConstraint : public QObject,
                                           public std::enable_shared_from_this<LayoutConstraint>
{
    Q_OBJECT
    Q_PROPERTY(double constant READ constant WRITE setConstant NOTIFY constantChanged USER true)
    Q_PROPERTY(double priority READ priority WRITE setPriority NOTIFY priorityChanged)
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)

public:
    /// "first.attribute relation multiplier * second.attribute + constant", not yet active. For a
    /// constant alone, `second` is null and its attribute `notAnAttribute`. The anchors of
    /// <pellarvine/Platform/NSLayoutAnchor.h> are shorter to write. Warns of an invalid constraint,
    /// which never becomes active: between a horizontal and a vertical attribute, a size and a
    /// place, with the baseline of a guide, or with a number that is not finite.
    static std::shared_ptr<LayoutConstraint> make(ConstraintItem first,
                                                  LayoutAttribute firstAttribute,
                                                  LayoutRelation relation, ConstraintItem second,
                                                  LayoutAttribute secondAttribute,
                                                  double multiplier, double constant);
    ~LayoutConstraint() override;

    ConstraintItem firstItem() const; ///< null after it is destroyed
    ConstraintItem secondItem() const; ///< null after it is destroyed, or if there is none
    LayoutAttribute firstAttribute() const; ///< the edge, centre, dimension or baseline
    LayoutAttribute secondAttribute() const; ///< `notAnAttribute` for a constant alone
    LayoutRelation relation() const; ///< between the two sides
    double multiplier() const; ///< of the second attribute

    /// In device-independent pixels, added to the second side. If a new value makes an active
    /// required constraint contradict others, it becomes inactive, with a warning. A value that is
    /// not finite is refused with a warning.
    double constant() const;
    void setConstant(double constant);

    /// Default: `LayoutPriority::required`. Clamped to 1 to 1000. A value that is not finite is
    /// refused with a warning.
    double priority() const;
    void setPriority(double priority);
    /// Sets the priority and returns this constraint, for use in an initializer list.
    std::shared_ptr<LayoutConstraint> withPriority(double priority);

    /// Default: false. Becomes false again if the layout drops the constraint. The setter activates
    /// or deactivates this constraint as the functions below do.
    bool isActive() const;
    void setActive(bool isActive);

    /// "title.leading == panel.leading + 8", with the widgets' object names. "form/QLabel[2]" is a
    /// label without a name, the second one of the form. The constraint's own object name stands in
    /// front, in brackets.
    QString description() const;

    /// Activates all, in order. If the items of one have no common ancestor, warns once and
    /// activates none. Skips those that `make` has refused.
    static void activateConstraints(const QList<std::shared_ptr<LayoutConstraint>> &constraints);
    /// Skips those that are not active. The layout releases its references, so that constraints are
    /// deleted unless the program keeps them.
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
