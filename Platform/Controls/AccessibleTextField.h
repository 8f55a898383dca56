// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Controls/NSTextField.h"
#include "View/AccessibleControl.h"
#include "View/AccessiblePart.h"

#include <QAccessibleInterface>
#include <QHash>

namespace Pellarvine::detail {

class TextFieldEditor;

/// A link in a text field as a screen reader meets it.
class AccessibleLink : public AccessiblePart<NS::TextField>
{
public:
    AccessibleLink(NS::TextField *field, int index);

    bool isValid() const override;
    QString text(QAccessible::Text kind) const override;
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Link; }
    QAccessible::State state() const override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;

    int index() const { return m_index; }

private:
    int m_index;
};

/// A label is text to read. Text to select or to edit is a child of its own, with the interfaces
/// for that; the links follow it.
class AccessibleTextField : public AccessibleControl
{
public:
    explicit AccessibleTextField(NS::TextField *field);
    ~AccessibleTextField() override;

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
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
