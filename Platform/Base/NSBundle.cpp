// SPDX-License-Identifier: MIT
#include "Base/NSBundle.h"

#include "Base/Failure.h"
#include "Base/MetainfoReader.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <mutex>
#include <set>
#include <string>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

// The display name of a graphical application. This library does not load QtGui.
QString displayName()
{
    const QCoreApplication *const application = QCoreApplication::instance();
    return application ? application->property("applicationDisplayName").toString() : QString();
}

QVariantMap factsOfQt()
{
    const QString name = QCoreApplication::applicationName();
    QStringList domain = QCoreApplication::organizationDomain().split(u'.', Qt::SkipEmptyParts);
    std::reverse(domain.begin(), domain.end());
    domain.append(name);
    const std::pair<QString, QString> facts[] = {
        { u"CFBundleName"_s, name },
        { u"CFBundleDisplayName"_s, displayName() },
        { u"CFBundleShortVersionString"_s, QCoreApplication::applicationVersion() },
        { u"CFBundleIdentifier"_s,
          domain.size() > 1 && !name.isEmpty() ? domain.join(u'.') : QString() },
    };
    QVariantMap map;
    for (const auto &[key, value] : facts) {
        if (!value.isEmpty())
            map.insert(key, value);
    }
    return map;
}

// Prints one line for each fault, however often the file is read.
void warnOnce(const std::string &fault)
{
    static std::mutex mutex;
    static auto *const known = new std::set<std::string>;
    const std::lock_guard lock(mutex);
    if (known->insert(fault).second)
        detail::printWarning("Warning: " + fault);
}

// Returns the first file that exists, or an empty path.
QString existing(std::initializer_list<QString> paths)
{
    const auto *const found = std::find_if(paths.begin(), paths.end(), [](const QString &path) {
        return QFileInfo::exists(path);
    });
    return found == paths.end() ? QString() : *found;
}

// Throws PropertyListError, as its callers do for a file of wrong contents.
QByteArray contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw PropertyListError(path, 1, 1, file.errorString());
    return file.readAll();
}

} // namespace

Bundle Bundle::main()
{
    return {};
}

QVariant Bundle::objectForInfoDictionaryKey(const QString &key) const
{
    try {
        return infoDictionary().value(key);
    } catch (const PropertyListError &error) {
        warnOnce(error.what());
        return factsOfQt().value(key);
    }
}

QString Bundle::bundleIdentifier() const
{
    const QVariant identifier = objectForInfoDictionaryKey(u"CFBundleIdentifier"_s);
    return identifier.typeId() == QMetaType::QString ? identifier.toString() : QString();
}

QVariantMap Bundle::infoDictionary() const
{
    const QString path = infoDictionaryPath();
    if (path.isEmpty())
        return factsOfQt();
    const QVariant list = propertyListFromXML(contents(path), path);
    if (list.typeId() != QMetaType::QVariantMap)
        throw PropertyListError(path, 1, 1, u"the outermost value is not a dictionary"_s);
    return list.toMap();
}

QString Bundle::infoDictionaryPath() const
{
    return existing(
            { u":/Info.plist"_s, QCoreApplication::applicationDirPath() + "/Info.plist"_L1 });
}

Metainfo Bundle::metainfo() const
{
    const QString path = metainfoPath();
    if (path.isEmpty())
        return {};
    try {
        return detail::metainfoFromXML(contents(path), path);
    } catch (const PropertyListError &error) {
        warnOnce(error.what());
        return {};
    }
}

QString Bundle::metainfoPath() const
{
    const QString identifier = bundleIdentifier();
    if (identifier.isEmpty() || identifier.contains(u'/'))
        return {};
    const QString name = identifier + ".metainfo.xml"_L1;
    const QString programs = QCoreApplication::applicationDirPath();
    return existing(
            { ":/"_L1 + name, programs + u'/' + name, programs + "/../share/metainfo/"_L1 + name });
}

} // namespace NS
