// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <exception>

namespace NS {

/// Thrown for a malformed property list or metainfo file, with the place of the error.
class PELLARVINE_EXPORT PropertyListError : public std::exception
{
public:
    /// `message` is one sentence; what() adds the file and the place.
    PropertyListError(QString file, int line, int column, const QString &message);
    ~PropertyListError() override;

    /// The name that was passed to propertyListFromXML(); from NS::Bundle, the file's path.
    const QString &file() const noexcept { return m_file; }

    /// The line of the error, from 1.
    int line() const noexcept { return m_line; }
    /// The column of the error, from 1.
    int column() const noexcept { return m_column; }

    /// File, place and message in one untranslated line: "Info.plist:7:3: this <key> has no value".
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
/// A dict becomes a QVariantMap, an array a QVariantList, a string a QString, an integer a
/// qlonglong (a qulonglong above its range), a real a double, true and false a bool, a date a
/// QDateTime in UTC, and data a QByteArray. Throws `PropertyListError` for anything else, with
/// `fileName` in its message. Any thread.
PELLARVINE_EXPORT QVariant propertyListFromXML(const QByteArray &xml, const QString &fileName = {});

} // namespace NS
