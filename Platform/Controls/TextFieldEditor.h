// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QTextBrowser>

namespace NS {
class TextField;
}

namespace Pellarvine::detail {

struct TextLink;

/// The part of a text field that the user works in: selects, edits, follows links. It shows the
/// field's document and takes up the room within its bezel.
class TextFieldEditor : public QTextBrowser
{
    Q_OBJECT

public:
    TextFieldEditor(QTextDocument *document, NS::TextField *field);

    /// Line ends are taken, and lines wrap.
    void setHasLines(bool hasLines);
    void setKind(bool isSelectable, bool isEditable, bool hasLinks);
    void select(int anchor, int position);
    /// After the text or its alignment has changed.
    void layOutAnew();

    /// Takes over the name that screen readers know the field by. Before they see the editor.
    void updateName();

    /// Whether it has the focus from there, so that a reader must be shown where it is.
    bool isFocusedByKeyboard() const { return m_isFocusedByKeyboard && hasFocus(); }

    /// Whether it shows what an input method has not committed yet.
    bool isComposing() const;

Q_SIGNALS:
    void returned();
    void left(); ///< by the focus, and not just for a menu or another window
    void focusChanged();
    void linkFocused(); ///< by Tab: it is selected

protected:
    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void focusLink(const TextLink &link);
    void revealCursor();

    NS::TextField *m_field;
    bool m_hasLines = true;
    bool m_isFocusedByKeyboard = false;
};

} // namespace Pellarvine::detail
