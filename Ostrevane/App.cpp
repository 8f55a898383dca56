// SPDX-License-Identifier: MIT
#include "Ostrevane/App.h"

#include "Base/Failure.h"
#include "Base/NSBundle.h"
#include "Ostrevane/DeviceModel.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QSysInfo>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <sys/stat.h>
#include <sys/utsname.h>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

// The name of the folder for a program without an identifier.
const QString fallbackIdentifier = u"org.example.test"_s;

// The text in the bundle's dictionary. Nothing if the key is missing or has another type.
std::optional<QString> text(const QString &key)
{
    const QVariant value = NS::Bundle::main().objectForInfoDictionaryKey(key);
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

// Creates the folder and those above it. Returns 0 or the error number.
int createFolders(const QString &path)
{
    if (QFileInfo(path).isDir())
        return 0;
    const QString parent = QFileInfo(path).path();
    if (parent != path) {
        if (const int error = createFolders(parent))
            return error;
    }
    // Another process may create it at the same time.
    if (::mkdir(QFile::encodeName(path).constData(), S_IRWXU) == 0 || QFileInfo(path).isDir())
        return 0;
    return errno;
}

void printFailure(const QString &reason)
{
    detail::printWarning("Error locating application support subdirectory: "
                         + reason.toStdString());
}

bool isCreated(const QString &path)
{
    const int error = createFolders(path);
    if (error != 0)
        printFailure(qt_error_string(error));
    return error == 0;
}

} // namespace

QString App::name()
{
    return text(u"CFBundleDisplayName"_s).value_or(text(u"CFBundleName"_s).value_or(QString()));
}

QString App::version()
{
    const QString version = text(u"CFBundleShortVersionString"_s).value_or(QString());
    return version.isEmpty() ? text(NS::kCFBundleVersionKey).value_or(u"0"_s) : version;
}

QString App::copyright()
{
    return text(u"NSHumanReadableCopyright"_s).value_or(QString());
}

QString App::platform()
{
    return u"macOS"_s;
}

QString App::operatingSystem()
{
    return u"macOS "_s + QSysInfo::prettyProductName();
}

QString App::deviceModel()
{
    utsname identification {};
    ::uname(&identification);
    // The field has fewer bytes on Linux than the 256 of a MachineField.
    detail::MachineField machine {};
    static_assert(sizeof(identification.machine) <= sizeof(machine));
    std::copy(std::begin(identification.machine), std::end(identification.machine),
              machine.begin());
    return detail::deviceModel(machine);
}

std::optional<QUrl> App::applicationSupportSubdirectory()
{
    QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    // The XDG base directory rules ignore a relative path, which Qt follows.
    if (QDir::isRelativePath(base))
        base = QDir::homePath() + "/.local/share"_L1;
    QString identifier = NS::Bundle::main().bundleIdentifier();
    if (identifier.isEmpty())
        identifier = fallbackIdentifier;
    if (identifier.contains(u'/') || identifier == "."_L1 || identifier == ".."_L1) {
        printFailure(identifier + " cannot name a folder"_L1);
        return std::nullopt;
    }
    if (!isCreated(base))
        return std::nullopt;
    const QString folder = base + u'/' + identifier;
    if (!isCreated(folder))
        return std::nullopt;
    return QUrl::fromLocalFile(folder + u'/');
}

} // namespace Pellarvine
