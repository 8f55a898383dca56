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
/// QVariantMap. Each key of a path but the last is a property that holds a gadget, a map, or a
/// QObject by a pointer or a shared pointer. The `visible` and `enabled` of a QWidget are what the
/// program has set them to, also while an ancestor is hidden or disabled.
///
/// The functions work on the calling thread and do not lock: no other thread may use the objects at
/// the same time. Widgets belong to the main thread. No object is kept alive.

namespace NS {

/// The value at the end of `keyPath`. It is an invalid QVariant if the property holds a null
/// pointer or the null object, if an object or value on the path is null, and if a map lacks the
/// key. Throws `KeyValueException` if `object` is null, and for any other key that does not exist.
PELLARVINE_EXPORT QVariant valueForKeyPath(QObject *object, const QString &keyPath);

/// Writes `value`. It is converted to the property's type if nothing of it is lost: 3.0 becomes 3,
/// "12" becomes 12, and a number becomes text. Gadgets and maps on the path are copied, changed and
/// written back.
///
/// An invalid QVariant and the null object clear the property: its RESET function is called, or it
/// gets a null pointer or the default value of its type. A dynamic property then holds the null
/// object, and a map loses the key. If an object on the path is null, the function does nothing.
///
/// A dynamic property takes a value of any type. If its object has a property `keepsPropertyTypes`
/// that is true, the dynamic property keeps its type, as a declared one does.
///
/// Throws `KeyValueException` for a key that does not exist (an object never gets a new one), for a
/// key that cannot be written, and for a value that does not fit: 3.7 or "abc" into an int.
PELLARVINE_EXPORT void setValueForKeyPath(QObject *object, const QString &keyPath,
                                          const QVariant &value);

/// Lets key paths lead through properties of type std::shared_ptr<T>, where T is a QObject. Call it
/// once for each T, on one thread, before the first such path is used. std::shared_ptr<QObject>,
/// QSharedPointer and QPointer need no call.
template <typename T>
void registerSharedPointer()
{
    using Pointer = std::shared_ptr<T>;
    if (!QMetaType::hasRegisteredConverterFunction<Pointer, QObject *>())
        QMetaType::registerConverter<Pointer, QObject *>(
                [](const Pointer &pointer) -> QObject * { return pointer.get(); });
}

} // namespace NS
