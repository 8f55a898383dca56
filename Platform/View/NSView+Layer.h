// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/CALayer.h>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// Layers behind the contents of a widget:
///
///     NS::setWantsLayer(card, true);
///     NS::layer(card)->setBackgroundColor(Qt::white);
///     NS::layer(card)->setCornerRadius(6); // what lies behind the card shows at its corners
///
/// No argument may be null. Main thread only.
namespace NS {

/// Gives the widget a layer, or removes it. The layer is as large as the widget, and is drawn with
/// its sublayers before the widget's own painting.
PELLARVINE_EXPORT void setWantsLayer(QWidget *widget, bool wantsLayer);
/// Whether the widget has a layer. Default: false.
PELLARVINE_EXPORT bool wantsLayer(const QWidget *widget);

/// The widget's layer, or null. The widget keeps the layer's frame equal to its bounds.
PELLARVINE_EXPORT std::shared_ptr<CA::Layer> layer(const QWidget *widget);

} // namespace NS
