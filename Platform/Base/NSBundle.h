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

/// Facts about the running program:
///
///     const NS::Bundle bundle = NS::Bundle::main();
///     const QString copyright =
///             bundle.objectForInfoDictionaryKey(u"NSHumanReadableCopyright"_s).toString();
///
/// They are read from the file Info.plist, a property list in XML, in the program's resources
/// (":/Info.plist") or else beside the executable. Without that file, they come from Qt:
///
///     CFBundleName                 QCoreApplication::applicationName()
///     CFBundleDisplayName          QGuiApplication::applicationDisplayName()
///     CFBundleShortVersionString   QCoreApplication::applicationVersion()
///     CFBundleIdentifier           organizationDomain() reversed, a dot, and applicationName()
///
/// Empty values are left out. Each call reads the file again. The functions may be called from any
/// thread, after the QCoreApplication is made.
class PELLARVINE_EXPORT Bundle
{
public:
    /// The bundle of the running program.
    static Bundle main();

    /// The value, or an invalid QVariant if there is no such key. If the file cannot be read or is
    /// malformed, the value is what the program has told Qt, and a warning is printed once.
    QVariant objectForInfoDictionaryKey(const QString &key) const;

    /// The identifier, such as "org.example.mail". Null if there is none, or if it is not text.
    QString bundleIdentifier() const;

    /// All values. Throws `PropertyListError` if the file is malformed, has no dictionary or cannot
    /// be read.
    QVariantMap infoDictionary() const;

    /// The path of the file that infoDictionary() reads. Empty if there is none.
    QString infoDictionaryPath() const;

    /// The contents of the AppStream metainfo file. Empty if there is no such file. Empty too if it
    /// cannot be read or is malformed; then a warning is printed once.
    Metainfo metainfo() const;

    /// The path of the file that metainfo() reads, such as ":/org.example.mail.metainfo.xml": the
    /// name is bundleIdentifier(). The places, in this order, are the program's resources (":/"),
    /// the executable's folder, and ../share/metainfo from there. Empty if there is no file.
    QString metainfoPath() const;

private:
    Bundle() = default;
};

} // namespace NS
