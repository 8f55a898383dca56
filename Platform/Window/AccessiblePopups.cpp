// SPDX-License-Identifier: MIT
#include "Window/AccessiblePopups.h"

#include "Window/PopoverBubble.h"

namespace Pellarvine::detail {

QList<QWidget *> AccessiblePopups::popups() const
{
    QList<QWidget *> found;
    for (auto *const bubble : widget()->findChildren<PopoverBubble *>(Qt::FindDirectChildrenOnly)) {
        if (bubble->windowType() == Qt::Popup && bubble->isVisible())
            found.append(bubble);
    }
    return found;
}

int AccessiblePopups::childCount() const
{
    return AccessibleControl::childCount() + int(popups().size());
}

QAccessibleInterface *AccessiblePopups::child(int index) const
{
    const int first = AccessibleControl::childCount();
    if (index < first)
        return AccessibleControl::child(index);
    return QAccessible::queryAccessibleInterface(popups().value(index - first));
}

int AccessiblePopups::indexOfChild(const QAccessibleInterface *child) const
{
    const auto popup = popups().indexOf(child ? child->object() : nullptr);
    return popup < 0 ? AccessibleControl::indexOfChild(child)
                     : AccessibleControl::childCount() + int(popup);
}

} // namespace Pellarvine::detail
