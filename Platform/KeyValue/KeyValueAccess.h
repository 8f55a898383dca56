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
QT_FORWARD_DECLARE_STRUCT(QMetaObject)

namespace Pellarvine::detail {

/// The whole key path, for exceptions.
using KeyPath = QString;
using Keys = QStringList;

/// The keys of `path`. Throws if one of them is empty; the exception names the class of `root`.
Keys keys(const QObject *root, const KeyPath &path);

/// The greatest size in bytes of the type of a PlainProperty. Its alignment is at most that of
/// std::max_align_t.
inline constexpr qsizetype longestPlain = 64;

/// The way to read and write a key of an object, looked up once.
struct Access
{
    QMetaType type; ///< invalid for a dynamic property
    int index = -1; ///< in the meta-object; -1 for a dynamic property
    /// Whether it can be a PlainProperty. Its type has an ==, is at most longestPlain bytes long,
    /// and is not a pointer: key-value coding treats pointers as objects or null.
    bool isPlain = false;
    bool isWritable = true;
    /// Whether it is the `visible` or `enabled` of a QWidget. These are read as the program has set
    /// them; Qt's getters depend on the ancestors too. The value is invalid if it is not known.
    bool isExplicitState = false;
};

/// Looks up a key. Throws if the object has no such key or cannot read it.
Access findProperty(QObject *object, const QString &key, const KeyPath &path);

/// Reads a property. A null pointer stays a null pointer. Invalid for a dynamic property that has
/// been removed.
QVariant readProperty(QObject *object, const Access &access, const QString &key);

/// Writes a property. Throws if it is read-only or cannot take the value.
void writeProperty(QObject *object, const Access &access, const QString &key, const QVariant &value,
                   const KeyPath &path);

/// The value of `key` in the gadget or map `container`. Invalid if a map lacks the key. Throws if a
/// gadget lacks it, and if `container` is neither.
PELLARVINE_PRIVATE_EXPORT QVariant valueInside(const QVariant &container, const QString &key,
                                               const KeyPath &path);

/// Writes `value` to the path keys[first...] of `object`.
void setValue(QObject *object, const Keys &keys, qsizetype first, const QVariant &value,
              const KeyPath &path);

/// The property of the class, or the dynamic property of the object, that is most similar to a key
/// without a property. Empty if none is.
PELLARVINE_PRIVATE_EXPORT QString similarKey(const QString &key, const QMetaObject *type,
                                             const QObject *object = nullptr);

/// Whether `type` is an arithmetic type, such as bool, or an enumeration.
bool isNumber(QMetaType type);

/// The object that `value` points to, by a plain or a shared pointer. Null for a null pointer.
/// Nothing if `value` is not such a pointer.
PELLARVINE_PRIVATE_EXPORT std::optional<QObject *> object(const QVariant &value);

/// An invalid QVariant for a null pointer and the null object, otherwise `value`.
PELLARVINE_PRIVATE_EXPORT QVariant withoutNull(const QVariant &value);

/// The index of the object's method isEqual(QObject *), or -1.
int isEqualMethod(const QObject *object);
/// Whether the objects are equal. `method` is the isEqualMethod() of `first`.
bool isEqual(QObject *first, QObject *second, int method);

} // namespace Pellarvine::detail
