// SPDX-License-Identifier: MIT
#include "Window/AccessiblePopups.h"

#include "Window/PopoverBubble.h"

namespace Pellarvine::detail {

QList<QWidget *> AccessiblePopups::popupsOf(const QWidget *window)
{
    QList<QWidget *> found;
    for (auto *const bubble : window->findChildren<PopoverBubble *>(Qt::FindDirectChildrenOnly)) {
        if (bubble->windowType() == Qt::Popup)
            found.append(bubble);
    }
    return found;
}

QList<QWidget *> AccessiblePopups::shownPopups() const
{
    QList<QWidget *> popups = popupsOf(widget());
    popups.removeIf([](const QWidget *popup) { return !popup->isVisible(); });
    return popups;
}

int AccessiblePopups::childCount() const
{
    return AccessibleControl::childCount() + int(shownPopups().size());
}

QAccessibleInterface *AccessiblePopups::child(int index) const
{
    const int first = AccessibleControl::childCount();
    if (index < first)
        return AccessibleControl::child(index);
    return QAccessible::queryAccessibleInterface(shownPopups().value(index - first));
}

int AccessiblePopups::indexOfChild(const QAccessibleInterface *child) const
{
    const auto popup = shownPopups().indexOf(child ? child->object() : nullptr);
    return popup < 0 ? AccessibleControl::indexOfChild(child)
                     : AccessibleControl::childCount() + int(popup);
}

} // namespace Pellarvine::detail
