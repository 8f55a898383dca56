// SPDX-License-Identifier: MIT
#include "Shared/Overlap.h"

#include <QThread>
#include <QThreadPool>

#include <memory>

namespace Pellarvine::detail {

namespace {

// Waking a thread takes 20 to 60 microseconds, sealing this much 200.
constexpr qsizetype shortestWork = 192 * 1024;

enum class Phase {
    waiting,
    running,
    done,
};

} // namespace

bool isWorthASecondThread(qsizetype length)
{
    return length >= shortestWork && QThread::idealThreadCount() > 1;
}

void runOverlapped(const std::function<void()> &first, const std::function<void()> &second)
{
    // Outlives the call if the pool comes to its turn only when all is done.
    const auto phase = std::make_shared<std::atomic<Phase>>(Phase::waiting);
    const auto isMine = [](std::atomic<Phase> &claimed) {
        Phase expected = Phase::waiting;
        return claimed.compare_exchange_strong(expected, Phase::running);
    };
    QThreadPool::globalInstance()->tryStart([phase, isMine, &second] {
        if (!isMine(*phase))
            return;
        second();
        phase->store(Phase::done);
        phase->notify_one();
    });
    first();
    if (isMine(*phase))
        second();
    else
        phase->wait(Phase::running);
}

Watermark::Level Watermark::waitAbove(qsizetype seen) const
{
    for (;;) {
        const qsizetype level = m_level.load(std::memory_order_acquire);
        if (level < 0)
            return { ~level, true };
        if (level > seen)
            return { level, false };
        m_level.wait(level, std::memory_order_acquire);
    }
}

} // namespace Pellarvine::detail
