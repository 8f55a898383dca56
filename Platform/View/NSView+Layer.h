// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/CALayer.h>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// Layers behind what a widget draws:
///
///     NS::setWantsLayer(card, true);
///     NS::layer(card)->setBackgroundColor(Qt::white);
///     NS::layer(card)->setCornerRadius(6); // what lies behind the card shows at its corners
///
/// No widget may be null. Main thread only.
namespace NS {

/// A layer-backed widget has a layer of the size of its bounds, which is drawn with its sublayers
/// before the widget's own drawing and its children. Turning it off discards that layer.
PELLARVINE_EXPORT void setWantsLayer(QWidget *widget, bool wantsLayer);
/// Default: false.
PELLARVINE_EXPORT bool wantsLayer(const QWidget *widget);

/// The widget's layer, whose frame the widget keeps at its bounds; null if it has none.
PELLARVINE_EXPORT std::shared_ptr<CA::Layer> layer(const QWidget *widget);

} // namespace NS
