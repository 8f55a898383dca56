// SPDX-License-Identifier: MIT
// Not API: colours as text, on the clipboard, in the hand of a drag, and over a checkerboard.
#pragma once

#include "Base/Global.h"

#include <QColor>
#include <QString>

#include <optional>

QT_FORWARD_DECLARE_CLASS(QMimeData)
QT_FORWARD_DECLARE_CLASS(QPainter)
QT_FORWARD_DECLARE_CLASS(QPainterPath)
QT_FORWARD_DECLARE_CLASS(QPixmap)

namespace Pellarvine::detail {

/// "#RRGGBBAA" or "#RRGGBB", by the conversion that is registered between NS::Color and text.
PELLARVINE_PRIVATE_EXPORT QString hexText(const QColor &color, bool withAlpha);
/// A colour of 3, 4, 6 or 8 hexadecimal digits, with or without a "#", white space around it aside;
/// nothing for any other text.
PELLARVINE_PRIVATE_EXPORT std::optional<QColor> colorFromHex(const QString &text);

/// What people are told of a colour: its name, if a colour list has one for it, and its digits.
PELLARVINE_PRIVATE_EXPORT QString colorDescription(const QColor &color);

/// The colour for a clipboard or a drag: as a colour, and as hex text for programs that take no
/// other. The caller owns it.
PELLARVINE_PRIVATE_EXPORT QMimeData *mimeDataForColor(const QColor &color);
/// The colour in what is pasted or dropped. Text counts only if all of it is a hex number: words
/// that people carry around are not meant as colours, though some read as one.
PELLARVINE_PRIVATE_EXPORT std::optional<QColor> colorInMimeData(const QMimeData *data);

/// What a drag of the colour shows under the pointer.
PELLARVINE_PRIVATE_EXPORT QPixmap dragPixmap(const QColor &color, double devicePixelRatio);

/// Fills the path with the colour; where that is transparent, with a checkerboard below it.
PELLARVINE_PRIVATE_EXPORT void fillWithColor(QPainter &painter, const QPainterPath &path,
                                             const QColor &color);
/// The checkerboard alone, in squares of 4 units from the path's upper left corner.
PELLARVINE_PRIVATE_EXPORT void fillWithCheckerboard(QPainter &painter, const QPainterPath &path);

} // namespace Pellarvine::detail
