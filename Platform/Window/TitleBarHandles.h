// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

QT_FORWARD_DECLARE_CLASS(QPoint)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Whether a press on that place of a widget in a title bar moves the window instead of going to
/// the widget. What the widget's `mouseDownCanMoveWindow` says holds: a Q_INVOKABLE method that
/// takes the place and returns a bool, or a property; else it is true for the empty parts of a
/// QMenuBar and a QTabBar. Widgets that take no press move the window in any case.
bool mouseDownCanMoveWindow(QWidget *widget, QPoint position);

} // namespace Pellarvine::detail
