// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

QT_FORWARD_DECLARE_CLASS(QPoint)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Whether a press at that position of a widget in a title bar moves the window instead of going to
/// the widget. The widget's `mouseDownCanMoveWindow` decides: a Q_INVOKABLE method from QPoint to
/// bool, or a property. Without it, the empty parts of a QMenuBar and a QTabBar move the window.
bool mouseDownCanMoveWindow(QWidget *widget, QPoint position);

} // namespace Pellarvine::detail
