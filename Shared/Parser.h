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
/// A rule is immutable and may serve many parsers. It is called in the thread that parses.
class PELLARVINE_EXPORT Parser
{
public:
    virtual ~Parser();

    /// The pattern, in ICU's syntax without options. A pattern that does not compile stops the
    /// process.
    virtual QString regex() const = 0;

    /// The capture group with the text that is kept; the rest of the match is removed. Counted from
    /// 0, without the whole match. A number without a group stops the process. If the group did not
    /// take part in a match, or lies outside it, the match is kept as typed.
    virtual int principalCaptureGroup() const = 0;

    /// The attributes to add to the text that is kept. `captures` are the texts of the capture
    /// groups, empty for a group that did not take part. Called for each match, in the order of the
    /// text.
    virtual NS::Attributes provideAttributes(const QStringList &captures,
                                             const MarkupParser &parser) const = 0;

    /// Applies this rule to `attributedString`, once from left to right. The number of UTF-16 units
    /// that are searched is the number of user-perceived characters of the text. Therefore a
    /// construct at the end of a text with emoji or combining marks is kept as typed. This is
    /// intended: texts look the same wherever the grammar is used.
    void process(NS::MutableAttributedString &attributedString, const MarkupParser &parser) const;

private:
    friend class MarkupParser;
    void process(NS::MutableAttributedString &attributedString, const MarkupParser &parser,
                 detail::GraphemeClusterCounter &counter) const;
};

} // namespace Pellarvine
