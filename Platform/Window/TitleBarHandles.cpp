// SPDX-License-Identifier: MIT
#include "Window/TitleBarHandles.h"

#include "Base/MethodLookup.h"

#include <QMenuBar>
#include <QTabBar>
#include <QVariant>

namespace Pellarvine::detail {

bool mouseDownCanMoveWindow(QWidget *widget, QPoint position)
{
    const QMetaMethod method = methodWithSignature(widget, "mouseDownCanMoveWindow(QPoint)");
    bool canMove = false;
    if (method.isValid()
        && method.invoke(widget, Qt::DirectConnection, Q_RETURN_ARG(bool, canMove),
                         Q_ARG(QPoint, position)))
        return canMove;
    const QVariant said = widget->property("mouseDownCanMoveWindow");
    if (said.isValid())
        return said.toBool();
    if (const auto *const menuBar = qobject_cast<const QMenuBar *>(widget))
        return !menuBar->actionAt(position);
    if (const auto *const tabBar = qobject_cast<const QTabBar *>(widget))
        return tabBar->tabAt(position) < 0;
    return false;
}

} // namespace Pellarvine::detail
