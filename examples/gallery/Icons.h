// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QPainter)

/// An icon in one colour. `draw` draws it in a square of 16 x 16 units, with y downwards. The
/// painter's pen and brush have the palette's text colour, its highlighted text colour if the item
/// is selected, or a dim colour if it is disabled.
QIcon makeIcon(const std::function<void(QPainter &painter)> &draw);

namespace Icons {

QIcon previous();
QIcon next();
QIcon textLines(Qt::Alignment alignment);
QIcon letter(QChar letter, bool isBold, bool isItalic, bool isUnderlined);

} // namespace Icons
