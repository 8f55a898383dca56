// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <QWidget>

/// The descendant of `parent` with that accessible name. If there are several, a visible one; if
/// there is none, null.
template <typename Widget>
Widget *named(QWidget *parent, const QString &name)
{
    Widget *found = nullptr;
    const QList<Widget *> widgets = parent->findChildren<Widget *>();
    for (Widget *const widget : widgets) {
        QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(widget);
        if (interface && interface->text(QAccessible::Name) == name
            && (!found || !found->isVisible()))
            found = widget;
    }
    return found;
}
