// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/KeyValueException.h>

#include <QString>
#include <QVariant>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QObject)

/// @file
/// Reading and writing properties by name:
///
///     NS::setValueForKeyPath(editor, u"document.title"_s, u"Invoice"_s);
///     NS::valueForKeyPath(editor, u"document.title"_s);   // "Invoice"
///     NS::valueForKeyPath(editor, u"document.subtitle"_s);   // throws KeyValueException
///
/// A key is a property of a QObject (declared or dynamic), a property of a Q_GADGET, or a key of a
/// QVariantMap. The dots of a path lead through properties that hold a QObject by a pointer or a
/// shared pointer, a gadget or a map.

namespace NS {

/// The value at the end of `keyPath`. No value (an invalid QVariant) if that is a null pointer or
/// the null object, if an object or a value on the way is null, or if a map lacks the key. Throws
/// `KeyValueException` for any other key that is not there.
PELLARVINE_EXPORT QVariant valueForKeyPath(QObject *object, const QString &keyPath);

/// Writes `value`, converted to the property's type where nothing of it is lost: 3.0 becomes 3,
/// "12" becomes 12, and a number becomes text. Gadgets and maps on the way are copied, changed and
/// written back.
///
/// No value and the null object empty the property: its RESET function, else a null pointer, or the
/// type's default; a dynamic property then holds the null object, and a map loses the key. With a
/// null object on the way there is nothing to write to, and nothing happens.
///
/// A dynamic property takes a value of any type, unless its object has a property
/// `keepsPropertyTypes` that is true: then it keeps its type as a declared one does.
///
/// Throws `KeyValueException` for a key that is not there (none is ever added to an object), for
/// one that cannot be written, and for a value that does not fit: 3.7 or "abc" into an int.
PELLARVINE_EXPORT void setValueForKeyPath(QObject *object, const QString &keyPath,
                                          const QVariant &value);

/// Lets key paths lead through properties of type std::shared_ptr<T>, T a QObject. Needed once a
/// type, before first use; std::shared_ptr<QObject>, QSharedPointer and QPointer need no call.
template <typename T>
void registerSharedPointer()
{
    using Pointer = std::shared_ptr<T>;
    if (!QMetaType::hasRegisteredConverterFunction<Pointer, QObject *>())
        QMetaType::registerConverter<Pointer, QObject *>(
                [](const Pointer &pointer) -> QObject * { return pointer.get(); });
}

} // namespace NS
