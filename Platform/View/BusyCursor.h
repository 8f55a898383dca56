// SPDX-License-Identifier: MIT
// Not API: work that may take long, off the main thread.
#pragma once

#include "Base/Global.h"

#include <functional>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Runs `work` on a thread of its own and returns when it is done. If that takes longer than a
/// moment, the pointer turns busy, a Spinner turns in `view`, and windows go on painting; what the
/// user does meanwhile waits, but timers and posted events run, so that anything may have been
/// destroyed on return, `view` too. Main thread only; `work` must not throw.
PELLARVINE_INTERNAL_EXPORT void runWithBusyCursor(QWidget *view, const std::function<void()> &work);

/// Whether runWithBusyCursor() is showing a spinner in that view. Drags arrive all the same.
bool isBusy(const QWidget *view);

} // namespace Pellarvine::detail
