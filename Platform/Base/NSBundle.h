// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSMetainfo.h>
#include <pellarvine/Platform/NSPropertyList.h>

#include <QString>
#include <QVariant>

namespace NS {

/// The key of a bundle's build number.
inline const QString kCFBundleVersionKey = QStringLiteral("CFBundleVersion");

/// What the program says about itself:
///
///     const NS::Bundle bundle = NS::Bundle::main();
///     const QString copyright =
///             bundle.objectForInfoDictionaryKey(u"NSHumanReadableCopyright"_s).toString();
///
/// The facts stand in the file Info.plist, a property list in XML: in the program's resources
/// (":/Info.plist"), else beside the executable. A program without one is described by what it has
/// told Qt:
///
///     CFBundleName                 QCoreApplication::applicationName()
///     CFBundleDisplayName          QGuiApplication::applicationDisplayName()
///     CFBundleShortVersionString   QCoreApplication::applicationVersion()
///     CFBundleIdentifier           organizationDomain() backwards, a dot, and applicationName()
///
/// without those that are empty. The file is read afresh in every call. Any thread, once there is a
/// QCoreApplication.
class PELLARVINE_EXPORT Bundle
{
public:
    /// The running program's.
    static Bundle main();

    /// The value, or an invalid QVariant if there is no such key. With a file that
    /// cannot be read, what Qt knows; a warning then names the place, once for each such fault.
    QVariant objectForInfoDictionaryKey(const QString &key) const;

    /// "org.example.mail"; null if there is none, or none that is text.
    QString bundleIdentifier() const;

    /// All values. Throws `PropertyListError` for a file that is malformed, holds no dictionary or
    /// cannot be read.
    QVariantMap infoDictionary() const;

    /// Where infoDictionary() would read; empty if there is no such file.
    QString infoDictionaryPath() const;

    /// What the AppStream metainfo file says. An empty one if there is no file; also if the file
    /// cannot be read, and then a warning names the place, once for each such fault.
    Metainfo metainfo() const;

    /// Where metainfo() reads: bundleIdentifier() and ".metainfo.xml" in the program's resources
    /// (":/"), else beside the executable, else in ../share/metainfo from there. Empty if there is
    /// no such file.
    QString metainfoPath() const;

private:
    Bundle() = default;
};

} // namespace NS
