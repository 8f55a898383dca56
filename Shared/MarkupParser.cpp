// SPDX-License-Identifier: MIT
#include "Shared/MarkupParser.h"

#include "Shared/Font.h"
#include "Shared/GraphemeClusters.h"
#include "Shared/InlineParsers.h"
#include "Text/NSFont.h"
#include "Text/NSFontManager.h"
#include "Text/NSMutableAttributedString.h"

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

QFont defaultMonospaceFont(double size)
{
    return NS::fontWithName(u"Menlo-Regular"_s, size).value_or(NS::systemFont(size));
}

} // namespace

struct MarkupParser::Private
{
    QFont font;
    QFont boldFont;
    QFont italicFont;
    QFont monospaceFont;
    NS::Color color;
    NS::ParagraphStyle paragraphStyle;
    QList<std::shared_ptr<const Parser>> parsers = detail::inlineParsers();
};

MarkupParser::MarkupParser()
    : d(std::make_unique<Private>())
{
    const double size = NS::systemFontSize();
    d->font = NS::systemFont(size);
    d->boldFont = NS::boldSystemFont(size);
    d->italicFont = NS::FontManager::convertToHaveTrait(d->font, NS::FontTraitMask::italic);
    d->monospaceFont = defaultMonospaceFont(size);
}

MarkupParser::MarkupParser(const QFont &baseFont)
    : MarkupParser(baseFont, heavier(baseFont), italicVariant(baseFont),
                   withSize(defaultMonospaceFont(NS::systemFontSize()),
                            NS::FontManager::pointSize(baseFont)))
{ }

MarkupParser::MarkupParser(const QFont &font, const QFont &boldFont, const QFont &italicFont,
                           const QFont &monospaceFont)
    : d(std::make_unique<Private>())
{
    d->font = font;
    d->boldFont = boldFont;
    d->italicFont = italicFont;
    d->monospaceFont = monospaceFont;
}

MarkupParser::MarkupParser(MarkupParser &&) noexcept = default;
MarkupParser &MarkupParser::operator=(MarkupParser &&) noexcept = default;
MarkupParser::~MarkupParser() = default;

const QFont &MarkupParser::font() const
{
    return d->font;
}

void MarkupParser::setFont(const QFont &font)
{
    d->font = font;
}

const NS::Color &MarkupParser::color() const
{
    return d->color;
}

void MarkupParser::setColor(const NS::Color &color)
{
    d->color = color;
}

const NS::ParagraphStyle &MarkupParser::paragraphStyle() const
{
    return d->paragraphStyle;
}

void MarkupParser::setParagraphStyle(const NS::ParagraphStyle &paragraphStyle)
{
    d->paragraphStyle = paragraphStyle;
}

const QFont &MarkupParser::boldFont() const
{
    return d->boldFont;
}

void MarkupParser::setBoldFont(const QFont &font)
{
    d->boldFont = font;
}

const QFont &MarkupParser::italicFont() const
{
    return d->italicFont;
}

void MarkupParser::setItalicFont(const QFont &font)
{
    d->italicFont = font;
}

const QFont &MarkupParser::monospaceFont() const
{
    return d->monospaceFont;
}

void MarkupParser::setMonospaceFont(const QFont &font)
{
    d->monospaceFont = font;
}

const QList<std::shared_ptr<const Parser>> &MarkupParser::parsers() const
{
    return d->parsers;
}

void MarkupParser::setParsers(const QList<std::shared_ptr<const Parser>> &parsers)
{
    d->parsers = parsers;
}

NS::AttributedString MarkupParser::parse(const QString &string) const
{
    const NS::Attributes base {
        { NS::ForegroundColorAttributeName, QVariant::fromValue(d->color) },
        { NS::FontAttributeName, d->font },
        { NS::ParagraphStyleAttributeName, QVariant::fromValue(d->paragraphStyle) },
    };
    NS::MutableAttributedString text(string, base);
    detail::GraphemeClusterCounter counter;
    for (const auto &parser : d->parsers)
        parser->process(text, *this, counter);
    return text;
}

QString MarkupParser::stripped(const QString &string) const
{
    return parse(string).string();
}

} // namespace Pellarvine
