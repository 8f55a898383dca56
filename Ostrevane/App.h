// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QString>
#include <QUrl>

#include <optional>

namespace Pellarvine {

/// Facts about the running application and the machine:
///
///     aboutLabel->setText(tr("%1, version %2").arg(App::name(), App::version()));
///     if (const std::optional<QUrl> folder = App::applicationSupportSubdirectory())
///         openDatabase(folder->toLocalFile() + u"notes.db"_s);
///
/// The first three come from `NS::Bundle::main()`: the program's Info.plist, or what it has told
/// Qt. Everything is computed afresh in every call. Any thread, once there is a QCoreApplication.
class PELLARVINE_EXPORT App
{
public:
    /// There are no instances: every fact is a static function.
    App() = delete;

    /// "CFBundleDisplayName" if that is text, even an empty one; else "CFBundleName"; else empty.
    static QString name();

    /// "CFBundleShortVersionString" if that is text and not empty; else "CFBundleVersion", the
    /// build number; else "0".
    static QString version();

    /// "NSHumanReadableCopyright" if that is text, else empty.
    static QString copyright();

    /// Always "macOS": the name of the platform that programs are written for, whatever it runs on.
    static QString platform();

    /// "macOS " and the operating system's name and version as it words them itself.
    static QString operatingSystem();

    /// The machine as uname() has it: "x86_64". A byte above 127 in it stops the process.
    static QString deviceModel();

    /// The application's own folder for its data, as a URL that ends in a slash; created, with the
    /// folders above it, where it is missing, and then for the user alone (mode 0700). It is named
    /// after the bundle identifier, or "org.example.test" without one, and lies in the user's
    /// folder for data: $XDG_DATA_HOME, else ~/.local/share, also where that
    /// variable holds a relative path. Nothing if the folder cannot be created or the identifier
    /// holds a path separator; one line on standard output says why.
    static std::optional<QUrl> applicationSupportSubdirectory();
};

} // namespace Pellarvine
