// SPDX-License-Identifier: MIT
#include "Text/NSAttributedString.h"

#include "Text/NSTextRange.h"

#include <algorithm>

namespace NS {

AttributedString::AttributedString(const QString &string, const Attributes &attributes)
    : m_string(string)
{
    if (!string.isEmpty())
        m_runs.append({ 0, string.size(), attributes });
}

Attributes AttributedString::attributes(qsizetype location, Run *run) const
{
    const bool isInside = location >= 0 && location < length();
    const Run found = isInside ? m_runs.at(runIndex(location)) : Run();
    if (run)
        *run = found;
    return found.attributes;
}

QVariant AttributedString::attribute(const QString &key, qsizetype location) const
{
    return attributes(location).value(key);
}

AttributedString AttributedString::attributedSubstring(qsizetype location, qsizetype length) const
{
    const detail::TextRange range = detail::rangeInside(location, length, this->length());
    AttributedString part;
    if (range.length == 0)
        return part;
    part.m_string = m_string.sliced(range.location, range.length);
    for (qsizetype i = runIndex(range.location); i < m_runs.size(); ++i) {
        const Run &run = m_runs.at(i);
        const qsizetype start = std::max(run.location, range.location);
        const qsizetype end = std::min(run.end(), range.end());
        if (start >= end)
            break;
        part.m_runs.append({ start - range.location, end - start, run.attributes });
    }
    return part;
}

qsizetype AttributedString::runIndex(qsizetype location) const
{
    const auto next =
            std::upper_bound(m_runs.begin(), m_runs.end(), location,
                             [](qsizetype place, const Run &run) { return place < run.location; });
    return next - m_runs.begin() - 1;
}

} // namespace NS
