// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

QT_FORWARD_DECLARE_CLASS(QMenu)
QT_FORWARD_DECLARE_CLASS(QPoint)

namespace Pellarvine::detail {

class WindowFrame;

/// Shows the desktop's window menu there, or that of makeWindowMenu() if the desktop has none.
void showWindowMenu(WindowFrame *frame, QPoint globalPosition);

/// A menu with the usual actions for a window. The caller shows and deletes it.
PELLARVINE_INTERNAL_EXPORT QMenu *makeWindowMenu(WindowFrame *frame);

} // namespace Pellarvine::detail
