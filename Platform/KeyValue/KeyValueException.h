// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QByteArray>
#include <QString>

#include <exception>

namespace NS {

/// Thrown by key-value coding, observing and bindings for a key path or a value that does not fit
/// the objects:
///
///     try {
///         NS::setValueForKeyPath(window, u"toolBar.depth"_s, 32);
///     } catch (const NS::KeyValueException &error) {
///         qWarning("%s", error.what()); // ToolBar has no key "depth" (key path "toolBar.depth")
///     }
///
/// It holds texts only: it may outlive the objects, and be passed to another thread.
class PELLARVINE_EXPORT KeyValueException : public std::exception
{
public:
    /// The kind of failure.
    enum Reason {
        undefinedKey, ///< the class has no such key, or the key cannot be read
        readOnly, ///< the key cannot be written
        notConvertible, ///< the value cannot be converted to the key's type without loss
        notObservable, ///< the key can change, and no signal reports it
    };

    /// `detail` is appended to the text of what(), for example the value that does not fit.
    KeyValueException(Reason reason, const QByteArray &className, const QString &keyPath,
                      const QString &key, const QString &detail = {});
    ~KeyValueException() override;

    Reason reason() const noexcept { return m_reason; } ///< as passed to the constructor

    /// The class of the object, or the type of the gadget, that lacks the key or refuses the value.
    const QByteArray &className() const noexcept { return m_className; }

    /// The whole key path that was used.
    const QString &keyPath() const noexcept { return m_keyPath; }

    /// The key of the path that failed.
    const QString &key() const noexcept { return m_key; }

    /// One untranslated line for logs.
    const char *what() const noexcept override;

private:
    Reason m_reason;
    QByteArray m_className;
    QString m_keyPath;
    QString m_key;
    QByteArray m_text;
};

} // namespace NS
