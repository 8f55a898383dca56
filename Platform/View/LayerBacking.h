// SPDX-License-Identifier: MIT
// Not API: layers that a widget class sets up once they are needed.
#pragma once

#include "View/CALayer.h"

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Sets up the new layer of a widget. A widget that is being destroyed may only be a QWidget by
/// then: qobject_cast it.
using LayerSetUp = void (*)(QWidget *widget, CA::Layer &layer);

/// Makes the widget layer-backed, as NS::setWantsLayer() does. `setUp` is called when somebody
/// first asks for the layer, or when it is first drawn.
PELLARVINE_PRIVATE_EXPORT void setWantsLayer(QWidget *widget, LayerSetUp setUp);

/// The widget's layer if anybody has needed it yet, else null.
PELLARVINE_PRIVATE_EXPORT CA::Layer *layerInUse(const QWidget *widget);

} // namespace Pellarvine::detail
