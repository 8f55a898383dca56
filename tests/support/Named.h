// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <QWidget>

/// The widget below `parent` that a screen reader calls by that name, a visible one if there are
/// several; null if there is none.
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
