// SPDX-License-Identifier: MIT
#include "Shared/DelayLine.h"

#include <utility>

namespace Pellarvine::detail {

DelayLine::DelayLine(qsizetype delay)
    : m_delay(delay)
{ }

Data DelayLine::feed(QByteArrayView data)
{
    Released released = release(data);
    return std::move(released.held.append(released.passing));
}

DelayLine::Released DelayLine::release(QByteArrayView data)
{
    if (data.size() >= m_delay)
        return fullOverflow(data);
    if (m_buffer.size() + data.size() > m_delay)
        return partialOverflow(data);
    m_buffer.append(data);
    return {};
}

// The chunk is longer than the delay: all held bytes leave, then the front of the chunk.
DelayLine::Released DelayLine::fullOverflow(QByteArrayView data)
{
    return { std::exchange(m_buffer, data.last(m_delay).toByteArray()), data.chopped(m_delay) };
}

// The chunk is shorter than the delay: only some of the held bytes leave.
DelayLine::Released DelayLine::partialOverflow(QByteArrayView data)
{
    const qsizetype leaving = m_buffer.size() + data.size() - m_delay;
    Data held = m_buffer.first(leaving);
    m_buffer.remove(0, leaving).append(data);
    return { std::move(held), {} };
}

} // namespace Pellarvine::detail
