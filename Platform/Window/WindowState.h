// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QByteArray>

namespace Pellarvine::detail {

/// Whether `state` is a complete one from QWidget::saveGeometry(), with sizes that a window can
/// have. QWidget::restoreGeometry() reads zeros where a state is truncated.
bool isWholeWindowState(const QByteArray &state);

/// The state with its frames grown on all sides: `by` for the present frame, `normalBy` for the one
/// that the window has when it is neither maximised nor full screen.
PELLARVINE_INTERNAL_EXPORT QByteArray grownWindowState(const QByteArray &state, int by,
                                                       int normalBy);

} // namespace Pellarvine::detail
