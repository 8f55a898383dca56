// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Controls/TextFieldLayout.h"

#include <QObject>
#include <QScopedValueRollback>
#include <QSize>

#include <memory>
#include <vector>

QT_FORWARD_DECLARE_CLASS(QPainter)
QT_FORWARD_DECLARE_CLASS(QRect)
QT_FORWARD_DECLARE_CLASS(QTextDocument)

namespace Pellarvine::detail {

class TextLines;

/// The text of a text field, its size and its looks. An editor or a cursor works in a document,
/// which is made once it is asked for; what is edited there becomes text with the attributes of the
/// text around it. Sizes are kept until the text or the format changes.
class PELLARVINE_INTERNAL_EXPORT TextFieldContents : public QObject
{
    Q_OBJECT

public:
    TextFieldContents();
    ~TextFieldContents() override;

    const NS::AttributedString &text() const { return m_text; }
    void setText(const NS::AttributedString &text);
    /// Lays the same text out anew, where its format changes what the document holds.
    void refill();
    const TextFieldFormat &format() const { return m_format; }
    void setFormat(const TextFieldFormat &format);
    void setLinkColor(const QColor &color); ///< of text that is laid out from now on

    /// The whole text. Made by the first call.
    QTextDocument &document();
    /// Deletes the document, which nobody may show any more.
    void dropDocument();
    /// Runs an action that changes the looks of the document alone, so that it counts as no edit.
    template <typename Action>
    void changeLooks(const Action &action)
    {
        const QScopedValueRollback guard(m_isApplying, true);
        action();
    }

    /// The size at a width; at -1, as wide as the text wants.
    QSize size(int width) const;
    double firstAscent() const; ///< of the first line, at the size that the text wants
    double firstHeight() const; ///< of the first line, at the same size
    double lastDescent() const; ///< of the last line

    /// Whether only a part of the text shows in that room.
    bool isElided(const QSize &room);
    /// Draws the text, or the part that shows in that room, with the painter's pen.
    void draw(QPainter &painter, const QRect &place);

Q_SIGNALS:
    void edited();

private:
    // The size of the text at widths between which the lines stay the same.
    struct KnownSize
    {
        int narrowest;
        int widest;
        QSize size;
    };

    void forgetLayout();
    void contentsChange(int position, int removed, int added);
    void contentsChanged();
    TextLines &lines() const;
    TextLines &shownLines(const QSize &room); // laid out at its width

    NS::AttributedString m_text;
    TextFieldFormat m_format;
    std::unique_ptr<QTextDocument> m_document; // null until it is asked for
    mutable std::unique_ptr<TextLines> m_lines; // of the whole text; null until they are needed
    mutable std::vector<KnownSize> m_sizes;
    mutable double m_firstHeight = -1.0; // until it is known
    std::unique_ptr<TextLines> m_elided; // in the room below; null if nothing is
    QSize m_elidedRoom;
    bool m_isApplying = false;
    bool m_hasChanged = false; // within one edit
};

} // namespace Pellarvine::detail
