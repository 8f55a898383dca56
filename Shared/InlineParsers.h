// SPDX-License-Identifier: MIT
// Not API: the nine rules of the markup grammar.
#pragma once

#include "Shared/Parser.h"

#include <QList>

#include <memory>

namespace Pellarvine::detail {

/// The base of the nine rules: a pattern, and a principal group that is a constant of the type.
template <int group>
class InlineParser : public Parser
{
public:
    QString regex() const final { return m_regex; }
    int principalCaptureGroup() const final { return group; }

protected:
    explicit InlineParser(const QString &regex)
        : m_regex(regex)
    { }

private:
    const QString m_regex;
};

/// Captures: opening delimiter, text, closing delimiter.
using TwoSidedParser = InlineParser<1>;
/// Captures: opening delimiter, argument, "|", text, "}".
using BraceParser = InlineParser<3>;

/// `**text**`: the parser's bold font.
class PELLARVINE_INTERNAL_EXPORT BoldParser final : public TwoSidedParser
{
public:
    BoldParser();
    NS::Attributes provideAttributes(const QStringList &captures,
                                     const MarkupParser &parser) const override;
};

/// `//text//`: the parser's italic font.
class PELLARVINE_INTERNAL_EXPORT ItalicParser final : public TwoSidedParser
{
public:
    ItalicParser();
    NS::Attributes provideAttributes(const QStringList &captures,
                                     const MarkupParser &parser) const override;
};

/// `__text__`: a single line under the text.
class PELLARVINE_INTERNAL_EXPORT UnderlineParser final : public TwoSidedParser
{
public:
    UnderlineParser();
    NS::Attributes provideAttributes(const QStringList &captures,
                                     const MarkupParser &parser) const override;
};

/// `~~text~~`: a single line through the text.
class PELLARVINE_INTERNAL_EXPORT StrikethroughParser final : public TwoSidedParser
{
public:
    StrikethroughParser();
    NS::Attributes provideAttributes(const QStringList &captures,
                                     const MarkupParser &parser) const override;
};

/// One backquote on each side: the parser's monospace font.
class PELLARVINE_INTERNAL_EXPORT MonospaceParser final : public TwoSidedParser
{
public:
    MonospaceParser();
    NS::Attributes provideAttributes(const QStringList &captures,
                                     const MarkupParser &parser) const override;
};

/// `{#RRGGBB|text}`: black if the colour cannot be read.
class PELLARVINE_INTERNAL_EXPORT ForegroundColorParser final : public BraceParser
{
public:
    ForegroundColorParser();
    NS::Attributes provideAttributes(const QStringList &captures,
                                     const MarkupParser &parser) const override;
};

/// `{bg#RRGGBB|text}`: black if the colour cannot be read.
class PELLARVINE_INTERNAL_EXPORT BackgroundColorParser final : public BraceParser
{
public:
    BackgroundColorParser();
    NS::Attributes provideAttributes(const QStringList &captures,
                                     const MarkupParser &parser) const override;
};

/// `{k1.5|text}`: 0 if the number cannot be read.
class PELLARVINE_INTERNAL_EXPORT KerningParser final : public BraceParser
{
public:
    KerningParser();
    NS::Attributes provideAttributes(const QStringList &captures,
                                     const MarkupParser &parser) const override;
};

/// `{font:Name,Size|text}`: the parser's font if no font has that name, its size if none is
/// given.
class PELLARVINE_INTERNAL_EXPORT FontParser final : public BraceParser
{
public:
    FontParser();
    NS::Attributes provideAttributes(const QStringList &captures,
                                     const MarkupParser &parser) const override;
};

/// The nine, in the order in which they run. Made once.
PELLARVINE_PRIVATE_EXPORT const QList<std::shared_ptr<const Parser>> &inlineParsers();

} // namespace Pellarvine::detail
