// SPDX-License-Identifier: MIT
#include "Window/AccessibleWindow.h"

#include "Window/WindowFrame.h"
#include "Window/WindowBorder.h"

namespace Pellarvine::detail {

// Beyond the children if there is none.
int AccessibleWindow::borderIndex() const
{
    const int count = AccessiblePopups::childCount();
    for (int i = 0; i < count; ++i) {
        if (qobject_cast<WindowBorder *>(AccessiblePopups::child(i)->object()))
            return i;
    }
    return count;
}

int AccessibleWindow::childCount() const
{
    const int count = AccessiblePopups::childCount();
    return borderIndex() < count ? count - 1 : count;
}

QAccessibleInterface *AccessibleWindow::child(int index) const
{
    return AccessiblePopups::child(index < borderIndex() ? index : index + 1);
}

int AccessibleWindow::indexOfChild(const QAccessibleInterface *child) const
{
    const int index = AccessiblePopups::indexOfChild(child);
    const int border = borderIndex();
    return index == border ? -1 : index > border ? index - 1 : index;
}

QRect AccessibleWindow::rect() const
{
    const QRect seen = seenRect(widget()).translated(widget()->mapToGlobal(QPoint()));
    return AccessiblePopups::rect().intersected(seen);
}

} // namespace Pellarvine::detail
