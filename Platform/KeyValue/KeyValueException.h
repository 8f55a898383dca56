// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QByteArray>
#include <QString>

#include <exception>

namespace NS {

/// What key-value coding and observing throw, the one exception of both: a key path that does not
/// fit the objects it is used on.
///
///     try {
///         NS::setValueForKeyPath(window, u"toolBar.depth"_s, 32);
///     } catch (const NS::KeyValueException &error) {
///         qWarning("%s", error.what()); // ToolBar has no key "depth" (key path "toolBar.depth")
///     }
class PELLARVINE_EXPORT KeyValueException : public std::exception
{
public:
    /// What is wrong with the key.
    enum Reason {
        undefinedKey, ///< the class has no such key, or one that cannot be read
        readOnly, ///< the key cannot be written
        notConvertible, ///< the key's type cannot take the value without losing some of it
        notObservable, ///< the key can change without telling anybody
    };

    /// `detail` is added to what what() says: the value that did not fit, say.
    KeyValueException(Reason reason, const QByteArray &className, const QString &keyPath,
                      const QString &key, const QString &detail = {});
    ~KeyValueException() override;

    Reason reason() const noexcept { return m_reason; } ///< as it was made

    /// The class of the object that was asked, or the name of the value's type.
    const QByteArray &className() const noexcept { return m_className; }

    /// The whole path as it was given.
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
