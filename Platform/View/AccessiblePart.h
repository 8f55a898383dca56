// SPDX-License-Identifier: MIT
// Not API: the accessibility interface of a part that a widget draws itself.
#pragma once

#include <QAccessible>
#include <QPointer>
#include <QWidget>

namespace Pellarvine::detail {

/// The accessible interface of a part of a `Widget`. The part has actions and no children.
template <typename Widget>
class AccessiblePart : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    explicit AccessiblePart(Widget *widget)
        : m_widget(widget)
    { }

    QObject *object() const override { return nullptr; }
    QWindow *window() const override
    {
        return m_widget ? m_widget->window()->windowHandle() : nullptr;
    }
    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_widget);
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void setText(QAccessible::Text, const QString &) override { }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface
                       ? static_cast<QAccessibleActionInterface *>(this)
                       : nullptr;
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

protected:
    Widget *widget() const { return m_widget; }

private:
    QPointer<Widget> m_widget;
};

} // namespace Pellarvine::detail
