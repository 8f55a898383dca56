// SPDX-License-Identifier: MIT
#include "Controls/TextFieldEditor.h"

#include "Controls/NSTextField.h"
#include "Controls/TextFieldLayout.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTextBlock>
#include <QTextLayout>
#include <QWheelEvent>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// The accessible name: that of the field, else the text of its buddy label, else the placeholder.
// Text to edit is not its own name, because it would be read twice.
QString nameOf(const NS::TextField *field)
{
    if (!field->accessibleName().isEmpty())
        return field->accessibleName();
    const auto labels = field->window()->findChildren<QLabel *>();
    const auto label = std::find_if(labels.begin(), labels.end(),
                                    [&](const QLabel *one) { return one->buddy() == field; });
    if (label != labels.end())
        return (*label)->text().remove(u'&');
    if (!field->placeholderString().isEmpty())
        return field->placeholderString();
    return field->isEditable() ? QString() : field->stringValue();
}

} // namespace

TextFieldEditor::TextFieldEditor(QTextDocument *document, NS::TextField *field)
    : QTextBrowser(field)
    , m_field(field)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setOpenLinks(false);
    setUndoRedoEnabled(true);
    viewport()->setAutoFillBackground(false);
    setAttribute(Qt::WA_NoSystemBackground);
    setDocument(document);
    connect(this, &QTextEdit::cursorPositionChanged, this, [this] {
        if (!isReadOnly())
            revealCursor();
    });
}

bool TextFieldEditor::event(QEvent *event)
{
    // A frame and padding that a style sheet gives the field would leave no room for the text here.
    const bool isNewStyle = event->type() == QEvent::Polish || event->type() == QEvent::StyleChange;
    if (isNewStyle && styleSheet().isEmpty() && style()->inherits("QStyleSheetStyle"))
        setStyleSheet(u"Pellarvine--detail--TextFieldEditor { border: none; padding: 0; }"_s);
    return QTextBrowser::event(event);
}

void TextFieldEditor::setHasLines(bool hasLines)
{
    m_hasLines = hasLines;
    setLineWrapMode(hasLines ? QTextEdit::WidgetWidth : QTextEdit::NoWrap);
    setTabChangesFocus(true);
}

void TextFieldEditor::setKind(bool isSelectable, bool isEditable, bool hasLinks)
{
    Qt::TextInteractionFlags flags = Qt::NoTextInteraction;
    if (isEditable)
        flags = Qt::TextEditorInteraction;
    else if (isSelectable)
        flags = Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;
    if (hasLinks && !isEditable)
        flags |= Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard;
    setTextInteractionFlags(flags);
    viewport()->setCursor(isSelectable || isEditable ? Qt::IBeamCursor : Qt::ArrowCursor);
    setFocusPolicy(isEditable ? Qt::WheelFocus : Qt::StrongFocus);
    setAcceptDrops(isEditable);
}

void TextFieldEditor::select(int anchor, int position)
{
    if (textInteractionFlags() & Qt::LinksAccessibleByKeyboard) {
        for (const TextLink &link : linksOf(*document())) {
            if (link.start == anchor && link.end == position)
                return focusLink(link);
        }
    }
    const int last = document()->characterCount() - 1;
    QTextCursor cursor(document());
    cursor.setPosition(std::min(anchor, last));
    cursor.setPosition(std::min(position, last), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

// Without this, Qt aligns lines that do not wrap in the width of an earlier text.
void TextFieldEditor::layOutAnew()
{
    if (m_hasLines)
        return;
    setLineWrapMode(QTextEdit::WidgetWidth);
    setLineWrapMode(QTextEdit::NoWrap);
    ensureCursorVisible();
}

void TextFieldEditor::updateName()
{
    const QString name = nameOf(m_field);
    if (name != accessibleName())
        setAccessibleName(name);
}

// The field grows with its text, so that what has to scroll is an area around it.
void TextFieldEditor::revealCursor()
{
    if (!hasFocus())
        return;
    const QRect cursor = cursorRect();
    for (QWidget *outer = parentWidget(); outer; outer = outer->parentWidget()) {
        auto *const area = qobject_cast<QScrollArea *>(outer);
        if (!area || !area->widget() || !area->widget()->isAncestorOf(this))
            continue;
        const QPoint place = viewport()->mapTo(area->widget(), cursor.center());
        area->ensureVisible(place.x(), place.y(), cursor.width(), cursor.height());
    }
}

bool TextFieldEditor::isComposing() const
{
    return !textCursor().block().layout()->preeditAreaText().isEmpty();
}

bool TextFieldEditor::focusNextPrevChild(bool next)
{
    const QTextCursor current = textCursor();
    std::optional<TextLink> target;
    if (textInteractionFlags() & Qt::LinksAccessibleByKeyboard) {
        for (const TextLink &link : linksOf(*document())) {
            const bool isAhead = link.start >= current.selectionEnd();
            const bool isBehind = link.end <= current.selectionStart();
            if (next ? isAhead && !target : isBehind)
                target = link;
        }
    }
    if (!target) // QTextBrowser would go to a link
        return QTextEdit::focusNextPrevChild(next); // NOLINT(bugprone-parent-virtual-call)
    focusLink(*target);
    revealCursor();
    Q_EMIT linkFocused();
    return true;
}

// Qt finds the next link after a selection, and the first without one. Backwards, it stays forever
// at a link that begins a paragraph.
void TextFieldEditor::focusLink(const TextLink &link)
{
    QTextCursor before(document());
    before.setPosition(std::max(0, link.start - 1));
    before.setPosition(link.start, QTextCursor::KeepAnchor);
    setTextCursor(before);
    QTextBrowser::focusNextPrevChild(true);
}

void TextFieldEditor::focusInEvent(QFocusEvent *event)
{
    updateName();
    QTextBrowser::focusInEvent(event);
    m_isFocusedByKeyboard = event->reason() == Qt::TabFocusReason
                            || event->reason() == Qt::BacktabFocusReason
                            || event->reason() == Qt::ShortcutFocusReason;
    if (m_isFocusedByKeyboard && !m_hasLines && !isReadOnly())
        selectAll();
    const Qt::TextInteractionFlags kind = textInteractionFlags();
    if (m_isFocusedByKeyboard && (kind & Qt::LinksAccessibleByKeyboard)) {
        const bool isFromBehind = event->reason() == Qt::BacktabFocusReason;
        moveCursor(isFromBehind ? QTextCursor::End : QTextCursor::Start);
        // If there is nothing to select, the focus is for a link.
        if (!(kind & Qt::TextSelectableByKeyboard))
            focusNextPrevChild(!isFromBehind);
    }
    Q_EMIT focusChanged();
}

void TextFieldEditor::focusOutEvent(QFocusEvent *event)
{
    QTextBrowser::focusOutEvent(event);
    const bool comesBack = event->reason() == Qt::ActiveWindowFocusReason
                           || event->reason() == Qt::PopupFocusReason;
    if (!comesBack) {
        QTextCursor cursor = textCursor();
        cursor.clearSelection();
        if (isReadOnly())
            cursor.movePosition(QTextCursor::Start); // text that was scrolled goes back
        setTextCursor(cursor);
        Q_EMIT left();
    }
    Q_EMIT focusChanged();
}

void TextFieldEditor::insertFromMimeData(const QMimeData *source)
{
    QString text = source->text();
    if (text.isEmpty())
        return;
    if (!m_hasLines) {
        for (const QChar end : { QChar(u'\n'), QChar(u'\r'), QChar(QChar::ParagraphSeparator),
                                 QChar(QChar::LineSeparator) })
            text.replace(end, u' ');
    }
    textCursor().insertText(text);
    ensureCursorVisible();
}

void TextFieldEditor::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !isReadOnly()) {
        if (!m_hasLines || event->modifiers() == Qt::ControlModifier) {
            Q_EMIT returned();
            event->ignore(); // a dialog's default button takes it
            return;
        }
    }
    const bool isAcross = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (!m_hasLines && isAcross && event->modifiers() == Qt::NoModifier) {
        event->ignore();
        return;
    }
    QTextBrowser::keyPressEvent(event);
    revealCursor();
}

void TextFieldEditor::resizeEvent(QResizeEvent *event)
{
    QTextBrowser::resizeEvent(event);
    ensureCursorVisible(); // from right to left, Qt begins at the right end of any text
    if (!isReadOnly())
        revealCursor();
}

void TextFieldEditor::wheelEvent(QWheelEvent *event)
{
    // Leaves the event to the parent if there is nothing to scroll.
    if (verticalScrollBar()->maximum() == 0)
        event->ignore();
    else
        QTextBrowser::wheelEvent(event);
}

void TextFieldEditor::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *const menu = createStandardContextMenu(event->pos());
    if (!menu) // beside the links of a text that cannot be selected
        return event->ignore();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

} // namespace Pellarvine::detail
