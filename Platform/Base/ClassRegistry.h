// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>
#include <QStringList>

#include <functional>
#include <type_traits>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// Classes by the names that interface files and storyboards use. The library's own classes are
/// registered from the start; a program registers each of its own before it loads the first file:
///
///     NS::registerClass<MailboxView>();
///     NS::registerClass<MailboxController>();
///     NS::registerClass<Widgets::Badge>("Badge"); // a name of its own
///
/// Qt's widgets need no registration. Main thread only.
namespace NS {

/// Makes an object of a class. The parent of a widget is a widget or null.
using ObjectMaker = std::function<QObject *(QObject *parent)>;

/// A class that files can name.
struct RegisteredClass
{
    QString name; ///< with its namespace
    const QMetaObject *metaObject = nullptr; ///< that of the class, never null
    ObjectMaker make; ///< never empty

    /// Whether it is a QWidget, which an interface file can contain.
    PELLARVINE_EXPORT bool isWidget() const;
};

/// Registers the class, and replaces an earlier one of the same name. registerClass<T>() calls it.
PELLARVINE_EXPORT void registerClass(const RegisteredClass &added);

/// Registers T under its full name, "Widgets::Badge", and without the namespace, "Badge". T is a
/// QWidget or another QObject, such as an NS::ViewController. It has Q_OBJECT and a constructor
/// that can be called with a parent alone.
template <typename T>
void registerClass(const char *name = T::staticMetaObject.className())
{
    static_assert(std::is_base_of_v<QObject, T>, "only a QObject can be registered");
    static_assert(QtPrivate::HasQ_OBJECT_Macro<T>::Value,
                  "without Q_OBJECT, the class has the name of its base class");
    using Parent = std::conditional_t<std::is_base_of_v<QWidget, T>, QWidget, QObject>;
    static_assert(std::is_constructible_v<T, Parent *>,
                  "the constructor must take a parent, and defaults for everything else");
    registerClass(
            { QString::fromUtf8(name), &T::staticMetaObject, [](QObject *parent) -> QObject * {
                 return new T(qobject_cast<Parent *>(parent));
             } });
}

/// The class of that name, or null. A full name finds that class only. A name without a namespace
/// finds the class that was registered last with it, in any namespace. The pointer is valid until
/// the next registration.
PELLARVINE_EXPORT const RegisteredClass *registeredClass(const QString &name);

/// The full names of all registered classes, sorted.
PELLARVINE_EXPORT QStringList registeredClassNames();

/// Makes an object of the named class. `parent` owns it; if that is null, the caller does. Returns
/// null if there is no such class, or if it is not derived from T.
template <typename T = QObject>
T *makeObject(const QString &className, QObject *parent = nullptr)
{
    const RegisteredClass *const known = registeredClass(className);
    const bool fits = known && known->metaObject->inherits(&T::staticMetaObject);
    return fits ? static_cast<T *>(known->make(parent)) : nullptr;
}

} // namespace NS
