// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QByteArray>

namespace Pellarvine::detail {

/// Whether `state` is one that QWidget::saveGeometry() has written, from the first byte to the
/// last, with sizes that a window can have. QWidget::restoreGeometry() takes what a truncated one
/// lacks for 0.
bool isWholeWindowState(const QByteArray &state);

/// Such a state with its frames grown on all sides: the window's own, and the one that it has when
/// it is neither maximised nor full screen.
PELLARVINE_INTERNAL_EXPORT QByteArray grownWindowState(const QByteArray &state, int by,
                                                       int normalBy);

} // namespace Pellarvine::detail
