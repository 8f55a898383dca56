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
/// There is no escape character. To show a text that is not yours as it is, give it to styled()
/// instead of putting it into the markup.
///
/// A parser serves any number of texts; its settings count from the next `parse`. Needs a
/// `QGuiApplication`, for the fonts. One thread at a time.
class PELLARVINE_EXPORT MarkupParser
{
public:
    /// The system's fonts at its size, black, the default paragraph style, the nine rules.
    MarkupParser();
    /// The same with fonts after `baseFont`: bold is one step heavier, italic its italic variant,
    /// monospace the default one at its size.
    explicit MarkupParser(const QFont &baseFont);
    /// The same with these fonts, exactly as they are.
    MarkupParser(const QFont &font, const QFont &boldFont, const QFont &italicFont,
                 const QFont &monospaceFont);
    MarkupParser(MarkupParser &&) noexcept;
    MarkupParser &operator=(MarkupParser &&) noexcept;
    ~MarkupParser();

    /// What the whole text is set in before the rules run.
    const QFont &font() const;
    void setFont(const QFont &font);
    /// Of the text; default: black.
    const NS::Color &color() const;
    void setColor(const NS::Color &color);
    /// Of every paragraph; default: the default style.
    const NS::ParagraphStyle &paragraphStyle() const;
    void setParagraphStyle(const NS::ParagraphStyle &paragraphStyle);

    /// What `**` sets. The fonts of `**`, `//` and the backquote take each other's place: the rule
    /// that runs last, the backquote's, wins.
    const QFont &boldFont() const;
    void setBoldFont(const QFont &font);
    /// What `//` sets.
    const QFont &italicFont() const;
    void setItalicFont(const QFont &font);
    /// What the backquote sets.
    const QFont &monospaceFont() const;
    void setMonospaceFont(const QFont &font);

    /// The grammar: the rules in the order in which they run. None may be null.
    const QList<std::shared_ptr<const Parser>> &parsers() const;
    void setParsers(const QList<std::shared_ptr<const Parser>> &parsers);

    /// Takes any text, in time linear in its length. Markup that is not complete stays as typed,
    /// and an argument that cannot be read has a fallback: black, no kerning, the base font.
    NS::AttributedString parse(const QString &string) const;

    /// Parses `format` and puts the arguments in the places of `%1` to `%99`, as they are: plain
    /// text in the style of its place, whatever markup it may contain.
    ///
    ///     const NS::AttributedString moved =
    ///             parser.styled(tr("**%1** could not be moved to `%2`"), { fileName, folder });
    ///
    /// The longest number that names an argument counts: of three, `%12` is the first, and a "2".
    /// What names none stays as typed.
    NS::AttributedString styled(const QString &format, const QStringList &arguments) const;

    /// What is left of a text without its markup, for search and for screen readers.
    QString stripped(const QString &string) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
