// SPDX-License-Identifier: MIT
// Not API: how the bindings of controls judge values and key paths.
#pragma once

#include "Base/Global.h"

#include <QMetaType>
#include <QString>
#include <QVariant>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace Pellarvine::detail {

/// Aborts a debug build if the objects live in two threads. They may be null.
PELLARVINE_PRIVATE_EXPORT void requireOneThread(const QObject *object, const QObject *model,
                                                const QString &keyPath);
/// Whether the value at the end of the path can be written. True where that cannot be known yet,
/// since the way to it leads through null.
bool isWritable(QObject *root, const QString &keyPath);

/// The property that a binding of this name is of: "value", in a class without one, is the USER
/// property.
QString boundProperty(const QObject *object, const QString &binding);

/// What can be kept to compare it with later: an object's address in place of a pointer to it,
/// since the object may be gone by then.
QVariant remembered(const QVariant &value);

/// Whether `current` is `value`, also as another type that loses nothing of it.
bool holdsAlready(const QVariant &current, const QVariant &value);

/// Whether `value`, converted to the type of `other`, equals it.
bool isAs(const QVariant &value, const QVariant &other);

/// What a control whose property is of `type` shows of a value that does not fit: 12.5 as 13, 1e300
/// as the greatest int. No value if there is nothing like it.
QVariant nearest(const QVariant &value, QMetaType type);

/// Whether the property is the index of a selected item, which is -1 for none.
bool isSelection(const QString &key);

/// No value, or text without a visible character.
bool isBlank(const QVariant &value);

/// What to tell the user of an edit that is nothing of this type.
QString misfit(QMetaType type);

} // namespace Pellarvine::detail
