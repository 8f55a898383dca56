// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributedString.h>

namespace Pellarvine::detail {
class AttributedStringRewriter;
}

namespace NS {

/// An attributed string that can be changed. It is a reentrant value: copies are independent, and a
/// copy to `NS::AttributedString` is a snapshot.
///
///     NS::MutableAttributedString text(u"From: "_s, { { NS::FontAttributeName, font } });
///     text.append(NS::AttributedString(sender)); // not read as markup
///     text.append(parser.parse(u" **wrote**"_s));
///     text.addAttributes({ { NS::UnderlineStyleAttributeName, 1 } }, 6, sender.size());
///
/// Ranges may reach beyond the text, as in the base class. An edit takes at most one pass over the
/// runs and the units behind it; appending takes time in proportion to the appended text.
class PELLARVINE_EXPORT MutableAttributedString : public AttributedString
{
public:
    MutableAttributedString() = default; ///< empty
    /// A copy that can be changed. Implicit, because nothing is lost.
    MutableAttributedString(const AttributedString &text)
        : AttributedString(text)
    { }
    /// All of `string` with the same attributes.
    explicit MutableAttributedString(const QString &string, const Attributes &attributes = {})
        : AttributedString(string, attributes)
    { }

    /// Replaces a range by `text` and its attributes. An empty range inserts. If `location` is
    /// outside the text, `text` is inserted at the nearer end.
    void replaceCharacters(qsizetype location, qsizetype length, const AttributedString &text);
    /// The same with plain text. It gets the attributes of the first unit that it replaces, else of
    /// the unit before it, else of the unit behind it.
    void replaceCharacters(qsizetype location, qsizetype length, const QString &string);
    /// Appends `text` with its attributes.
    void append(const AttributedString &text);

    /// Replaces all attributes in a range.
    void setAttributes(const Attributes &attributes, qsizetype location, qsizetype length);
    /// Adds attributes to a range. A value replaces that of the same key.
    void addAttributes(const Attributes &attributes, qsizetype location, qsizetype length);
    /// Removes one attribute from a range.
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
