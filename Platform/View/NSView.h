// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSGeometry.h>

#include <QMarginsF>
#include <QPointF>
#include <QRectF>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// Functions of views that QWidget does not have. They work on any widget:
///
///     NS::addSubview(panel, badge);
///     NS::setFrame(badge, QRectF(8, 8, 24, 16)); // 8 pixels above the panel's lower edge
///     NS::setNeedsLayout(panel); // panel's performLayout() runs before it is next painted
///     NS::layoutSubtreeIfNeeded(panel); // or now
///
/// Rectangles are in device-independent pixels. Their origin is at the lower left, with y upwards.
/// No widget may be null. Main thread only.
namespace NS {

// Coordinates

/// The widget's rectangle in its parent. For a window, the origin is the lower left corner of the
/// primary screen, for all screens.
PELLARVINE_EXPORT QRectF frame(const QWidget *widget);

/// Moves and resizes the widget. Each edge is rounded to a whole number, because Qt's geometry is
/// in whole numbers; so frames that touch each other still do. Sizes below 0 count as 0. The
/// minimum and maximum size apply as in `QWidget::setGeometry`. If the widget has a `Q_INVOKABLE`
/// method `setFrame(QRectF)`, that is called instead; it calls this function to move the widget.
PELLARVINE_EXPORT void setFrame(QWidget *widget, const QRectF &frame);

/// The widget's rectangle in its own coordinates: origin (0, 0).
PELLARVINE_EXPORT QRectF bounds(const QWidget *widget);

/// The margins between the widget's frame and the part of it that layout aligns. They contain
/// decoration, such as a shadow. They are the widget's property `alignmentRectInsets` of type
/// QMarginsF or QMargins, or else depend on the style.
PELLARVINE_EXPORT QMarginsF alignmentRectInsets(const QWidget *widget);

// The tree

/// Makes `subview` a child of `parent`, in front of its siblings, and shows it unless the program
/// has hidden it. The parent owns it. A widget that is a child of `parent` already is not changed.
PELLARVINE_EXPORT void addSubview(QWidget *parent, QWidget *subview);

// Constraints

/// Whether constraints leave the widget's frame as it is. Other widgets can still be constrained to
/// it. Widgets that a Qt layout places are treated as if it were true. Default: false.
PELLARVINE_EXPORT bool translatesAutoresizingMaskIntoConstraints(const QWidget *widget);
PELLARVINE_EXPORT void setTranslatesAutoresizingMaskIntoConstraints(QWidget *widget,
                                                                    bool translates);

// The layout pass

/// Marks the widget for layout, or clears the mark. Before the next paint, the `performLayout()` of
/// each marked widget is called once, parents before children, which clears the mark. A class
/// declares that method as Q_INVOKABLE or as a slot; without it, nothing is called. After the first
/// call of this function, a change of the widget's size marks it too.
PELLARVINE_EXPORT void setNeedsLayout(QWidget *widget, bool needsLayout = true);
/// Whether the widget is marked. Default: false.
PELLARVINE_EXPORT bool needsLayout(const QWidget *widget);

/// Lays out the widget and its descendants now, visible or not: first Qt's layouts and constraints,
/// then the marked widgets.
PELLARVINE_EXPORT void layoutSubtreeIfNeeded(QWidget *widget);

} // namespace NS
