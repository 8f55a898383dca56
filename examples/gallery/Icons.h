// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QPainter)

/// An icon of one colour, drawn in a space of 16 x 16 units, y downwards, with a pen and a brush of
/// that colour set: the palette's text, its highlighted text where selected, or dimmed.
QIcon makeIcon(const std::function<void(QPainter &painter)> &draw);

namespace Icons {

QIcon previous();
QIcon next();
QIcon textLines(Qt::Alignment alignment);
QIcon letter(QChar letter, bool isBold, bool isItalic, bool isUnderlined);

} // namespace Icons
