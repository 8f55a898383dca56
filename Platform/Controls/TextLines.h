// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Controls/TextFieldLayout.h"

#include <QTextBlockFormat>
#include <QTextLayout>

#include <memory>
#include <vector>

QT_FORWARD_DECLARE_CLASS(QPainter)

namespace Pellarvine::detail {

/// The lines of a text that is only shown. They look like those of a `QTextDocument` with the same
/// text, but the glyphs are kept, so that another width takes new line breaks alone, and drawing
/// takes no layout.
class TextLines
{
public:
    TextLines(const NS::AttributedString &text, const TextFieldFormat &format);
    Q_DISABLE_COPY_MOVE(TextLines)

    /// Breaks the lines at a width in device-independent pixels; at -1, only where the text does.
    void layOut(int width);

    // At the width of the last layOut():

    /// The size of the lines, up to the permitted number.
    QSizeF size() const { return { m_width, heightOfLines() }; }
    double firstAscent() const; ///< of the first line
    double firstHeight() const; ///< of the first line
    double lastDescent() const; ///< of the last line
    bool isSingle() const; ///< one line is all
    void draw(QPainter &painter) const; ///< at the origin, with the painter's pen
    /// The part of the text that fits there: each line of a text that does not wrap, else as many
    /// lines as there may be and as are seen whole in `height`, but one at least.
    NS::AttributedString fittingText(double height) const;

private:
    struct Paragraph
    {
        qsizetype start = 0; // in the text
        QTextBlockFormat format;
        std::unique_ptr<QTextLayout> layout;
        bool isShaped = false;
    };

    void append(qsizetype start, qsizetype end, const QTextBlockFormat &format, const QFont &font);
    double layOut(Paragraph &paragraph, double top);
    double heightOfLines() const;
    int fittingLines(double height) const;

    NS::AttributedString m_text;
    TextFieldFormat m_format;
    std::vector<Paragraph> m_paragraphs; // one at least
    int m_room = -2; // the width of the last layOut()
    double m_width = 0.0; // that the lines take
    double m_height = 0.0;
};

} // namespace Pellarvine::detail
