// SPDX-License-Identifier: MIT
// Not API: one key of one object or value.
#pragma once

#include "Base/Global.h"

#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace Pellarvine::detail {

/// The whole path that a key belongs to, for the exception's sake.
using KeyPath = QString;
using Keys = QStringList;

/// The keys of a path from `root`. Throws if one of them is empty.
Keys keys(const QObject *root, const KeyPath &path);

/// In bytes. The alignment is at most std::max_align_t's.
inline constexpr qsizetype longestPlain = 64;

/// How a key of an object is reached, looked up once.
struct Access
{
    QMetaType type; ///< of a declared property
    int index = -1; ///< of a declared property in its meta-object; -1 for a dynamic one
    /// Can be a PlainProperty: its type is no pointer, which key-value coding treats as an object
    /// or null, has an ==, and is no longer than longestPlain.
    bool isPlain = false;
    bool isWritable = true;
    /// A widget's own `visible` or `enabled`: read as they were set, where Qt's getters tell what
    /// the ancestors make of them. No value where that is unknown.
    bool isExplicitState = false;
};

/// The key's access. Throws if the object has no such key or cannot read it.
Access findProperty(QObject *object, const QString &key, const KeyPath &path);

/// Reads as it stands: null pointers stay what they are. No value for a dynamic property that has
/// been removed.
QVariant readProperty(QObject *object, const Access &access, const QString &key);

/// Throws if the property is read-only or cannot take the value.
void writeProperty(QObject *object, const Access &access, const QString &key, const QVariant &value,
                   const KeyPath &path);

/// What the gadget or map `container` holds under `key`. Throws if it is neither, or has no such
/// key; a map may lack it.
PELLARVINE_PRIVATE_EXPORT QVariant valueInside(const QVariant &container, const QString &key,
                                               const KeyPath &path);

/// Writes to the end of keys[first...], starting at an object.
void setValue(QObject *object, const Keys &keys, qsizetype first, const QVariant &value,
              const KeyPath &path);

/// Any arithmetic type, bool and enumerations too.
bool isNumber(QMetaType type);

/// The object that `value` holds, by a pointer or a shared one: null for a null pointer, nothing if
/// it holds something else.
PELLARVINE_PRIVATE_EXPORT std::optional<QObject *> object(const QVariant &value);

/// Nothing for a null pointer and the null object, else the value.
PELLARVINE_PRIVATE_EXPORT QVariant withoutNull(const QVariant &value);

/// The index of the object's own isEqual(QObject *), or -1; and the answer of that method.
int isEqualMethod(const QObject *object);
bool isEqual(QObject *first, QObject *second, int method);

} // namespace Pellarvine::detail
