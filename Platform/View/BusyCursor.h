// SPDX-License-Identifier: MIT
// Not API: work that may take long, off the main thread.
#pragma once

#include "Base/Global.h"

#include <functional>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Runs `work` on a thread of its own and returns when it is done. If that takes some time, the
/// cursor is busy, a Spinner turns in `view`, and windows are painted. Input of the user waits
/// until the end. Timers and posted events are processed, so any object may have been destroyed on
/// return, `view` too. Main thread only; `work` must not throw.
PELLARVINE_INTERNAL_EXPORT void runWithBusyCursor(QWidget *view, const std::function<void()> &work);

/// Whether runWithBusyCursor() is showing a spinner in that view. Drags arrive all the same.
bool isBusy(const QWidget *view);

} // namespace Pellarvine::detail
