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
/// The colour of 3, 4, 6 or 8 hexadecimal digits, with or without "#". Ignores surrounding white
/// space. Nothing for any other text.
PELLARVINE_PRIVATE_EXPORT std::optional<QColor> colorFromHex(const QString &text);

/// A description for people: the name, if a colour list has the colour, and the digits.
PELLARVINE_PRIVATE_EXPORT QString colorDescription(const QColor &color);

/// The data for the clipboard or a drag: a colour, and hexadecimal text for other programs. The
/// caller owns it.
PELLARVINE_PRIVATE_EXPORT QMimeData *mimeDataForColor(const QColor &color);
/// The colour in pasted or dropped data. Text must be a hexadecimal number as a whole, because some
/// words contain one.
PELLARVINE_PRIVATE_EXPORT std::optional<QColor> colorInMimeData(const QMimeData *data);

/// The picture under the pointer during a drag.
PELLARVINE_PRIVATE_EXPORT QPixmap dragPixmap(const QColor &color, double devicePixelRatio);

/// Fills the path with the colour. A translucent colour has a checkerboard below it.
PELLARVINE_PRIVATE_EXPORT void fillWithColor(QPainter &painter, const QPainterPath &path,
                                             const QColor &color);
/// The checkerboard alone, in squares of 4 units from the path's upper left corner.
PELLARVINE_PRIVATE_EXPORT void fillWithCheckerboard(QPainter &painter, const QPainterPath &path);

} // namespace Pellarvine::detail
