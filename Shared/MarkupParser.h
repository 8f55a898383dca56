// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributedString.h>
#include <pellarvine/Platform/NSColor.h>
#include <pellarvine/Platform/NSParagraphStyle.h>

#include <QFont>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace Pellarvine {

class Parser;

/// Turns a text with inline markup into styled text. docs/markup.md has the grammar.
///
///     Pellarvine::MarkupParser parser(label.font());
///     parser.setColor(NS::Color(label.palette().color(QPalette::Text)));
///     const NS::AttributedString text = parser.parse(u"Saved **12** files in `~/notes`"_s);
///     layout.setText(text.string());
///     layout.setFormats(NS::layoutFormats(text));
///
/// There is no escape character. To show a text that may contain markup as plain text, pass it to
/// styled() as an argument.
///
/// A parser can be used for any number of texts. Its settings take effect with the next `parse`.
/// Needs a `QGuiApplication`, for the fonts. One thread at a time.
class PELLARVINE_EXPORT MarkupParser
{
public:
    /// Uses the system's fonts and size, black, the default paragraph style, and the nine rules.
    MarkupParser();
    /// The same with fonts derived from `baseFont`: bold is one step heavier, italic is its italic
    /// variant, and monospace is the default one in the same size.
    explicit MarkupParser(const QFont &baseFont);
    /// The same with exactly these fonts.
    MarkupParser(const QFont &font, const QFont &boldFont, const QFont &italicFont,
                 const QFont &monospaceFont);
    MarkupParser(MarkupParser &&) noexcept;
    MarkupParser &operator=(MarkupParser &&) noexcept;
    ~MarkupParser();

    /// The font of text without markup.
    const QFont &font() const;
    void setFont(const QFont &font);
    /// The colour of the text. Default: black.
    const NS::Color &color() const;
    void setColor(const NS::Color &color);
    /// The style of each paragraph. Default: the default style.
    const NS::ParagraphStyle &paragraphStyle() const;
    void setParagraphStyle(const NS::ParagraphStyle &paragraphStyle);

    /// The font of `**`. The fonts of `**`, `//` and the backquote replace each other: the rule
    /// that runs last, that of the backquote, wins.
    const QFont &boldFont() const;
    void setBoldFont(const QFont &font);
    /// The font of `//`.
    const QFont &italicFont() const;
    void setItalicFont(const QFont &font);
    /// The font of the backquote.
    const QFont &monospaceFont() const;
    void setMonospaceFont(const QFont &font);

    /// The grammar: the rules in the order in which they run. None may be null.
    const QList<std::shared_ptr<const Parser>> &parsers() const;
    void setParsers(const QList<std::shared_ptr<const Parser>> &parsers);

    /// Parses any text, in linear time. Incomplete markup is kept as typed. A colour, kerning or
    /// font that cannot be read is black, 0 or the base font.
    NS::AttributedString parse(const QString &string) const;

    /// Parses `format` and replaces `%1` to `%99` by the arguments. They are plain text in the
    /// style of their place, even if they contain markup.
    ///
    ///     const NS::AttributedString moved =
    ///             parser.styled(tr("**%1** could not be moved to `%2`"), { fileName, folder });
    ///
    /// The longest number with an argument counts: with three arguments, `%12` is the first one and
    /// a "2". A number without an argument is kept as typed.
    NS::AttributedString styled(const QString &format, const QStringList &arguments) const;

    /// The text without its markup, for searching and for screen readers.
    QString stripped(const QString &string) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
