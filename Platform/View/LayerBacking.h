// SPDX-License-Identifier: MIT
// Not API: layers that a widget class sets up once they are needed.
#pragma once

#include "View/CALayer.h"

#include <functional>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Makes the widget layer-backed, as NS::setWantsLayer() does. `setUp` gets the layer when the first
/// caller asks for it, or when it is first drawn.
PELLARVINE_PRIVATE_EXPORT void setWantsLayer(QWidget *widget,
                                             const std::function<void(CA::Layer &)> &setUp);

/// The widget's layer if anybody has needed it yet, else null.
PELLARVINE_PRIVATE_EXPORT CA::Layer *layerInUse(const QWidget *widget);

} // namespace Pellarvine::detail
