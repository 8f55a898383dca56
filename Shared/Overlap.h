// SPDX-License-Identifier: MIT
// Not API: two pieces of work at the same time.
#pragma once

#include "Base/Global.h"

#include <atomic>
#include <functional>

namespace Pellarvine::detail {

/// Whether a second thread speeds up the work on `length` bytes: a core is free, and the work takes
/// longer than waking a thread.
PELLARVINE_INTERNAL_EXPORT bool isWorthASecondThread(qsizetype length);

/// Runs `first` on the calling thread and `second` at the same time on a thread of Qt's global
/// pool. If all threads of the pool are busy, `second` runs on the calling thread after `first`.
/// Returns when both are done, so both may use variables of the caller. `second` may wait for
/// `first`, but `first` must not wait for `second`. Neither may throw.
PELLARVINE_INTERNAL_EXPORT void runOverlapped(const std::function<void()> &first,
                                              const std::function<void()> &second);

/// The number of bytes that a writer has made ready for a reader on another thread.
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
