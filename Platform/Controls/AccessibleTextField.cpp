// SPDX-License-Identifier: MIT
#include "Controls/AccessibleTextField.h"

#include "Controls/TextFieldEditor.h"
#include "Controls/TextFieldLayout.h"

#include <QTextCursor>

namespace Pellarvine::detail {

namespace {

TextFieldEditor *editorOf(const NS::TextField *field)
{
    return qobject_cast<TextFieldEditor *>(field->focusProxy());
}

QList<TextLink> linksOf(const NS::TextField *field)
{
    const TextFieldEditor *const editor = editorOf(field);
    const bool hasLinks = editor && !field->isEditable();
    return hasLinks ? detail::linksOf(*editor->document()) : QList<TextLink>();
}

bool isFocused(const TextFieldEditor *editor, const TextLink &link)
{
    const QTextCursor cursor = editor->textCursor();
    return editor->hasFocus() && cursor.selectionStart() == link.start
           && cursor.selectionEnd() == link.end;
}

} // namespace

AccessibleLink::AccessibleLink(NS::TextField *field, int index)
    : AccessiblePart(field)
    , m_index(index)
{ }

bool AccessibleLink::isValid() const
{
    return widget() && m_index < linksOf(widget()).size();
}

QString AccessibleLink::text(QAccessible::Text kind) const
{
    if (!isValid())
        return {};
    const TextLink link = linksOf(widget()).at(m_index);
    if (kind == QAccessible::Name)
        return link.text;
    return kind == QAccessible::Value ? link.url.toString() : QString();
}

// If a link has several lines, the rectangle of the part on the first line.
QRect AccessibleLink::rect() const
{
    const TextFieldEditor *const editor = isValid() ? editorOf(widget()) : nullptr;
    if (!editor)
        return {};
    const TextLink link = linksOf(widget()).at(m_index);
    QTextCursor cursor(editor->document());
    cursor.setPosition(link.start);
    const QRect start = editor->cursorRect(cursor);
    cursor.setPosition(link.end);
    const QRect end = editor->cursorRect(cursor);
    const int right = end.top() == start.top() ? end.right() : editor->viewport()->width();
    const QRect local(QPoint(std::min(start.left(), right), start.top()),
                      QPoint(std::max(start.left(), right), start.bottom()));
    return { editor->viewport()->mapToGlobal(local.topLeft()), local.size() };
}

QAccessible::State AccessibleLink::state() const
{
    QAccessible::State state;
    const TextFieldEditor *const editor = isValid() ? editorOf(widget()) : nullptr;
    if (!editor) {
        state.invalid = true;
        return state;
    }
    state.linked = true;
    state.disabled = !widget()->isEnabled();
    state.invisible = !widget()->isVisible();
    state.focusable = widget()->isEnabled();
    state.focused = isFocused(editor, linksOf(widget()).at(m_index));
    return state;
}

QStringList AccessibleLink::actionNames() const
{
    return isValid() && widget()->isEnabled() ? QStringList(pressAction()) : QStringList();
}

void AccessibleLink::doAction(const QString &name)
{
    TextFieldEditor *const editor = actionNames().contains(name) ? editorOf(widget()) : nullptr;
    if (editor)
        Q_EMIT editor->anchorClicked(linksOf(widget()).at(m_index).url);
}

AccessibleTextField::AccessibleTextField(NS::TextField *field)
    : AccessibleControl(field, QAccessible::Client)
{ }

AccessibleTextField::~AccessibleTextField()
{
    for (const QAccessible::Id id : std::as_const(m_links))
        QAccessible::deleteAccessibleInterface(id);
}

QAccessible::Role AccessibleTextField::role() const
{
    return AccessibleControl::childCount() > 0 ? QAccessible::Client : QAccessible::StaticText;
}

// An inner editor has the focus in the field's place, and a name.
QAccessible::State AccessibleTextField::state() const
{
    QAccessible::State state = AccessibleControl::state();
    if (AccessibleControl::childCount() > 0) {
        state.focusable = false;
        state.focused = false;
    }
    return state;
}

int AccessibleTextField::childCount() const
{
    return AccessibleControl::childCount() + int(linksOf(field()).size());
}

QAccessibleInterface *AccessibleTextField::child(int index) const
{
    const int link = index - AccessibleControl::childCount();
    if (TextFieldEditor *const editor = link < 0 ? editorOf(field()) : nullptr)
        editor->updateName();
    if (link < 0 || index >= childCount())
        return AccessibleControl::child(index);
    const auto known = m_links.constFind(link);
    if (known != m_links.constEnd())
        return QAccessible::accessibleInterface(*known);
    auto *const made = new AccessibleLink(field(), link);
    m_links.insert(link, QAccessible::registerAccessibleInterface(made));
    return made;
}

int AccessibleTextField::indexOfChild(const QAccessibleInterface *child) const
{
    const auto *const link = dynamic_cast<const AccessibleLink *>(child);
    if (!link)
        return AccessibleControl::indexOfChild(child);
    return link->parent() == this ? AccessibleControl::childCount() + link->index() : -1;
}

void AccessibleTextField::tellOfFocusedLink(NS::TextField *field)
{
    if (!QAccessible::isActive())
        return;
    const TextFieldEditor *const editor = editorOf(field);
    const QList<TextLink> links = linksOf(field);
    for (int i = 0; editor && i < links.size(); ++i) {
        if (!isFocused(editor, links.at(i)))
            continue;
        QAccessibleInterface *const own = QAccessible::queryAccessibleInterface(field);
        QAccessibleEvent event(own->child(own->childCount() - int(links.size()) + i),
                               QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

QString AccessibleTextField::ownName() const
{
    return AccessibleControl::childCount() > 0 ? QString() : field()->stringValue();
}

NS::TextField *AccessibleTextField::field() const
{
    return static_cast<NS::TextField *>(widget());
}

} // namespace Pellarvine::detail
