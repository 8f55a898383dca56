// SPDX-License-Identifier: MIT
#include "Text/NSMutableAttributedString.h"

#include "Text/NSAttributeMerger.h"
#include "Text/NSTextRange.h"

#include <algorithm>
#include <utility>

namespace NS {

void MutableAttributedString::replaceCharacters(qsizetype location, qsizetype length,
                                                const AttributedString &text)
{
    const detail::TextRange range = detail::rangeInside(location, length, this->length());
    QList<Run> inserted = text.runs(); // `text` may be this very object
    const qsizetype count = inserted.size();
    m_string.replace(range.location, range.length, QString(text.string()));

    const qsizetype first = splitRun(range.location);
    const qsizetype last = splitRun(range.end());
    QList<Run> runs = m_runs.first(first);
    runs.reserve(first + count + m_runs.size() - last);
    runs.append(std::move(inserted));
    runs.append(m_runs.sliced(last));
    m_runs = std::move(runs);
    qsizetype place = range.location;
    for (auto run = m_runs.begin() + first; run != m_runs.end(); ++run) {
        run->location = place;
        place += run->length;
    }
    mergeRuns(first, first + count);
}

void MutableAttributedString::replaceCharacters(qsizetype location, qsizetype length,
                                                const QString &string)
{
    const detail::TextRange range = detail::rangeInside(location, length, this->length());
    const bool isInsertedBehind = range.length == 0 && range.location > 0;
    const qsizetype model = isInsertedBehind ? range.location - 1 : range.location;
    replaceCharacters(range.location, range.length, AttributedString(string, attributes(model)));
}

void MutableAttributedString::append(const AttributedString &text)
{
    if (text.isEmpty())
        return;
    QList<Run> appended = text.runs(); // `text` may be this very object
    const qsizetype shift = length();
    const qsizetype seam = m_runs.size();
    m_string.append(QString(text.string()));
    for (Run &run : appended)
        run.location += shift;
    m_runs.append(std::move(appended));
    mergeRuns(seam, seam);
}

void MutableAttributedString::setAttributes(const Attributes &attributes, qsizetype location,
                                            qsizetype length)
{
    changeRuns(location, length, [&](Attributes &current) { current = attributes; });
}

void MutableAttributedString::addAttributes(const Attributes &attributes, qsizetype location,
                                            qsizetype length)
{
    detail::AttributeMerger merger;
    changeRuns(location, length,
               [&](Attributes &current) { current = merger.merged(current, attributes); });
}

void MutableAttributedString::removeAttribute(const QString &key, qsizetype location,
                                              qsizetype length)
{
    changeRuns(location, length, [&](Attributes &current) { current.remove(key); });
}

template <typename Change>
void MutableAttributedString::changeRuns(qsizetype location, qsizetype length, Change change)
{
    const detail::TextRange range = detail::rangeInside(location, length, this->length());
    if (range.length == 0)
        return;
    const qsizetype first = splitRun(range.location);
    const qsizetype last = splitRun(range.end());
    for (auto run = m_runs.begin() + first; run != m_runs.begin() + last; ++run)
        change(run->attributes);
    mergeRuns(first, last);
}

// Splits a run at `location` and returns the index of the run that begins there, or the number of
// runs at the end.
qsizetype MutableAttributedString::splitRun(qsizetype location)
{
    if (m_runs.isEmpty() || location >= m_runs.constLast().end())
        return m_runs.size();
    const qsizetype index = runIndex(location);
    const Run run = m_runs.at(index);
    if (run.location == location)
        return index;
    m_runs[index].length = location - run.location;
    m_runs.insert(index + 1, { location, run.end() - location, run.attributes });
    return index + 1;
}

// Joins equal neighbours from run `first` to run `last`, and with the runs around them.
void MutableAttributedString::mergeRuns(qsizetype first, qsizetype last)
{
    const qsizetype begin = std::max(first - 1, qsizetype(0));
    const qsizetype end = std::min(last + 1, m_runs.size());
    if (begin == end)
        return;
    qsizetype kept = begin;
    for (qsizetype i = begin + 1; i < end; ++i) {
        if (m_runs.at(kept).attributes == m_runs.at(i).attributes)
            m_runs[kept].length += m_runs.at(i).length;
        else if (++kept != i)
            m_runs[kept] = m_runs.at(i);
    }
    m_runs.remove(kept + 1, end - kept - 1);
}

} // namespace NS
