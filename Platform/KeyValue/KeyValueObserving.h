// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/KeyValueException.h>

#include <QByteArray>
#include <QString>
#include <QVariant>

QT_FORWARD_DECLARE_CLASS(QObject)
QT_FORWARD_DECLARE_STRUCT(QMetaObject)

namespace Pellarvine::detail {
class Registration;
}

namespace NS {

/// When an observer is called.
enum class KeyValueObservingOptions {
    newValue = 1, ///< after each change, with the new value
    newValueAndInitial = 1 | 4, ///< also once during addObserver(), with the current value
};

/// A change, as an observer gets it.
struct KeyValueChange
{
    /// The null object if the property, or an object on the path to it, is null now.
    QVariant newValue;
};

/// Base class of observers. observeValue() is called for each change of the key paths that the
/// observer is registered for. `Pellarvine::Observer` calls a function and needs no subclass.
///
///     class Logger : public NS::KeyValueObserver {
///         void observeValue(const QString &keyPath, QObject *, const NS::KeyValueChange *change)
///                 override { qInfo() << keyPath << change->newValue; }
///     } logger;
///     NS::addObserver(window, &logger, u"document.title"_s,
///                     NS::KeyValueObservingOptions::newValue);
///
/// The calls come on the thread that changes the property, before its setter returns. Registering,
/// changing and destroying are not synchronized: do not let one thread change the property while
/// another registers, removes or destroys the observer.
///
/// The destructor removes all registrations, and may run within observeValue(). An exception from
/// observeValue() is passed on by addObserver() if it comes from the initial call. A later one is
/// caught and printed as a warning.
class PELLARVINE_EXPORT KeyValueObserver
{
public:
    KeyValueObserver() = default; ///< without registrations
    KeyValueObserver(const KeyValueObserver &) = delete;
    KeyValueObserver &operator=(const KeyValueObserver &) = delete;
    virtual ~KeyValueObserver();

    /// `object` is the object that was registered, even if the change was made in a later object of
    /// the path.
    virtual void observeValue(const QString &keyPath, QObject *object,
                              const KeyValueChange *change) = 0;

protected:
    /// Not API: called by a registration. Reads the value and calls observeValue().
    virtual void pathChanged(detail::Registration &path);

private:
    friend class detail::Registration;
    friend PELLARVINE_EXPORT void removeObserver(QObject *, KeyValueObserver *, const QString &);

    void remove(detail::Registration *registration);

    detail::Registration *m_registrations = nullptr; // a linked list, the latest first
};

/// Calls `observer` for each change of `keyPath` from now on. If an object on the path is replaced
/// or destroyed, that is a change, and the registration follows the new object. After `object` is
/// destroyed there are no more calls. The objects are not kept alive, and `observer` is not owned.
///
/// A change is noticed by the NOTIFY signal of a property or that of registerChangeSignal(), by a
/// bindable property's notifier, or by the change event of a dynamic property. Constant properties
/// do not change. Throws `KeyValueException` for a key that does not exist, and for a key that can
/// change unnoticed; nothing is registered then. If a later object on the path lacks a key, the
/// value is the null object and a warning is printed.
PELLARVINE_EXPORT void addObserver(QObject *object, KeyValueObserver *observer,
                                   const QString &keyPath, KeyValueObservingOptions options);

/// Sets the change signal of a property without a NOTIFY signal, for this class and the classes
/// derived from it. The signals of Qt's own editors, such as `plainText` of a QTextEdit, are known:
///
///     NS::registerChangeSignal(Dial::staticMetaObject, "angle", "moved(double)");
///
/// Throws `KeyValueException` if the class lacks the property or the signal. Call it once, before
/// the property is observed. Any thread.
PELLARVINE_EXPORT void registerChangeSignal(const QMetaObject &metaObject,
                                            const QByteArray &property, const QByteArray &signal);

/// Removes the latest registration of `observer` for that object and key path. Throws
/// `KeyValueException` with the reason undefinedKey if there is no such registration.
PELLARVINE_EXPORT void removeObserver(QObject *object, KeyValueObserver *observer,
                                      const QString &keyPath);

} // namespace NS
