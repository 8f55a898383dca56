// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributes.h>

#include <QList>
#include <QString>

namespace NS {

/// A text whose stretches carry attributes: fonts, colours and what else a key may name. Locations
/// and lengths count UTF-16 units, as `QString` does. A value, implicitly shared; to change one,
/// copy it to a `NS::MutableAttributedString`.
///
///     const NS::AttributedString text = parser.parse(u"a **b** c"_s);
///     for (const NS::AttributedString::Run &run : text.runs())
///         draw(text.string().sliced(run.location, run.length), run.attributes);
///
/// No location and no length is out of range: what a range covers outside the text is ignored,
/// and a place outside the text has no attributes.
class PELLARVINE_EXPORT AttributedString
{
public:
    /// A stretch of units with equal attributes.
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

    /// From left to right; together they cover the text, none is empty, and neighbours differ. A
    /// stretch without attributes is a run too; an empty text has no runs.
    const QList<Run> &runs() const { return m_runs; }

    /// What the unit at `location` carries, found in logarithmic time. If `run` is given, it gets
    /// the run that the unit stands in, or an empty one.
    Attributes attributes(qsizetype location, Run *run = nullptr) const;
    /// One of these; invalid if it is absent.
    QVariant attribute(const QString &key, qsizetype location) const;

    /// The text and the attributes of a range.
    AttributedString attributedSubstring(qsizetype location, qsizetype length) const;

    /// Same units with equal attributes.
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
