// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// The constraints most often needed when one widget is placed inside another, for any QWidget:
///
///     NS::addAndPin(panel, list); // list fills panel
///     NS::addAndPin(card, note, 8); // note fills card, except for 8 units on each side
///     NS::addAndCenter(panel, spinner); // at its own size, in the middle
///     NS::addCenteredAndConstrainedToBounds(panel, picture, -16); // not beyond 16 units inside
///
/// Each `pin…` activates required constraints. Their first item is the receiver, which is the first
/// argument. Earlier constraints stay: two calls make two sets. Widgets without a common ancestor
/// and contradicting constraints give the warnings of `NS::LayoutConstraint`.
///
/// Each `add…` calls `setTranslatesAutoresizingMaskIntoConstraints(subview, false)`, makes the
/// subview a child of the receiver, and calls the matching `pin…`. If the class of the receiver has
/// a Q_INVOKABLE method with the name and the arguments of that `pin…`, the method is called
/// instead.
///
/// Lengths are in device-independent pixels. No widget may be null. Main thread only.
namespace NS {

/// Aligns the leading, trailing, top and bottom edges of the two.
PELLARVINE_EXPORT void pinWidthAndHeight(QWidget *receiver, QWidget *view);

/// Places the view `border` inside the receiver on every side, or outside if negative.
PELLARVINE_EXPORT void pinWidthAndHeight(QWidget *receiver, QWidget *view, double border);

/// Aligns the centres of the two.
PELLARVINE_EXPORT void pinCenter(QWidget *receiver, QWidget *view);

/// Aligns the centres. The view does not reach beyond the receiver.
PELLARVINE_EXPORT void pinCenterAndConstrainInside(QWidget *receiver, QWidget *view);

/// The same, but the view may reach `border` beyond the receiver's edges, or, if negative, has to
/// stay that far inside. The sign is meant: it is the reverse of `pinWidthAndHeight`.
PELLARVINE_EXPORT void pinCenterAndConstrainInside(QWidget *receiver, QWidget *view, double border);

/// Adds the subview and calls `pinWidthAndHeight`.
PELLARVINE_EXPORT void addAndPin(QWidget *receiver, QWidget *subview);
/// The same with a border.
PELLARVINE_EXPORT void addAndPin(QWidget *receiver, QWidget *subview, double border);

/// Adds the subview and calls `pinCenter`.
PELLARVINE_EXPORT void addAndCenter(QWidget *receiver, QWidget *subview);

/// Adds the subview and calls `pinCenterAndConstrainInside`.
PELLARVINE_EXPORT void addCenteredAndConstrainedToBounds(QWidget *receiver, QWidget *subview);
/// The same with a border, whose sign is that of `pinCenterAndConstrainInside`.
PELLARVINE_EXPORT void addCenteredAndConstrainedToBounds(QWidget *receiver, QWidget *subview,
                                                         double border);

} // namespace NS
