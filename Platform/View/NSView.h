// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSGeometry.h>

#include <QMarginsF>
#include <QPointF>
#include <QRectF>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// What a view can do and a QWidget cannot, as functions on any widget:
///
///     NS::addSubview(panel, badge);
///     NS::setFrame(badge, QRectF(8, 8, 24, 16)); // 8 units above the panel's lower edge
///     NS::setNeedsLayout(panel); // panel's performLayout() runs before it is next painted
///     NS::layoutSubtreeIfNeeded(panel); // or now
///
/// Rectangles and points are in device-independent pixels with the origin at
/// the lower left and y growing upwards. No widget may be null. Main thread only.
namespace NS {

// Coordinates

/// The widget's rectangle in its parent; a window's from the primary screen's lower left corner, in
/// one space for all screens.
PELLARVINE_EXPORT QRectF frame(const QWidget *widget);

/// Moves and resizes the widget. Qt places widgets on whole units: each edge goes to the nearest
/// one, so that frames that touch still do. Sizes below 0 count as 0, and the widget's own minimum
/// and maximum hold as in `QWidget::setGeometry`. A widget that declares an invokable method
/// `setFrame(QRectF)` has that called instead, which calls this function for the frame itself.
PELLARVINE_EXPORT void setFrame(QWidget *widget, const QRectF &frame);

/// The widget's rectangle in its own coordinates: origin (0, 0).
PELLARVINE_EXPORT QRectF bounds(const QWidget *widget);

/// How far the part of the widget that is to be aligned lies inside its frame. What lies outside is
/// decoration that the style keeps free, such as a shadow. A widget that declares a property
/// `alignmentRectInsets` of type QMarginsF or QMargins is asked, for others the style is.
PELLARVINE_EXPORT QMarginsF alignmentRectInsets(const QWidget *widget);

// The tree

/// Makes `subview` a child of `parent`, above its siblings, and shows it with its parent unless it
/// was hidden by a call. The parent owns it from then on. A child already stays where it is.
PELLARVINE_EXPORT void addSubview(QWidget *parent, QWidget *subview);

// Constraints

/// Whether the widget's frame is taken as it is, whatever the constraints would make of it: they
/// can then place others by it. Default: false. Widgets that a Qt layout of another kind places are
/// treated as if it were true.
PELLARVINE_EXPORT bool translatesAutoresizingMaskIntoConstraints(const QWidget *widget);
PELLARVINE_EXPORT void setTranslatesAutoresizingMaskIntoConstraints(QWidget *widget,
                                                                    bool translates);

// The layout pass

/// Marks the widget, or unmarks it. A marked widget's `performLayout()`, which its class declares
/// Q_INVOKABLE or as a slot, runs once before the next paint, parents before children, and clears
/// the mark. From the first call on, a change of the widget's size marks it too. A class without
/// `performLayout()` can be marked; nothing is run for it.
PELLARVINE_EXPORT void setNeedsLayout(QWidget *widget, bool needsLayout = true);
/// Whether the widget is marked: false for one that nobody has marked yet.
PELLARVINE_EXPORT bool needsLayout(const QWidget *widget);

/// Runs the pass now, visible or not: for the widget and all below it, the Qt layouts and
/// constraints first, then what is marked.
PELLARVINE_EXPORT void layoutSubtreeIfNeeded(QWidget *widget);

} // namespace NS
