// SPDX-License-Identifier: MIT
#include "Shared/InlineParsers.h"

#include "Shared/MarkupParser.h"
#include "Shared/NSColor+Color.h"
#include "Text/NSFont.h"
#include "Text/NSFontManager.h"

#include <algorithm>
#include <cstdlib>
#include <locale.h>
#include <optional>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// Converts as the C library does, including hexadecimal numbers, "inf" and "nan". Accepts only a
// whole text, and ignores the locale.
std::optional<double> number(QStringView text)
{
    static const locale_t cLocale = newlocale(LC_NUMERIC_MASK, "C", nullptr);
    const bool isPrintable = std::all_of(text.begin(), text.end(), [](QChar character) {
        return character > u' ' && character < QChar(0x7F);
    });
    if (text.isEmpty() || !isPrintable)
        return {};
    const QByteArray bytes = text.toLatin1();
    char *end = nullptr;
    const double value = strtod_l(bytes.constData(), &end, cLocale);
    return end == bytes.constEnd() ? std::optional(value) : std::nullopt;
}

// The text behind the opening delimiter of a construct in braces.
QString argument(const QStringList &captures)
{
    return captures.value(1);
}

QVariant colorOrBlack(const QString &hex)
{
    return QVariant::fromValue(colorWithHex(hex).value_or(NS::Color::black()));
}

} // namespace

BoldParser::BoldParser()
    : InlineParser(uR"((\*{2})(.+?)(\*{2}))"_s)
{ }

NS::Attributes BoldParser::provideAttributes(const QStringList &, const MarkupParser &parser) const
{
    return { { NS::FontAttributeName, parser.boldFont() } };
}

ItalicParser::ItalicParser()
    : InlineParser(uR"((/{2})(.+?)(/{2}))"_s)
{ }

NS::Attributes ItalicParser::provideAttributes(const QStringList &,
                                               const MarkupParser &parser) const
{
    return { { NS::FontAttributeName, parser.italicFont() } };
}

UnderlineParser::UnderlineParser()
    : InlineParser(u"(_{2})(.+?)(_{2})"_s)
{ }

NS::Attributes UnderlineParser::provideAttributes(const QStringList &, const MarkupParser &) const
{
    return { { NS::UnderlineStyleAttributeName, 1 } };
}

StrikethroughParser::StrikethroughParser()
    : InlineParser(u"(~{2})(.+?)(~{2})"_s)
{ }

NS::Attributes StrikethroughParser::provideAttributes(const QStringList &,
                                                      const MarkupParser &) const
{
    return { { NS::StrikethroughStyleAttributeName, 1 } };
}

MonospaceParser::MonospaceParser()
    : InlineParser(u"(`)(.+?)(`)"_s)
{ }

NS::Attributes MonospaceParser::provideAttributes(const QStringList &,
                                                  const MarkupParser &parser) const
{
    return { { NS::FontAttributeName, parser.monospaceFont() } };
}

ForegroundColorParser::ForegroundColorParser()
    : InlineParser(uR"((\{#)(.+?)(\|)(.+?)(\}))"_s)
{ }

NS::Attributes ForegroundColorParser::provideAttributes(const QStringList &captures,
                                                        const MarkupParser &) const
{
    return { { NS::ForegroundColorAttributeName, colorOrBlack(argument(captures)) } };
}

BackgroundColorParser::BackgroundColorParser()
    : InlineParser(uR"((\{bg#)(.+?)(\|)(.+?)(\}))"_s)
{ }

NS::Attributes BackgroundColorParser::provideAttributes(const QStringList &captures,
                                                        const MarkupParser &) const
{
    return { { NS::BackgroundColorAttributeName, colorOrBlack(argument(captures)) } };
}

KerningParser::KerningParser()
    : InlineParser(uR"((\{k)(.+?)(\|)(.+?)(\}))"_s)
{ }

NS::Attributes KerningParser::provideAttributes(const QStringList &captures,
                                                const MarkupParser &) const
{
    return { { NS::KernAttributeName, number(argument(captures)).value_or(0.0) } };
}

FontParser::FontParser()
    : InlineParser(uR"((\{font:)(.+?)(\|)(.+?)(\}))"_s)
{ }

// Name, size, and more behind a second comma, which is ignored. White space is part of them.
NS::Attributes FontParser::provideAttributes(const QStringList &captures,
                                             const MarkupParser &parser) const
{
    const QString parts = argument(captures);
    const QString name = parts.section(u',', 0, 0);
    const double size =
            number(parts.section(u',', 1, 1)).value_or(NS::FontManager::pointSize(parser.font()));
    return { { NS::FontAttributeName, NS::fontWithName(name, size).value_or(parser.font()) } };
}

const QList<std::shared_ptr<const Parser>> &inlineParsers()
{
    static const QList<std::shared_ptr<const Parser>> parsers {
        std::make_shared<BoldParser>(),
        std::make_shared<ItalicParser>(),
        std::make_shared<UnderlineParser>(),
        std::make_shared<StrikethroughParser>(),
        std::make_shared<MonospaceParser>(),
        std::make_shared<ForegroundColorParser>(),
        std::make_shared<BackgroundColorParser>(),
        std::make_shared<KerningParser>(),
        std::make_shared<FontParser>(),
    };
    return parsers;
}

} // namespace Pellarvine::detail
