// SPDX-License-Identifier: MIT
#include "Shared/Parser.h"

#include "Base/Failure.h"
#include "Shared/DelimiterPattern.h"
#include "Shared/GraphemeClusters.h"
#include "Shared/InlineParsers.h"
#include "Shared/RegularExpression.h"
#include "Text/NSAttributedStringRewriter.h"

namespace Pellarvine {

using detail::PatternMatch;

namespace {

/// Asks a rule for the attributes of each match. The nine built-in rules depend on the captures
/// alone and are not asked twice in a row for equal ones. The memory of the captures is reused.
class AttributeProvider
{
public:
    AttributeProvider(const Parser &rule, const MarkupParser &parser)
        : m_rule(rule)
        , m_parser(parser)
        , m_isOfTheNine(dynamic_cast<const detail::TwoSidedParser *>(&rule)
                        || dynamic_cast<const detail::BraceParser *>(&rule))
    { }

    const NS::Attributes &attributes(QStringView source, const PatternMatch &match)
    {
        bool isNew = !m_isOfTheNine || m_captures.isEmpty();
        m_captures.resize(qsizetype(match.size()) - 1);
        for (qsizetype i = 0; i < m_captures.size(); ++i) {
            const auto [location, length] = match[i + 1];
            const QStringView text = location < 0 ? QStringView() : source.sliced(location, length);
            if (m_captures.at(i) == text)
                continue;
            m_captures[i].resize(0);
            m_captures[i].append(text);
            isNew = true;
        }
        if (isNew)
            m_attributes = m_rule.provideAttributes(m_captures, m_parser);
        return m_attributes;
    }

private:
    const Parser &m_rule;
    const MarkupParser &m_parser;
    const bool m_isOfTheNine;
    QStringList m_captures;
    NS::Attributes m_attributes;
};

// Visits the matches of `findNext`. The part of the text before the last match has been rewritten
// already. If matches can look back, `snapshot` is a copy of the original.
template <typename FindNext>
void rewrite(NS::MutableAttributedString &text, const QString *snapshot, const Parser &rule,
             const MarkupParser &parser, FindNext findNext)
{
    PatternMatch match;
    if (!findNext(text.string(), match))
        return;
    const qsizetype principalGroup = qsizetype(rule.principalCaptureGroup()) + 1;
    if (principalGroup < 1 || principalGroup >= qsizetype(match.size()))
        detail::fatalError("No such capture group in " + rule.regex().toStdString());
    AttributeProvider provider(rule, parser);
    detail::AttributedStringRewriter rewriter(text);
    const QStringView source = snapshot ? QStringView(*snapshot) : rewriter.source();
    do {
        const auto whole = match[0];
        const auto principal = match[principalGroup];
        // cppcheck-suppress mismatchingContainerExpression; these are ranges of text, not iterators
        if (principal.location < whole.location || principal.end() > whole.end())
            continue;
        const NS::Attributes &attributes = provider.attributes(source, match);
        rewriter.keep(whole.location);
        rewriter.drop(principal.location);
        rewriter.keep(principal.end(), attributes);
        rewriter.drop(whole.end());
    } while (findNext(source, match));
    rewriter.finish();
}

} // namespace

Parser::~Parser() = default;

void Parser::process(NS::MutableAttributedString &attributedString,
                     const MarkupParser &parser) const
{
    detail::GraphemeClusterCounter counter;
    process(attributedString, parser, counter);
}

void Parser::process(NS::MutableAttributedString &attributedString, const MarkupParser &parser,
                     detail::GraphemeClusterCounter &counter) const
{
    const QString pattern = regex();
    const qsizetype length = counter.count(attributedString.string());
    if (const auto delimiters = detail::DelimiterPattern::recognized(pattern)) {
        qsizetype from = 0;
        rewrite(attributedString, nullptr, *this, parser,
                [&](QStringView source, PatternMatch &match) {
                    const bool isFound = delimiters->find(source.first(length), from, match);
                    from = isFound ? match[0].end() : length;
                    return isFound;
                });
    } else {
        const QString snapshot = attributedString.string();
        detail::RegularExpression expression(pattern, snapshot, length);
        rewrite(attributedString, &snapshot, *this, parser,
                [&](QStringView, PatternMatch &match) { return expression.findNext(match); });
    }
}

} // namespace Pellarvine
