// SPDX-License-Identifier: MIT
// Not API: the format of a text field's text, and the document that an editor shows it by.
#pragma once

#include "Text/NSAttributedString.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QUrl>
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

/// The absolute alignment. The leading side is the widget's, not that of the text's script, so that
/// fields below each other line up.
Qt::Alignment horizontalAlignment(Qt::Alignment alignment, Qt::LayoutDirection direction);

bool hasLinks(const NS::AttributedString &text);

/// A link in a document. It can have several fragments, for a bold word in it, for example.
struct TextLink
{
    int start = 0;
    int end = 0;
    QString text;
    QUrl url;
};

QList<TextLink> linksOf(const QTextDocument &document);

/// The text of a document, with a line feed at the end of each line.
QString plainText(const QTextDocument &document);

void applyFormat(QTextDocument &document, const TextFieldFormat &format);

/// Replaces what the document holds. Links look like links unless their attributes say otherwise.
void fillDocument(QTextDocument &document, const NS::AttributedString &text,
                  const TextFieldFormat &format);

} // namespace Pellarvine::detail
