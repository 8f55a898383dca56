// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// The constraints most often needed when one widget is placed inside another, for any QWidget:
///
///     NS::addAndPin(panel, list); // list fills panel
///     NS::addAndPin(card, note, 8); // note fills card but for 8 units around it
///     NS::addAndCenter(panel, spinner); // at its own size, in the middle
///     NS::addCenteredAndConstrainedToBounds(panel, picture, -16); // not beyond 16 units inside
///
/// Each `pin…` activates required constraints, with the receiver, the first argument, as their
/// first item. Nothing is returned and nothing replaced: calling twice constrains twice. Widgets
/// without a common ancestor, and contradicting constraints, are reported as `NS::LayoutConstraint`
/// says.
///
/// Each `add…` takes the subview's frame out of its own hands
/// (`setTranslatesAutoresizingMaskIntoConstraints` false), makes it a child of the receiver, and
/// calls the matching `pin…` on the receiver. A class that declares that one Q_INVOKABLE, under the
/// same name and with the same arguments, is asked instead of the function here.
///
/// Lengths are in device-independent pixels. No widget may be null. Main thread only.
namespace NS {

/// The receiver's edges are the view's: leading, trailing, top and bottom.
PELLARVINE_EXPORT void pinWidthAndHeight(QWidget *receiver, QWidget *view);

/// The view lies `border` inside the receiver on every side; outside, if negative.
PELLARVINE_EXPORT void pinWidthAndHeight(QWidget *receiver, QWidget *view, double border);

/// Their centres are one.
PELLARVINE_EXPORT void pinCenter(QWidget *receiver, QWidget *view);

/// Their centres are one, and the view does not reach beyond the receiver.
PELLARVINE_EXPORT void pinCenterAndConstrainInside(QWidget *receiver, QWidget *view);

/// The same, but the view may reach `border` beyond the receiver's edges, or, if negative, has to
/// stay that far inside. The sign is meant: it is the reverse of `pinWidthAndHeight`.
PELLARVINE_EXPORT void pinCenterAndConstrainInside(QWidget *receiver, QWidget *view, double border);

/// Adds the subview and calls `pinWidthAndHeight`.
PELLARVINE_EXPORT void addAndPin(QWidget *receiver, QWidget *subview);
/// Likewise with a border.
PELLARVINE_EXPORT void addAndPin(QWidget *receiver, QWidget *subview, double border);

/// Adds the subview and calls `pinCenter`.
PELLARVINE_EXPORT void addAndCenter(QWidget *receiver, QWidget *subview);

/// Adds the subview and calls `pinCenterAndConstrainInside`.
PELLARVINE_EXPORT void addCenteredAndConstrainedToBounds(QWidget *receiver, QWidget *subview);
/// Likewise with a border, whose sign is that of `pinCenterAndConstrainInside`.
PELLARVINE_EXPORT void addCenteredAndConstrainedToBounds(QWidget *receiver, QWidget *subview,
                                                         double border);

} // namespace NS
