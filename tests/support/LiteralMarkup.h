// SPDX-License-Identifier: MIT
#pragma once

#include "Shared/RegularExpression.h"

#include <pellarvine/Platform/NSMutableAttributedString.h>
#include <pellarvine/Shared/MarkupParser.h>
#include <pellarvine/Shared/Parser.h>

#include <unicode/brkiter.h>

#include <memory>

// The markup grammar implemented literally: each rule is matched by ICU, and each match is one edit
// in place. It is slow, and the library's parser is compared with it.
namespace LiteralMarkup {

inline qsizetype characterCount(const QString &string)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> iterator(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    const icu::UnicodeString text(false, reinterpret_cast<const char16_t *>(string.utf16()),
                                  int32_t(string.size()));
    iterator->setText(text);
    qsizetype count = 0;
    while (iterator->next() != icu::BreakIterator::DONE)
        ++count;
    return count;
}

inline void process(NS::MutableAttributedString &text, const Pellarvine::Parser &rule,
                    const Pellarvine::MarkupParser &parser)
{
    const QString snapshot = text.string();
    Pellarvine::detail::RegularExpression expression(rule.regex(), snapshot,
                                                     characterCount(snapshot));
    Pellarvine::detail::PatternMatch match;
    qsizetype shift = 0;
    while (expression.findNext(match)) {
        const auto whole = match[0];
        const auto principal = match[rule.principalCaptureGroup() + 1];
        text.replaceCharacters(
                whole.location - shift, whole.length,
                text.attributedSubstring(principal.location - shift, principal.length));
        QStringList captures;
        for (qsizetype group = 1; group < qsizetype(match.size()); ++group)
            captures.append(snapshot.mid(match[group].location, match[group].length));
        text.addAttributes(rule.provideAttributes(captures, parser), whole.location - shift,
                           principal.length);
        shift += whole.length - principal.length;
    }
}

inline NS::AttributedString parse(const Pellarvine::MarkupParser &parser, const QString &string)
{
    NS::MutableAttributedString text(string);
    text.addAttributes(
            { { NS::ForegroundColorAttributeName, QVariant::fromValue(parser.color()) },
              { NS::FontAttributeName, parser.font() },
              { NS::ParagraphStyleAttributeName, QVariant::fromValue(parser.paragraphStyle()) } },
            0, text.length());
    for (const auto &rule : parser.parsers())
        process(text, *rule, parser);
    return text;
}

} // namespace LiteralMarkup
