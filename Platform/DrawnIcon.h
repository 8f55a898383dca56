// SPDX-License-Identifier: MIT
// Not API: icons that are drawn.
#pragma once

#include <QIcon>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QColor)
QT_FORWARD_DECLARE_CLASS(QPainter)

namespace NS::detail {

/// An icon that `draw` paints anew for each size, pixel density and palette: on a square of 16
/// units, in the ink of buttons' text.
QIcon drawnIcon(std::function<void(QPainter &painter, const QColor &ink)> draw);

} // namespace NS::detail
