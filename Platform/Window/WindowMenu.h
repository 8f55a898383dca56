// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/NSWindow.h"

QT_FORWARD_DECLARE_CLASS(QMenu)

namespace Pellarvine::detail {

/// Shows the window menu there: the desktop's own where it can be asked for, else one with what
/// every desktop has in it.
void showWindowMenu(NS::Window *window, QPoint globalPosition);

/// The latter, for the caller to show and delete.
PELLARVINE_INTERNAL_EXPORT QMenu *makeWindowMenu(NS::Window *window);

} // namespace Pellarvine::detail
