// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributedString.h>

namespace Pellarvine::detail {
class AttributedStringRewriter;
}

namespace NS {

/// An attributed string that can be changed. Still a value: copies are independent, and one taken
/// as a `NS::AttributedString` is a snapshot.
///
///     NS::MutableAttributedString text(u"From: "_s, { { NS::FontAttributeName, font } });
///     text.append(NS::AttributedString(sender)); // not read as markup
///     text.append(parser.parse(u" **wrote**"_s));
///     text.addAttributes({ { NS::UnderlineStyleAttributeName, 1 } }, 6, sender.size());
///
/// As in the base class, what a range covers outside the text is ignored. An edit costs at most a
/// pass over the runs and the units behind it; appending costs what is appended.
class PELLARVINE_EXPORT MutableAttributedString : public AttributedString
{
public:
    MutableAttributedString() = default; ///< empty
    /// A copy that can be changed; implicit, as nothing is lost.
    MutableAttributedString(const AttributedString &text)
        : AttributedString(text)
    { }
    /// All of `string` with the same attributes.
    explicit MutableAttributedString(const QString &string, const Attributes &attributes = {})
        : AttributedString(string, attributes)
    { }

    /// Puts `text`, with the attributes that it has, in place of a range. With an empty range this
    /// inserts, in front of everything or behind everything if `location` lies outside.
    void replaceCharacters(qsizetype location, qsizetype length, const AttributedString &text);
    /// The same with plain text, which takes the attributes of the first unit that it replaces;
    /// where it replaces none, those of the unit before it or else behind it.
    void replaceCharacters(qsizetype location, qsizetype length, const QString &string);
    /// Adds `text`, with the attributes that it has, behind the last unit.
    void append(const AttributedString &text);

    /// Replaces all attributes in a range.
    void setAttributes(const Attributes &attributes, qsizetype location, qsizetype length);
    /// Adds to the attributes in a range. A value takes the place of one with the same key.
    void addAttributes(const Attributes &attributes, qsizetype location, qsizetype length);
    /// Removes one attribute in a range, from the runs that carry it.
    void removeAttribute(const QString &key, qsizetype location, qsizetype length);

private:
    friend class detail::AttributedStringRewriter;

    template <typename Change>
    void changeRuns(qsizetype location, qsizetype length, Change change);
    qsizetype splitRun(qsizetype location);
    void mergeRuns(qsizetype first, qsizetype last);
};

} // namespace NS

Q_DECLARE_METATYPE(NS::MutableAttributedString)
