// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QList>
#include <QObject>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine {
class LayoutEngine;
}

namespace NS {

enum class LayoutAttribute {
    notAnAttribute,
    left,
    right,
    top,
    bottom,
    leading,
    trailing,
    width,
    height,
    centerX,
    centerY,
    firstBaseline,
    lastBaseline,
};

enum class LayoutRelation {
    lessThanOrEqual,
    equal,
    greaterThanOrEqual,
};

/// Priorities run from 1 to 1000. One required holds or is reported; of the others a higher one
/// goes first, whatever the number of lower ones.
namespace LayoutPriority {
inline constexpr double required = 1000.0;
inline constexpr double defaultHigh =
        750.0; ///< at which widgets resist being smaller than they ask
inline constexpr double defaultLow = 250.0; ///< at which they resist being larger
inline constexpr double fittingSizeCompression = 50.0; ///< at which a container is kept small
} // namespace LayoutPriority

/// A linear relation between two widgets' edges, centres or dimensions:
///
///     const auto gap = NS::leadingAnchor(field).constraintEqualToAnchor(NS::trailingAnchor(label), 8);
///     gap->setActive(true);
///     gap->setConstant(16); // re-solves what depends on it
///
/// An active constraint is kept by the layout of the nearest common ancestor of its two widgets,
/// or, with one widget, of its parent (its own where a Qt layout places it); the caller need not
/// keep it. It ends, becoming inactive, with either widget, and when either leaves that ancestor.
/// That ancestor gets a QLayout that reports its minimum, preferred and maximum size upwards (see
/// `QLayout::setSizeConstraint`); if it has a layout of another kind, constraints work beside that
/// but report nothing.
///
/// Widgets keep near their size hints: see QSizePolicy for which side gives way first. Only what is
/// constrained is moved. A hidden widget keeps its place and its constraints, unlike in Qt's
/// layouts: others may hang on it. To close the gap, deactivate them or set a constant to 0. Two required constraints that contradict each other: one warning line
/// names them, and the last one stays inactive. Main thread only.
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
    /// anchors of <pellarvine/Platform/NSLayoutAnchor.h> make these with less to write.
    static std::shared_ptr<LayoutConstraint> make(QWidget *first, LayoutAttribute firstAttribute,
                                                  LayoutRelation relation, QWidget *second,
                                                  LayoutAttribute secondAttribute,
                                                  double multiplier, double constant);
    ~LayoutConstraint() override;

    QWidget *firstItem() const; ///< null once it is gone
    QWidget *secondItem() const; ///< null once it is gone, or if there is none
    LayoutAttribute firstAttribute() const;
    LayoutAttribute secondAttribute() const;
    LayoutRelation relation() const;
    double multiplier() const;

    double constant() const;
    void setConstant(double constant);

    /// `LayoutPriority::required` unless set. Held to 1...1000.
    double priority() const;
    void setPriority(double priority);

    bool isActive() const;
    void setActive(bool isActive);

    /// "title.leading == panel.leading + 8", with the widgets' object names, or else their classes,
    /// and in front, in brackets, the constraint's own object name if it has one.
    QString description() const;

    /// Activates all, in order. If the widgets of any have no common ancestor, warns once and
    /// activates none.
    static void activateConstraints(const QList<std::shared_ptr<LayoutConstraint>> &constraints);
    static void deactivateConstraints(const QList<std::shared_ptr<LayoutConstraint>> &constraints);

Q_SIGNALS:
    void constantChanged(double constant);
    void priorityChanged(double priority);
    void activeChanged(bool isActive);

private:
    friend class Pellarvine::LayoutEngine;
    LayoutConstraint();
    void setEngine(Pellarvine::LayoutEngine *engine);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
