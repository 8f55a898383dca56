// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSMutableAttributedString.h>

#include <QString>
#include <QStringList>

namespace Pellarvine {

class MarkupParser;
namespace detail {
class GraphemeClusterCounter;
}

/// One rule of a markup grammar: a regular expression for a construct, and the attributes of the
/// text in it. `MarkupParser` runs its rules one after another, each over the whole text.
///
///     class Spoiler : public Pellarvine::Parser // ||text||
///     {
///         QString regex() const override { return u"(\\|\\|)(.+?)(\\|\\|)"_s; }
///         int principalCaptureGroup() const override { return 1; }
///         NS::Attributes provideAttributes(const QStringList &,
///                                          const Pellarvine::MarkupParser &) const override
///         {
///             return { { NS::BackgroundColorAttributeName, QColor(Qt::black) } };
///         }
///     };
///
/// A rule is immutable and may serve many parsers.
class PELLARVINE_EXPORT Parser
{
public:
    virtual ~Parser();

    /// In ICU's syntax, used without options. One that does not compile stops the process.
    virtual QString regex() const = 0;

    /// Which capture group holds the text that stays; the rest of the match goes. Counted from 0
    /// without the whole match. One that `regex` does not have stops the process. A match in
    /// which the group took no part, or lies outside the match, stays as typed.
    virtual int principalCaptureGroup() const = 0;

    /// What to add to the attributes of the text that stays. `captures` are the texts of the
    /// capture groups, empty for one that took no part. Called for every match, in the order of the
    /// text.
    virtual NS::Attributes provideAttributes(const QStringList &captures,
                                             const MarkupParser &parser) const = 0;

    /// Runs this rule over `attributedString`, in place and once from left to right. Only as many
    /// UTF-16 units are searched as the text has user-perceived characters, so that in a text with
    /// emoji or combining marks a construct at the very end stays as typed. That is meant: texts
    /// look the same wherever the grammar is used.
    void process(NS::MutableAttributedString &attributedString, const MarkupParser &parser) const;

private:
    friend class MarkupParser;
    void process(NS::MutableAttributedString &attributedString, const MarkupParser &parser,
                 detail::GraphemeClusterCounter &counter) const;
};

} // namespace Pellarvine
