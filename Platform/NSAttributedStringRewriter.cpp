// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSAttributedStringRewriter.h>

#include <algorithm>
#include <utility>

namespace NS::detail {

AttributedStringRewriter::AttributedStringRewriter(MutableAttributedString &text)
    : m_text(text)
    , m_sourceRuns(std::exchange(text.m_runs, {}))
    , m_units(text.m_string.data())
    , m_length(text.m_string.size())
{
    m_text.m_runs.reserve(m_sourceRuns.size());
}

void AttributedStringRewriter::keep(qsizetype end)
{
    move(end, [](const Attributes &attributes) -> const Attributes & { return attributes; });
}

void AttributedStringRewriter::keep(qsizetype end, const Attributes &added)
{
    move(end, [&](const Attributes &attributes) -> const Attributes & {
        return m_merger.merged(attributes, added);
    });
}

void AttributedStringRewriter::finish()
{
    keep(m_length);
    m_text.m_string.truncate(m_written);
}

template <typename Restyle>
void AttributedStringRewriter::move(qsizetype end, Restyle restyle)
{
    std::copy(m_units + m_read, m_units + end, m_units + m_written);
    QList<AttributedString::Run> &runs = m_text.m_runs;
    while (m_read < end) {
        while (m_sourceRuns.at(m_runIndex).end() <= m_read)
            ++m_runIndex;
        const AttributedString::Run &run = m_sourceRuns.at(m_runIndex);
        const qsizetype length = std::min(run.end(), end) - m_read;
        const Attributes &attributes = restyle(run.attributes);
        if (!runs.isEmpty() && runs.constLast().attributes == attributes)
            runs.last().length += length;
        else
            runs.append({ m_written, length, attributes });
        m_read += length;
        m_written += length;
    }
}

} // namespace NS::detail
