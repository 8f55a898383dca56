// SPDX-License-Identifier: MIT
// Not API: icons that are drawn.
#pragma once

#include "Base/Global.h"

#include <QIcon>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QColor)
QT_FORWARD_DECLARE_CLASS(QPainter)

namespace Pellarvine::detail {

/// An icon that `draw` paints anew for each size, pixel density and palette: on a square of 16
/// units, in the ink of buttons' text.
PELLARVINE_PRIVATE_EXPORT QIcon
drawnIcon(std::function<void(QPainter &painter, const QColor &ink)> draw);

} // namespace Pellarvine::detail
