// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QAccessibleWidget>

namespace Pellarvine::detail {

/// Has views of that class, and of those derived from it that have no factory of their own, announced
/// under the role.
template <typename View, QAccessible::Role role>
void installAccessibleRole()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory([](const QString &, QObject *object) -> QAccessibleInterface * {
            auto *const view = qobject_cast<View *>(object);
            return view ? new QAccessibleWidget(view, role) : nullptr;
        });
        return true;
    }();
    Q_UNUSED(isInstalled)
}

} // namespace Pellarvine::detail
