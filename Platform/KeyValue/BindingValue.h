// SPDX-License-Identifier: MIT
// Not API: how the bindings of controls judge values and key paths.
#pragma once

#include "Base/Global.h"

#include <QMetaType>
#include <QString>
#include <QVariant>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace Pellarvine::detail {

/// Aborts the process if the objects live in two threads, in debug builds only. They may be null.
PELLARVINE_PRIVATE_EXPORT void requireOneThread(const QObject *object, const QObject *model,
                                                const QString &keyPath);
/// Whether the value at the end of the path can be written. True if that is not known yet, because
/// an object on the path is null.
bool isWritable(QObject *root, const QString &keyPath);

/// The property that a binding name stands for: "value" in a class without that property is the
/// USER property.
QString boundProperty(const QObject *object, const QString &binding);

/// A copy of `value` that can be compared later. A pointer to an object becomes a number, because
/// the object may be destroyed by then.
QVariant remembered(const QVariant &value);

/// Whether `current` equals `value`, or is `value` converted to another type without loss.
bool holdsAlready(const QVariant &current, const QVariant &value);

/// Whether `value` equals `other`, or does so after conversion to the type of `other`.
bool isAs(const QVariant &value, const QVariant &other);

/// The value of `type` that is nearest to `value`, for a control that cannot hold `value` itself:
/// 12.5 becomes 13, and 1e300 the greatest int. Invalid if nothing of that type is near.
QVariant nearest(const QVariant &value, QMetaType type);

/// Whether the property is the index of the selected item, which is -1 without a selection.
bool isSelection(const QString &key);

/// Whether `value` is invalid, null, or a text of white space only.
bool isBlank(const QVariant &value);

/// The message for the user if an edit cannot be converted to `type`.
QString conversionMessage(QMetaType type);

} // namespace Pellarvine::detail
