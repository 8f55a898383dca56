// SPDX-License-Identifier: MIT
#include "Base/NSPropertyList.h"

#include "Base/XmlReader.h"

#include <QDateTime>
#include <QFileInfo>
#include <QTimeZone>

#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

// Deeper than any real list. Reading is recursive.
constexpr int deepest = 200;

class ListReader
{
public:
    ListReader(const QByteArray &xml, QString fileName)
        : m_xml(xml)
        , m_fileName(std::move(fileName))
    { }

    QVariant read()
    {
        if (!nextChild())
            fail(u"the file has no element"_s);
        if (m_xml.name() != "plist"_L1)
            fail(u"this is not a property list: the outermost element is <%1>"_s.arg(m_xml.name()));
        if (!nextChild())
            fail(u"the property list is empty"_s);
        QVariant result = value(0);
        if (nextChild())
            fail(u"there is a second value"_s);
        nextChild(); // fails if anything follows the list
        return result;
    }

private:
    // Goes to the next element in the current one; false at its end.
    bool nextChild()
    {
        const bool isThere = m_xml.readChild();
        checkReader();
        return isThere;
    }

    // The value of the element whose tag has been read.
    QVariant value(int depth)
    {
        if (depth == deepest)
            fail(u"it is nested too deeply"_s);
        const QString tag = m_xml.name().toString();
        if (tag == "dict"_L1)
            return dictionary(depth);
        if (tag == "array"_L1) {
            QVariantList list;
            while (nextChild())
                list.append(value(depth + 1));
            return list;
        }
        if (tag == "string"_L1)
            return text();
        if (tag == "integer"_L1)
            return integer();
        if (tag == "real"_L1) {
            bool isValid = false;
            const QString number = text();
            const double result = number.trimmed().toDouble(&isValid);
            return isValid ? result : fail(u"\"%1\" is not a number"_s.arg(number));
        }
        if (tag == "true"_L1 || tag == "false"_L1) {
            if (!text().trimmed().isEmpty())
                fail(u"<%1> must be empty"_s.arg(tag));
            return tag == "true"_L1;
        }
        if (tag == "date"_L1) {
            const QString date = text();
            const QDateTime result = QDateTime::fromString(date.trimmed(), Qt::ISODate);
            return result.isValid() ? result.toUTC() : fail(u"\"%1\" is not a date"_s.arg(date));
        }
        if (tag == "data"_L1) {
            const QByteArray bytes = text().simplified().remove(u' ').toLatin1();
            const auto decoded =
                    QByteArray::fromBase64Encoding(bytes, QByteArray::AbortOnBase64DecodingErrors);
            return decoded ? *decoded : fail(u"this is not Base64"_s);
        }
        return fail(u"there is no type \"%1\""_s.arg(tag));
    }

    QVariantMap dictionary(int depth)
    {
        QVariantMap map;
        while (nextChild()) {
            if (m_xml.name() != "key"_L1)
                fail(u"a <key> is missing before this <%1>"_s.arg(m_xml.name()));
            const QString key = text();
            if (map.contains(key))
                fail(u"the key \"%1\" occurs twice"_s.arg(key));
            if (!nextChild() || m_xml.name() == "key"_L1)
                fail(u"the key \"%1\" has no value"_s.arg(key));
            map.insert(key, value(depth + 1));
        }
        return map;
    }

    // "-12" or "0x1F".
    QVariant integer()
    {
        const QString number = text();
        const QString digits = number.trimmed();
        const bool isHexadecimal = digits.contains(u'x', Qt::CaseInsensitive);
        bool isValid = false;
        const qlonglong result = digits.toLongLong(&isValid, isHexadecimal ? 16 : 10);
        if (isValid)
            return result;
        const qulonglong large = digits.toULongLong(&isValid, isHexadecimal ? 16 : 10);
        if (!isValid)
            fail(u"\"%1\" is not an integer"_s.arg(number));
        return large;
    }

    QString text()
    {
        QString result = m_xml.readElementText();
        checkReader();
        return result;
    }

    void checkReader() const
    {
        if (m_xml.hasError())
            fail(m_xml.errorString());
    }

    [[noreturn]] QVariant fail(const QString &message) const
    {
        const detail::XmlPlace place = m_xml.place();
        throw PropertyListError(m_fileName, place.line, place.column, message);
    }

    detail::XmlReader m_xml;
    QString m_fileName;
};

} // namespace

PropertyListError::PropertyListError(QString file, int line, int column, const QString &message)
    : m_file(std::move(file))
    , m_line(line)
    , m_column(column)
    , m_text(u"%1:%2:%3: %4"_s.arg(QFileInfo(m_file).fileName())
                     .arg(line)
                     .arg(column)
                     .arg(message)
                     .toUtf8())
{ }

PropertyListError::~PropertyListError() = default;

const char *PropertyListError::what() const noexcept
{
    return m_text.constData();
}

QVariant propertyListFromXML(const QByteArray &xml, const QString &fileName)
{
    return ListReader(xml, fileName).read();
}

} // namespace NS
