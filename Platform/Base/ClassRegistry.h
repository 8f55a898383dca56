// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>
#include <QStringList>

#include <functional>
#include <type_traits>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// Classes by the names that interface files and storyboards call them by. The library's own are
/// there from the start; a host adds each of its own with one line, before it loads the first file:
///
///     NS::registerClass<MailboxView>();
///     NS::registerClass<MailboxController>();
///     NS::registerClass<Widgets::Badge>("Badge"); // a name of its own
///
/// Qt's widgets need no line. Main thread only.
namespace NS {

/// Makes an object of a class. A widget is given a widget as its parent, or none.
using ObjectMaker = std::function<QObject *(QObject *parent)>;

/// A class that can be named.
struct RegisteredClass
{
    QString name; ///< with its namespace
    const QMetaObject *metaObject = nullptr; ///< of the class itself
    ObjectMaker make; ///< never empty

    /// Whether it is a QWidget, and so may stand in an interface file.
    PELLARVINE_EXPORT bool isWidget() const;
};

/// Makes the class known. A class of the same name that was known before is replaced. What
/// `registerClass<T>` calls.
PELLARVINE_EXPORT void registerClass(const RegisteredClass &added);

/// Makes T known under its name, "Widgets::Badge", and without the namespace, "Badge". T is a
/// QWidget or another QObject, such as an NS::ViewController; it has Q_OBJECT, and its constructor
/// can be called with nothing but a parent.
template <typename T>
void registerClass(const char *name = T::staticMetaObject.className())
{
    static_assert(std::is_base_of_v<QObject, T>, "only a QObject can be registered");
    static_assert(QtPrivate::HasQ_OBJECT_Macro<T>::Value,
                  "without Q_OBJECT the class has the name of the one it extends");
    using Parent = std::conditional_t<std::is_base_of_v<QWidget, T>, QWidget, QObject>;
    static_assert(std::is_constructible_v<T, Parent *>,
                  "the constructor has to take a parent, and nothing else that has no default");
    registerClass(
            { QString::fromUtf8(name), &T::staticMetaObject, [](QObject *parent) -> QObject * {
                 return new T(qobject_cast<Parent *>(parent));
             } });
}

/// The class of that name, null if there is none. A name without a namespace finds the class that
/// was registered last of those that end in it; a full name finds that class alone. The pointer
/// holds until a class is registered.
PELLARVINE_EXPORT const RegisteredClass *registeredClass(const QString &name);

/// The full names of all, sorted.
PELLARVINE_EXPORT QStringList registeredClassNames();

/// Makes an object of the named class, which belongs to `parent`, or to the caller if that is null.
/// Null if there is no such class, or if it is no T.
template <typename T = QObject>
T *makeObject(const QString &className, QObject *parent = nullptr)
{
    const RegisteredClass *const known = registeredClass(className);
    const bool fits = known && known->metaObject->inherits(&T::staticMetaObject);
    return fits ? static_cast<T *>(known->make(parent)) : nullptr;
}

} // namespace NS
