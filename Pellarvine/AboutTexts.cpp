// SPDX-License-Identifier: MIT
#include "Pellarvine/AboutTexts.h"

#include <pellarvine/Platform/Version.h>

#include <QCoreApplication>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

#include <initializer_list>
#include <optional>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

constexpr qsizetype mostAuthors = 12; // in the window itself

struct Messages
{
    Q_DECLARE_TR_FUNCTIONS(Pellarvine::AboutWindowController)
};

// A key of `<custom>`: the lines of its value.
QStringList lines(const NS::Metainfo &metainfo, const QString &key)
{
    QStringList result;
    const QStringList all = metainfo.custom.value(key).split(u'\n');
    for (const QString &line : all) {
        if (!line.trimmed().isEmpty())
            result.append(line.trimmed());
    }
    return result;
}

// A QLabel takes the colour of links from the application's palette, and keeps it when that
// changes.
QString link(const QString &address, const QString &text, const QColor &color)
{
    return uR"(<a href="%1" style="color:%2">%3</a>)"_s.arg(address.toHtmlEscaped(), color.name(),
                                                            text.toHtmlEscaped());
}

QString row(const QStringList &links)
{
    return links.join(u" · "_s);
}

std::optional<QString> contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return QString::fromUtf8(file.readAll());
}

// "GPL-3.0-or-later" is the license "GPL-3.0", and "GPL-3" among the system's.
std::optional<QString> textOfLicense(const QString &identifier)
{
    static const QRegularExpression orLater(u"(-or-later|-only|\\+)$"_s);
    static const QRegularExpression zero(u"\\.0$"_s);
    const QString license = QString(identifier).remove(orLater);
    const QString programs = QCoreApplication::applicationDirPath();
    for (const QString &folder : { u":/LICENSES/"_s, programs + "/LICENSES/"_L1 }) {
        for (const QString &name : { identifier, license }) {
            if (auto text = contents(folder + name + ".txt"_L1))
                return text;
        }
    }
    for (const QString &name : { license, QString(license).remove(zero) }) {
        if (auto text = contents("/usr/share/common-licenses/"_L1 + name))
            return text;
    }
    return std::nullopt;
}

QString libraries(const NS::Metainfo &metainfo)
{
    QStringList all {
        u"Qt %1, LGPL-3.0-only"_s.arg(QString::fromLatin1(qVersion())),
        u"Pellarvine %1, MIT"_s.arg(
                QString::fromLatin1(reinterpret_cast<const char *>(PellarvineVersionString))),
    };
    return (all + lines(metainfo, u"Pellarvine::Libraries"_s)).join(u'\n');
}

QString releaseNotes(const NS::Metainfo &metainfo)
{
    QStringList notes;
    for (const NS::Metainfo::Release &release : metainfo.releases) {
        QStringList parts { release.version };
        if (release.date.isValid())
            parts.append(QLocale().toString(release.date, QLocale::LongFormat));
        parts.removeAll(QString());
        QString note = parts.join(", "_L1);
        if (!release.description.isEmpty())
            note += "\n\n"_L1 + release.description;
        notes.append(note);
    }
    return notes.join("\n\n\n"_L1);
}

} // namespace

QString aboutAuthors(const NS::Metainfo &metainfo)
{
    QStringList authors = lines(metainfo, u"Pellarvine::Authors"_s);
    if (authors.size() > mostAuthors)
        authors = authors.first(mostAuthors) << Messages::tr("others");
    const QString names =
            authors.isEmpty() ? metainfo.developer : QLocale().createSeparatedList(authors);
    return names.isEmpty() ? QString() : Messages::tr("By %1").arg(names);
}

QString aboutLinks(const NS::Metainfo &metainfo, const QColor &color)
{
    const std::pair<QString, QString> kinds[] = {
        { u"homepage"_s, Messages::tr("Website") },
        { u"bugtracker"_s, Messages::tr("Report a Bug") },
        { u"vcs-browser"_s, Messages::tr("Source Code") },
    };
    QStringList links;
    for (const auto &[type, title] : kinds) {
        const QUrl url = metainfo.urls.value(type);
        if (url.isValid()
            && QStringList { u"http"_s, u"https"_s, u"mailto"_s }.contains(url.scheme()))
            links.append(link(url.toString(QUrl::FullyEncoded), title, color));
    }
    return row(links);
}

QString licenseText(const QString &expression)
{
    static const QRegularExpression separators(u"[\\s()]+"_s);
    QStringList texts;
    const QStringList words = expression.split(separators, Qt::SkipEmptyParts);
    for (const QString &word : words) {
        const bool isIdentifier =
                word != "OR"_L1 && word != "AND"_L1 && word != "WITH"_L1 && !word.contains(u'/');
        if (const auto text = isIdentifier ? textOfLicense(word) : std::nullopt)
            texts.append(text->trimmed());
    }
    texts.removeDuplicates();
    return texts.join("\n\n\n"_L1);
}

QList<AboutDocument> aboutDocuments(const NS::Metainfo &metainfo)
{
    const QString &license = metainfo.projectLicense;
    QString text = licenseText(license);
    if (text.isEmpty())
        text = license;
    const QStringList authors = lines(metainfo, u"Pellarvine::Authors"_s);
    QList<AboutDocument> documents {
        { u"about:authors"_s, Messages::tr("Authors"),
          authors.size() > mostAuthors ? authors.join(u'\n') : QString() },
        { u"about:license"_s, Messages::tr("License: %1").arg(license), text },
        { u"about:credits"_s, Messages::tr("Credits"),
          lines(metainfo, u"Pellarvine::Credits"_s).join(u'\n') },
        { u"about:libraries"_s, Messages::tr("Libraries"), libraries(metainfo) },
        { u"about:releases"_s, Messages::tr("Release Notes"), releaseNotes(metainfo) },
    };
    documents.removeIf([](const AboutDocument &document) { return document.text.isEmpty(); });
    return documents;
}

QString documentLinks(const QList<AboutDocument> &documents, const QColor &color)
{
    QStringList links;
    for (const AboutDocument &document : documents)
        links.append(link(document.link, document.title, color));
    return row(links);
}

} // namespace Pellarvine::detail
