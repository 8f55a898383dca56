// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <exception>

namespace NS {

/// A property list that cannot be read, and the place where it stops making sense.
class PELLARVINE_EXPORT PropertyListError : public std::exception
{
public:
    /// `message` is the sentence that what() has behind file and place.
    PropertyListError(QString file, int line, int column, const QString &message);
    ~PropertyListError() override;

    /// As it was given.
    const QString &file() const noexcept { return m_file; }

    /// Counted from 1.
    int line() const noexcept { return m_line; }
    /// Likewise.
    int column() const noexcept { return m_column; }

    /// All of it in one untranslated line for logs: "Info.plist:7:3: this <key> has no value".
    const char *what() const noexcept override;

private:
    QString m_file;
    int m_line;
    int m_column;
    QByteArray m_text;
};

/// The value of a property list in XML:
///
///     const QVariant list = NS::propertyListFromXML(file.readAll(), file.fileName());
///     const QString name = list.toMap().value(u"CFBundleName"_s).toString();
///
/// A dict is a QVariantMap, an array a QVariantList, a string a QString, an integer a qlonglong (a
/// qulonglong above its range), a real a double, true and false are bool, a date is a QDateTime in
/// UTC and data a QByteArray. Throws `PropertyListError`, naming `fileName`, for whatever is not
/// that: nothing is guessed or left out. May be called on any thread.
PELLARVINE_EXPORT QVariant propertyListFromXML(const QByteArray &xml, const QString &fileName = {});

} // namespace NS
