// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QByteArray>
#include <QString>

#include <exception>

namespace NS {

/// An error in an interface file, with its place. A plain value, for any thread.
///
///     try {
///         NS::Nib(u"Preferences"_s).instantiate(controller);
///     } catch (const NS::NibError &error) {
///         qWarning("%s", error.what());
///         // Preferences.ui:31:5: nameField: PreferencesOwner has no key "nmae"
///         // (binding "text = owner.nmae")
///     }
class PELLARVINE_EXPORT NibError : public std::exception
{
public:
    /// The kind of fault.
    enum Reason {
        fileNotFound, ///< no file of that name, or one that cannot be read
        malformed, ///< not the XML of an interface file, or an entry of wrong syntax
        unknownClass, ///< a class that neither Qt nor the registry has
        unknownObject, ///< a name that no object of the file has
        unknownKeyPath, ///< an outlet, a bound property or a key path
        unknownMethod, ///< a signal or a slot, or both with arguments that do not match
        unknownProperty, ///< an unknown property, or a value that does not fit it
        unknownImage, ///< a picture or a resource file that does not exist
    };

    /// `message` is one sentence; what() adds file, place and object.
    NibError(Reason reason, QString file, int line, int column, QString object, QString name,
             const QString &message);
    ~NibError() override;

    /// The kind of the error.
    Reason reason() const noexcept { return m_reason; }

    /// The path of the file; empty for a tree that was made by code.
    const QString &file() const noexcept { return m_file; }

    /// The line, from 1; 0 if it is not known.
    int line() const noexcept { return m_line; }
    /// The column, from 1; 0 if it is not known.
    int column() const noexcept { return m_column; }

    /// The name of the object in the file. Empty if the error concerns the whole file.
    const QString &object() const noexcept { return m_object; }

    /// The name that cannot be resolved: a class, key path, signal, slot, property or object.
    const QString &name() const noexcept { return m_name; }

    /// File, place and message in one untranslated line, for logs.
    const char *what() const noexcept override;

private:
    Reason m_reason;
    QString m_file;
    int m_line;
    int m_column;
    QString m_object;
    QString m_name;
    QByteArray m_text;
};

} // namespace NS
