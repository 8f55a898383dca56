// SPDX-License-Identifier: MIT
#include "Window/AccessibleWindow.h"

#include "Window/WindowFrame.h"

namespace Pellarvine::detail {

QRect AccessibleWindow::rect() const
{
    const QRect seen = seenRect(widget()).translated(widget()->mapToGlobal(QPoint()));
    return AccessiblePopups::rect().intersected(seen);
}

} // namespace Pellarvine::detail
