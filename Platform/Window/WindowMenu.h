// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

QT_FORWARD_DECLARE_CLASS(QMenu)
QT_FORWARD_DECLARE_CLASS(QPoint)

namespace Pellarvine::detail {

class WindowFrame;

/// Shows the window menu there: the desktop's own where it can be asked for, else one with what
/// every desktop has in it.
void showWindowMenu(WindowFrame *frame, QPoint globalPosition);

/// The latter, for the caller to show and delete.
PELLARVINE_INTERNAL_EXPORT QMenu *makeWindowMenu(WindowFrame *frame);

} // namespace Pellarvine::detail
