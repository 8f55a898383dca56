// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributedString.h>
#include <pellarvine/Platform/NSParagraphStyle.h>

#include <QTextFormat>
#include <QTextLayout>

QT_FORWARD_DECLARE_CLASS(QTextDocument)

/// @file
/// Converts attributed strings for Qt's text classes and to HTML. Attributes with a value of the
/// wrong type are ignored; so is kerning that is not finite. All functions are reentrant, and all
/// but `html` need a `QGuiApplication`.
///
///     QTextLayout layout(text.string(), baseFont);
///     layout.setFormats(NS::layoutFormats(text));
///     NS::setDocumentText(*edit->document(), text);

namespace NS {

/// The character format for a set of attributes.
PELLARVINE_EXPORT QTextCharFormat charFormat(const Attributes &attributes);

/// The block format for a paragraph style. Indents follow the direction of the text.
PELLARVINE_EXPORT QTextBlockFormat blockFormat(const ParagraphStyle &style);

/// Alignment, wrapping and direction for a `QTextLayout`. It has no indents.
PELLARVINE_EXPORT QTextOption textOption(const ParagraphStyle &style);

/// A format for each run, for `QTextLayout::setFormats`.
PELLARVINE_EXPORT QList<QTextLayout::FormatRange> layoutFormats(const AttributedString &text);

/// Replaces the contents of `document`. Each paragraph becomes a block with the paragraph style of
/// its first character, or the document's own format if that has none. Clears the undo history.
PELLARVINE_EXPORT void setDocumentText(QTextDocument &document, const AttributedString &text);

/// A fragment of HTML: for each run, a `span`, or an `a` for a link, with inline styles. Put it
/// into an element with the style `white-space: pre-wrap`, which keeps white space. Paragraph
/// styles are left out. Characters that HTML cannot contain, zero and unpaired surrogates, become
/// U+FFFD.
PELLARVINE_EXPORT QString html(const AttributedString &text);

} // namespace NS
