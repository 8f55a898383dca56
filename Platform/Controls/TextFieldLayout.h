// SPDX-License-Identifier: MIT
// Not API: how the text of a text field is laid out in a document: format, size, and what fits.
#pragma once

#include "Text/NSAttributedString.h"

#include <QColor>
#include <QFont>
#include <QSizeF>
#include <Qt>

QT_FORWARD_DECLARE_CLASS(QTextDocument)

namespace Pellarvine::detail {

/// The properties of a text field, and of its widget, that its layout depends on.
struct TextFieldFormat
{
    QFont font;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    Qt::LayoutDirection direction = Qt::LeftToRight; ///< of the widget, not of the text
    bool wraps = true;
    int maximumNumberOfLines = 0; ///< of a text that wraps; 0 for all
    Qt::TextElideMode elideMode = Qt::ElideRight;
    QColor linkColor;
};

bool hasLinks(const NS::AttributedString &text);

/// The text of a document, with a line feed at the end of each line.
QString plainText(const QTextDocument &document);

void applyFormat(QTextDocument &document, const TextFieldFormat &format);

/// Replaces what the document holds. Links look like links unless their attributes say otherwise.
void fillDocument(QTextDocument &document, const NS::AttributedString &text,
                  const TextFieldFormat &format);

/// The height of the lines that may show, in a document that is laid out.
double heightOfLines(const QTextDocument &document, const TextFieldFormat &format);

/// The size of the document's text at a width, -1 for as wide as it wants. Leaves the document laid
/// out as it was, and whoever shows it unaware.
QSizeF sizeOfText(QTextDocument &document, int width, const TextFieldFormat &format);

/// The part of the text that fits: each line of one that does not wrap, else as many lines as there
/// may be. `document` holds the text and is laid out at that width afterwards.
NS::AttributedString fittingText(const NS::AttributedString &text, QTextDocument &document,
                                 int width, const TextFieldFormat &format);

} // namespace Pellarvine::detail
