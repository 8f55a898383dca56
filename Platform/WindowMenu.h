// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <pellarvine/Platform/NSWindow.h>

QT_FORWARD_DECLARE_CLASS(QMenu)

namespace NS {

/// Shows the window menu there: the desktop's own where it can be asked for, else one with what
/// every desktop has in it.
void showWindowMenu(Window *window, QPoint globalPosition);

/// The latter, for the caller to show and delete.
PELLARVINE_INTERNAL_EXPORT QMenu *makeWindowMenu(Window *window);

} // namespace NS
