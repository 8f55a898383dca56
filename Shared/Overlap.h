// SPDX-License-Identifier: MIT
// Not API: two pieces of work at the same time.
#pragma once

#include "Base/Global.h"

#include <atomic>
#include <functional>

namespace Pellarvine::detail {

/// Whether work on `length` bytes gains from a second thread: there is a core for it, and the work
/// outweighs waking it.
PELLARVINE_INTERNAL_EXPORT bool isWorthASecondThread(qsizetype length);

/// Runs `first` on the calling thread and `second` at the same time on a thread of Qt's global
/// pool. If the pool has no thread free, `second` runs here after `first`. Returns once both are
/// done, so both may use what lives on the caller's stack. `second` may wait for `first`, never the
/// other way round, and neither may throw.
PELLARVINE_INTERNAL_EXPORT void runOverlapped(const std::function<void()> &first,
                                              const std::function<void()> &second);

/// How many bytes one piece of work has made ready for the other.
class PELLARVINE_INTERNAL_EXPORT Watermark
{
public:
    /// Writer: `length` bytes are ready in all.
    void raise(qsizetype length) { set(length); }
    /// Writer: `length` bytes are ready in all, and no more will follow. Once.
    void finish(qsizetype length) { set(~length); }

    struct Level
    {
        qsizetype length;
        bool isFinal;
    };
    /// Reader: waits until more than `seen` bytes are ready, or no more will be.
    Level waitAbove(qsizetype seen) const;

private:
    void set(qsizetype level)
    {
        m_level.store(level, std::memory_order_release);
        m_level.notify_one();
    }

    std::atomic<qsizetype> m_level = 0; // the complement of the length once it is final
};

} // namespace Pellarvine::detail
