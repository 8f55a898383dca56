// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/NSWindow.h"

namespace Pellarvine::detail {

/// Of a window, in its own coordinates: without the margin in which it draws its shadow.
inline QRect seenRect(const QWidget *window)
{
    const auto *const own = qobject_cast<const NS::Window *>(window);
    const int margin = own ? own->shadowMargin() : 0;
    return window->rect().adjusted(margin, margin, -margin, -margin);
}

} // namespace Pellarvine::detail
