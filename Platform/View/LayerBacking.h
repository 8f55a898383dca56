// SPDX-License-Identifier: MIT
// Not API: layers that a widget class sets up once they are needed.
#pragma once

#include "View/CALayer.h"

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Sets up the new layer of a widget. Use qobject_cast for the widget: while it is destroyed, it is
/// no more than a QWidget.
using LayerSetUp = void (*)(QWidget *widget, CA::Layer &layer);

/// Gives the widget a layer, as NS::setWantsLayer() does. The layer is made when it is needed or
/// drawn for the first time; `setUp` is called then.
PELLARVINE_PRIVATE_EXPORT void setWantsLayer(QWidget *widget, LayerSetUp setUp);

/// The widget's layer if it has been made, otherwise null.
PELLARVINE_PRIVATE_EXPORT CA::Layer *layerInUse(const QWidget *widget);

} // namespace Pellarvine::detail
