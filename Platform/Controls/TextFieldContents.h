// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Controls/TextFieldLayout.h"

#include <QHash>
#include <QObject>
#include <QScopedValueRollback>
#include <QSize>
#include <QTextDocument>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QPainter)
QT_FORWARD_DECLARE_CLASS(QPalette)
QT_FORWARD_DECLARE_CLASS(QRect)

namespace Pellarvine::detail {

/// The text of a text field with the document that shows it. What is edited in the document, by an
/// editor or a cursor, becomes text with the attributes of the text around it. Sizes are kept until
/// the text or the format changes.
class PELLARVINE_INTERNAL_EXPORT TextFieldContents : public QObject
{
    Q_OBJECT

public:
    TextFieldContents();

    const NS::AttributedString &text() const { return m_text; }
    void setText(const NS::AttributedString &text);
    /// Lays the same text out anew, where its format changes what the document holds.
    void refill();
    const TextFieldFormat &format() const { return m_format; }
    void setFormat(const TextFieldFormat &format);
    void setLinkColor(const QColor &color); ///< of text that is laid out from now on

    /// The whole text.
    QTextDocument &document() { return m_document; }
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
    double lastDescent() const; ///< of the last line

    /// Whether only a part of the text shows at that width.
    bool isElided(int width);
    /// Draws the text, or the part that shows at that width, with the palette's colour for text.
    void draw(QPainter &painter, const QRect &place, const QPalette &palette);

Q_SIGNALS:
    void edited();

private:
    void forgetLayout();
    void contentsChange(int position, int removed, int added);
    void contentsChanged();
    QTextDocument &shown(int width);

    NS::AttributedString m_text;
    TextFieldFormat m_format;
    mutable QTextDocument m_document;
    std::unique_ptr<QTextDocument> m_elided; // of the width below; null if nothing is
    int m_elidedWidth = -1;
    bool m_isApplying = false;
    bool m_hasChanged = false; // within one edit
    mutable QHash<int, QSize> m_sizes; // by width
};

} // namespace Pellarvine::detail
