// SPDX-License-Identifier: MIT
// Not API: the accessibility interface of buttons for which Qt has none.
#pragma once

#include "View/AccessibleControl.h"

#include <QAbstractButton>
#include <QStringList>

#include <utility>

namespace Pellarvine::detail {

/// The accessible interface of a button with a role of its own. It can be pressed.
class AccessibleButton : public AccessibleControl
{
public:
    AccessibleButton(QAbstractButton *button, QAccessible::Role role, QString name = {})
        : AccessibleControl(button, role, std::move(name))
    { }

    QStringList actionNames() const override
    {
        return QStringList(pressAction()) + AccessibleControl::actionNames();
    }
    void doAction(const QString &name) override
    {
        if (name == pressAction())
            button()->click();
        else
            AccessibleControl::doAction(name);
    }

protected:
    QAbstractButton *button() const { return static_cast<QAbstractButton *>(widget()); }
};

} // namespace Pellarvine::detail
