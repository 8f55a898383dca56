// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributes.h>

#include <QList>
#include <QString>

namespace NS {

/// A text with attributes, such as fonts, colours and links, on ranges of it. Locations and lengths
/// count UTF-16 units, as `QString` does. It is a value, implicitly shared and reentrant. To change
/// it, copy it to a `NS::MutableAttributedString`.
///
///     const NS::AttributedString text = parser.parse(u"a **b** c"_s);
///     for (const NS::AttributedString::Run &run : text.runs())
///         draw(text.string().sliced(run.location, run.length), run.attributes);
///
/// Ranges may reach beyond the text: the part outside is ignored, and a location outside has no
/// attributes.
class PELLARVINE_EXPORT AttributedString
{
public:
    /// A range of units with equal attributes.
    struct Run
    {
        qsizetype location = 0; ///< of its first unit
        qsizetype length = 0; ///< in units
        Attributes attributes; ///< of each of its units

        qsizetype end() const { return location + length; } ///< the location behind its last unit
        friend bool operator==(const Run &, const Run &) = default;
    };

    AttributedString() = default; ///< empty
    /// All of `string` with the same attributes.
    explicit AttributedString(const QString &string, const Attributes &attributes = {});

    const QString &string() const { return m_string; } ///< the text alone
    qsizetype length() const { return m_string.size(); } ///< in UTF-16 units
    bool isEmpty() const { return m_string.isEmpty(); } ///< has no text

    /// The runs from left to right. They cover the text without gaps, none is empty, and neighbours
    /// differ. A range without attributes is a run too; an empty text has no runs.
    const QList<Run> &runs() const { return m_runs; }

    /// The attributes of the unit at `location`, in logarithmic time. If `run` is not null, it
    /// receives the run of that unit, or an empty one.
    Attributes attributes(qsizetype location, Run *run = nullptr) const;
    /// One attribute of the unit at `location`; invalid if it is absent.
    QVariant attribute(const QString &key, qsizetype location) const;

    /// The text and the attributes of a range.
    AttributedString attributedSubstring(qsizetype location, qsizetype length) const;

    /// Equal texts with equal attributes.
    friend bool operator==(const AttributedString &, const AttributedString &) = default;

protected:
    /// The index of the run that the unit at `location`, inside the text, stands in.
    qsizetype runIndex(qsizetype location) const;

    QString m_string; ///< the text
    QList<Run> m_runs; ///< as runs() promises them
};

} // namespace NS

Q_DECLARE_TYPEINFO(NS::AttributedString::Run, Q_RELOCATABLE_TYPE);
Q_DECLARE_METATYPE(NS::AttributedString)
