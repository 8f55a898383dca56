// SPDX-License-Identifier: MIT
#include "Base/MetainfoReader.h"

#include "Base/NSPropertyList.h"
#include "Base/XmlReader.h"

#include <QLocale>
#include <QStringList>
#include <QTimeZone>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

constexpr qsizetype untranslated = std::numeric_limits<qsizetype>::max() - 1;
constexpr qsizetype foreign = untranslated + 1;

// A text and the rank of its language: 0 is the best.
struct Translation
{
    QString text;
    qsizetype rank = foreign;

    void offer(Translation other)
    {
        if (other.rank < rank)
            *this = std::move(other);
    }
};

// The user's languages, best first. Each is followed by the language without its region: de-AT, de.
QStringList languages()
{
    QStringList result;
    const QStringList all = QLocale().uiLanguages();
    for (const QString &language : all) {
        const QString plain = language.section(u'-', 0, 0);
        if (!result.contains(plain))
            result.append(plain);
        if (!result.contains(language))
            result.insert(result.indexOf(plain), language);
    }
    return result;
}

class MetainfoReader
{
public:
    MetainfoReader(const QByteArray &xml, QString fileName)
        : m_xml(xml)
        , m_fileName(std::move(fileName))
        , m_languages(languages())
    { }

    NS::Metainfo read()
    {
        while (!m_xml.atEnd() && m_xml.tokenType() != XmlReader::StartElement)
            m_xml.readNext();
        m_xml.noteTag();
        if (!m_xml.hasError() && m_xml.name() != "component"_L1)
            m_xml.raiseError(u"this is not a metainfo file: the outermost element is <%1>"_s.arg(
                    m_xml.name()));
        eachChild([this](const QString &tag) { readPart(tag); });
        if (m_xml.hasError()) {
            const XmlPlace place = m_xml.place();
            throw NS::PropertyListError(m_fileName, place.line, place.column, m_xml.errorString());
        }
        m_metainfo.developer = m_developer.text;
        return m_metainfo;
    }

private:
    // Calls `handle`, which reads to the end of the element, for each element in the current one.
    template <typename Handler>
    void eachChild(Handler handle)
    {
        while (m_xml.readNext() != XmlReader::EndElement && !m_xml.hasError()) {
            if (m_xml.tokenType() == XmlReader::StartElement)
                handle(m_xml.name().toString());
        }
    }

    void readPart(const QString &tag)
    {
        if (tag == "project_license"_L1) {
            m_metainfo.projectLicense = text();
        } else if (tag == "developer_name"_L1) {
            m_developer.offer(translation());
        } else if (tag == "developer"_L1) {
            eachChild([this](const QString &inner) {
                if (inner == "name"_L1)
                    m_developer.offer(translation());
                else
                    m_xml.skipCurrentElement();
            });
        } else if (tag == "url"_L1) {
            const QString type = attribute("type"_L1);
            m_metainfo.urls.insert(type, QUrl(text(), QUrl::StrictMode));
        } else if (tag == "releases"_L1) {
            eachChild([this](const QString &inner) {
                if (inner == "release"_L1)
                    readRelease();
                else
                    m_xml.skipCurrentElement();
            });
        } else if (tag == "custom"_L1) {
            eachChild([this](const QString &) {
                const QString key = attribute("key"_L1);
                m_metainfo.custom.insert(key, text());
            });
        } else {
            m_xml.skipCurrentElement();
        }
    }

    void readRelease()
    {
        NS::Metainfo::Release release;
        release.version = attribute("version"_L1);
        release.date = QDate::fromString(attribute("date"_L1).left(10), Qt::ISODate);
        if (!release.date.isValid()) {
            if (const qint64 seconds = attribute("timestamp"_L1).toLongLong())
                release.date = QDateTime::fromSecsSinceEpoch(seconds, QTimeZone::utc()).date();
        }
        QList<Translation> lines;
        eachChild([&](const QString &tag) {
            if (tag == "description"_L1)
                readLines(lines);
            else
                m_xml.skipCurrentElement();
        });
        QStringList texts;
        for (const Translation &line : std::as_const(lines))
            texts.append(line.text);
        release.description = texts.join(u'\n');
        m_metainfo.releases.append(release);
    }

    // A line is followed by its translations.
    void readLines(QList<Translation> &lines)
    {
        eachChild([&](const QString &tag) {
            if (tag == "ul"_L1 || tag == "ol"_L1) {
                readLines(lines);
                return;
            }
            const bool isItem = tag == "li"_L1;
            Translation line = translation();
            if (isItem)
                line.text.prepend(u"• "_s);
            if (line.rank == untranslated)
                lines.append(line);
            else if (!lines.isEmpty())
                lines.last().offer(line);
        });
    }

    QString attribute(QLatin1StringView name) const
    {
        return m_xml.attributes().value(name).toString();
    }

    QString text()
    {
        return m_xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed();
    }

    Translation translation()
    {
        const qsizetype rank = rankOf(attribute("xml:lang"_L1));
        return { text().simplified(), rank };
    }

    qsizetype rankOf(QString language) const
    {
        if (language.isEmpty())
            return untranslated;
        const qsizetype rank = m_languages.indexOf(language.replace(u'_', u'-'));
        return rank < 0 ? foreign : rank;
    }

    XmlReader m_xml;
    QString m_fileName;
    QStringList m_languages;
    NS::Metainfo m_metainfo;
    Translation m_developer;
};

} // namespace

NS::Metainfo metainfoFromXML(const QByteArray &xml, const QString &fileName)
{
    return MetainfoReader(xml, fileName).read();
}

} // namespace Pellarvine::detail
