// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributedString.h>
#include <pellarvine/Platform/NSParagraphStyle.h>

#include <QTextFormat>
#include <QTextLayout>

QT_FORWARD_DECLARE_CLASS(QTextDocument)

/// @file
/// What an attributed string looks like to Qt's text classes and in HTML. Attributes whose value
/// has the wrong type are left out, like those that are absent; so is kerning that is not finite.
/// All but `html` need a `QGuiApplication`.
///
///     QTextLayout layout(text.string(), baseFont);
///     layout.setFormats(NS::layoutFormats(text));
///     NS::setDocumentText(*edit->document(), text);

namespace NS {

/// One set of attributes as a character format.
PELLARVINE_EXPORT QTextCharFormat charFormat(const Attributes &attributes);

/// The format of a block of a document. Indents follow the direction of the text.
PELLARVINE_EXPORT QTextBlockFormat blockFormat(const ParagraphStyle &style);

/// Alignment, wrapping and direction, for a `QTextLayout`, which knows no indents.
PELLARVINE_EXPORT QTextOption textOption(const ParagraphStyle &style);

/// A format for each run, for `QTextLayout::setFormats`.
PELLARVINE_EXPORT QList<QTextLayout::FormatRange> layoutFormats(const AttributedString &text);

/// Replaces what `document` holds. Each paragraph becomes a block with the paragraph style of its
/// first character, or the document's own where it has none. Ends the document's undo history.
PELLARVINE_EXPORT void setDocumentText(QTextDocument &document, const AttributedString &text);

/// A fragment of HTML: one `span` with inline styles for each run. Its white space is kept by a
/// style of the element around it, `white-space: pre-wrap`. Paragraph styles are left out. What
/// HTML cannot hold, a zero or half a surrogate pair, becomes U+FFFD.
PELLARVINE_EXPORT QString html(const AttributedString &text);

} // namespace NS
