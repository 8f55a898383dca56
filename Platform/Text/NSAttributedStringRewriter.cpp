// SPDX-License-Identifier: MIT
#include "Text/NSAttributedStringRewriter.h"

#include <algorithm>
#include <utility>

namespace Pellarvine::detail {

AttributedStringRewriter::AttributedStringRewriter(NS::MutableAttributedString &text)
    : m_text(text)
    , m_units(text.m_string.data())
    , m_length(text.m_string.size())
    , m_runs(text.m_runs.data())
{ }

void AttributedStringRewriter::keep(qsizetype end)
{
    move<false>(end, [](NS::Attributes &attributes, bool isLastPiece) {
        return isLastPiece ? std::move(attributes) : attributes;
    });
}

void AttributedStringRewriter::keep(qsizetype end, const NS::Attributes &added)
{
    move<true>(end, [&](const NS::Attributes &attributes, bool) -> const NS::Attributes & {
        return m_merger.merged(attributes, added);
    });
}

void AttributedStringRewriter::finish()
{
    keep(m_length);
    m_text.m_string.truncate(m_written);
    m_text.m_runs.remove(m_writtenRuns, m_text.m_runs.size() - m_writtenRuns);
}

// A range may begin with the attributes of the range before. Inside it, neighbours differ, unless
// they get attributes that make them equal. A run that is not read again moves its attributes,
// which saves reference counting.
template <bool isRestyled, typename Restyle>
void AttributedStringRewriter::move(qsizetype end, Restyle restyle)
{
    std::copy(m_units + m_read, m_units + end, m_units + m_written);
    bool mayEqualLast = m_writtenRuns > 0;
    while (m_read < end) {
        while (m_runs[m_readRuns].end() <= m_read)
            ++m_readRuns;
        if (m_writtenRuns == m_readRuns)
            makeRoom();
        NS::AttributedString::Run &run = m_runs[m_readRuns];
        const qsizetype length = std::min(run.end(), end) - m_read;
        auto &&attributes = restyle(run.attributes, run.end() <= end);
        if (mayEqualLast && m_runs[m_writtenRuns - 1].attributes == attributes)
            m_runs[m_writtenRuns - 1].length += length;
        else
            m_runs[m_writtenRuns++] = { m_written, length,
                                        std::forward<decltype(attributes)>(attributes) };
        m_read += length;
        m_written += length;
        mayEqualLast = isRestyled;
    }
}

// A list that grows at its end is often not moved in memory.
void AttributedStringRewriter::makeRoom()
{
    QList<NS::AttributedString::Run> &runs = m_text.m_runs;
    const qsizetype unread = runs.size() - m_readRuns;
    const qsizetype room = 16 + unread / 8;
    runs.resize(runs.size() + room);
    m_runs = runs.data();
    NS::AttributedString::Run *const first = m_runs + m_readRuns;
    std::move_backward(first, first + unread, first + unread + room);
    m_readRuns += room;
}

} // namespace Pellarvine::detail
