// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Controls/NSTextField.h"
#include "View/AccessibleControl.h"

#include <QAccessibleInterface>
#include <QHash>
#include <QPointer>

namespace Pellarvine::detail {

class TextFieldEditor;

/// A link in a text field as a screen reader meets it.
class AccessibleLink : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    AccessibleLink(NS::TextField *field, int index);

    bool isValid() const override;
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString &) override { }
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Link; }
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

    int index() const { return m_index; }

private:
    QPointer<NS::TextField> m_field;
    int m_index;
};

/// A label is text to read. What can be selected or edited is a part of its own below, with all
/// that belongs to that; the links follow it.
class AccessibleTextField : public AccessibleControl
{
public:
    explicit AccessibleTextField(NS::TextField *field);
    ~AccessibleTextField() override;

    QAccessible::Role role() const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;

    /// Tells screen readers of the link that the keyboard is on.
    static void tellOfFocusedLink(NS::TextField *field);

protected:
    QString ownName() const override;

private:
    NS::TextField *field() const;

    mutable QHash<int, QAccessible::Id> m_links; // made when first asked for
};

} // namespace Pellarvine::detail
