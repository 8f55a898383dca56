// SPDX-License-Identifier: MIT
// Not API: what drawnIcon() draws for the colour panel, in a square of 16 units.
#pragma once

#include <QtGlobal>

QT_FORWARD_DECLARE_CLASS(QColor)
QT_FORWARD_DECLARE_CLASS(QPainter)

namespace Pellarvine::detail {

void drawWheel(QPainter &painter, const QColor &ink);
void drawSliders(QPainter &painter, const QColor &ink);
void drawTiles(QPainter &painter, const QColor &ink);
void drawPipette(QPainter &painter, const QColor &ink);

} // namespace Pellarvine::detail
