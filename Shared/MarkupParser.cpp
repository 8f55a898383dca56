// SPDX-License-Identifier: MIT
#include "Shared/MarkupParser.h"

#include "Shared/Font.h"
#include "Shared/GraphemeClusters.h"
#include "Shared/InlineParsers.h"
#include "Text/NSFont.h"
#include "Text/NSFontManager.h"
#include "Text/NSMutableAttributedString.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

QFont defaultMonospaceFont(double size)
{
    return NS::fontWithName(u"Menlo-Regular"_s, size).value_or(NS::systemFont(size));
}

// The number from 1 to `most` that a text begins with, of one digit or two, and how many they are;
// 0 for none.
std::pair<qsizetype, qsizetype> placeNumber(QStringView text, qsizetype most)
{
    qsizetype number = 0;
    std::pair<qsizetype, qsizetype> longest {};
    for (qsizetype i = 0; i < std::min<qsizetype>(2, text.size()); ++i) {
        const char16_t digit = text.at(i).unicode();
        if (digit < u'0' || digit > u'9')
            break;
        number = 10 * number + (digit - u'0');
        if (number >= 1 && number <= most && text.front() != u'0')
            longest = { number, i + 1 };
    }
    return longest;
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

NS::AttributedString MarkupParser::styled(const QString &format, const QStringList &arguments) const
{
    const NS::AttributedString text = parse(format);
    const QStringView string = text.string();
    NS::MutableAttributedString result;
    qsizetype rest = 0; // of the text that is not in the result
    for (qsizetype at = string.indexOf(u'%'); at >= 0; at = string.indexOf(u'%', at)) {
        const auto [number, length] = placeNumber(string.sliced(at + 1), arguments.size());
        if (number == 0) {
            ++at;
            continue;
        }
        result.append(text.attributedSubstring(rest, at - rest));
        result.append(NS::AttributedString(arguments.at(number - 1), text.attributes(at)));
        at += 1 + length;
        rest = at;
    }
    result.append(text.attributedSubstring(rest, text.length() - rest));
    return result;
}

QString MarkupParser::stripped(const QString &string) const
{
    return parse(string).string();
}

} // namespace Pellarvine
