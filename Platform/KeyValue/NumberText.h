// SPDX-License-Identifier: MIT
// Not API: numbers in the texts of controls.
#pragma once

#include "Base/Global.h"

#include <QLocale>
#include <QMetaType>
#include <QString>
#include <QVariant>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace Pellarvine::detail {

/// Whether the property `key` of a control is a text that shows a number as controlLocale() writes
/// it. False for the text of a combo box that is not editable: that text selects an entry.
bool showsNumbersAsText(const QObject *control, const QString &key);

/// The locale of a widget; the C locale for any other object.
QLocale controlLocale(const QObject *control);

/// Whether `type` is an integer or floating-point type. False for bool, characters and
/// enumerations.
bool isWrittenAsNumber(QMetaType type);

/// The shortest text that numberFromText() reads as `number`. It has no group separators.
QString numberText(const QVariant &number, const QLocale &locale);

/// The number that `text` is in that locale: a double for floating-point types, otherwise a value
/// of `type`, or of the largest integer type if `type` cannot hold it. Invalid if `text` is no
/// number, or no integer although `type` is an integer type.
QVariant numberFromText(const QString &text, QMetaType type, const QLocale &locale);

} // namespace Pellarvine::detail
