// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>
#include <QRect>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {
class LayoutEngine;
}

namespace NS {

/// A rectangle for constraints that needs no widget, such as the room between two widgets:
///
///     auto *const gap = new NS::LayoutGuide(panel);
///     NS::LayoutConstraint::activateConstraints({
///             NS::leftAnchor(gap).constraintEqualToAnchor(NS::rightAnchor(list)),
///             NS::rightAnchor(gap).constraintEqualToAnchor(NS::leftAnchor(picture)),
///             NS::centerXAnchor(badge).constraintEqualToAnchor(NS::centerXAnchor(gap)),
///     });
///
/// It has the anchors of a widget, except for baselines, and counts as a child of its view. It asks
/// for no size: constraints have to give it one. Warnings name it "panel/gap" if its object name is
/// "gap", else "panel/LayoutGuide[1]". Main thread only.
class PELLARVINE_EXPORT LayoutGuide : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QRect frame READ frame NOTIFY frameChanged)

public:
    /// `owningView` may not be null. It owns the guide and stays its parent.
    explicit LayoutGuide(QWidget *owningView);
    /// Its constraints become inactive.
    ~LayoutGuide() override;

    /// The view given to the constructor.
    QWidget *owningView() const;

    /// The rectangle as of the last layout pass, in the Qt coordinates of the owning view: from the
    /// upper left, with y growing downwards. Rounded to whole units, as widgets are. Empty before
    /// the first pass with a constraint.
    QRect frame() const;

Q_SIGNALS:
    void frameChanged(const QRect &frame);

private:
    friend class Pellarvine::detail::LayoutEngine;
    void setFrame(const QRect &frame);

    struct Private;
    std::unique_ptr<Private> d;
};

/// The guide of the room that a Qt layout on the view would fill: the view without its
/// `contentsMargins` and without the margins that its style has for layouts. It follows both. The
/// first call makes it, with required constraints to the view, which owns it.
[[nodiscard]] PELLARVINE_EXPORT LayoutGuide *layoutMarginsGuide(QWidget *view);

} // namespace NS
