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

/// What an observer asks to be told.
enum class KeyValueObservingOptions {
    newValue = 1, ///< changes carry the new value
    newValueAndInitial = 1 | 4, ///< and the observer is told once while it is being registered
};

/// What an observer is told of a change.
struct KeyValueChange
{
    /// The null object where the property has become null, or an object on the way to it has.
    QVariant newValue;
};

/// Is told of the changes of the key paths it is registered for, on the thread that makes them and
/// before the setter that makes them returns. `Pellarvine::Observer` calls a function instead of
/// taking a subclass:
///
///     class Logger : public NS::KeyValueObserver {
///         void observeValue(const QString &keyPath, QObject *, const NS::KeyValueChange *change)
///                 override { qInfo() << keyPath << change->newValue; }
///     } logger;
///     NS::addObserver(window, &logger, u"document.title"_s,
///                     NS::KeyValueObservingOptions::newValue);
///
/// It may be destroyed within observeValue(); all its registrations end with it. An exception that
/// observeValue() lets out goes to the caller of addObserver() if it comes from the initial call.
/// Later ones are caught, and printed as a warning.
class PELLARVINE_EXPORT KeyValueObserver
{
public:
    KeyValueObserver() = default; ///< registered for nothing
    KeyValueObserver(const KeyValueObserver &) = delete;
    KeyValueObserver &operator=(const KeyValueObserver &) = delete;
    virtual ~KeyValueObserver();

    /// `object` is the one that was registered, also if the change is further along the path.
    virtual void observeValue(const QString &keyPath, QObject *object,
                              const KeyValueChange *change) = 0;

protected:
    /// Not API: what a registration calls; boxes the value and calls observeValue().
    virtual void pathChanged(detail::Registration &path);

private:
    friend class detail::Registration;
    friend PELLARVINE_EXPORT void removeObserver(QObject *, KeyValueObserver *, const QString &);

    void remove(detail::Registration *registration);

    detail::Registration *m_registrations = nullptr; // the latest first
};

/// Tells `observer` of every change of `keyPath` from now on. The registration follows when an
/// object on the way is replaced or destroyed, which counts as a change, and falls silent when
/// `object` itself is destroyed: neither is kept alive.
///
/// Changes are learnt from NOTIFY signals, the signals of registerChangeSignal(), bindable
/// properties, and the events of dynamic ones. Throws `KeyValueException` for a key that is not
/// there, and for one that can change without saying so; nothing is registered then. If an object
/// that comes in later lacks a key, the path ends at nothing and a warning is printed.
PELLARVINE_EXPORT void addObserver(QObject *object, KeyValueObserver *observer,
                                   const QString &keyPath, KeyValueObservingOptions options);

/// Names the signal that tells of the changes of a property that has no NOTIFY signal, for this
/// class and those derived from it. The editors of Qt Widgets are known already, the plain text of
/// a QTextEdit say:
///
///     NS::registerChangeSignal(Dial::staticMetaObject, "angle", "moved(double)");
///
/// Throws `KeyValueException` if the class lacks the property or the signal. To be called once,
/// before the property is observed; thread-safe.
PELLARVINE_EXPORT void registerChangeSignal(const QMetaObject &metaObject,
                                            const QByteArray &property, const QByteArray &signal);

/// Ends the latest registration of `observer` for that object and key path. Throws
/// `KeyValueException` (undefinedKey) if there is none.
PELLARVINE_EXPORT void removeObserver(QObject *object, KeyValueObserver *observer,
                                      const QString &keyPath);

} // namespace NS
