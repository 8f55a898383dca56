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
/// Name, version and copyright come from `NS::Bundle::main()`: from the Info.plist of the program,
/// or from what it has told Qt. Values are computed in every call. Any thread, once there is a
/// QCoreApplication.
class PELLARVINE_EXPORT App
{
public:
    /// Has static functions only.
    App() = delete;

    /// "CFBundleDisplayName" if that is text, even an empty one; else "CFBundleName"; else empty.
    static QString name();

    /// "CFBundleShortVersionString" if that is text and not empty; else "CFBundleVersion", the
    /// build number; else "0".
    static QString version();

    /// "NSHumanReadableCopyright" if that is text, else empty.
    static QString copyright();

    /// Always "macOS": the platform of the API, not that of the machine.
    static QString platform();

    /// "macOS " followed by the name and version of the operating system, as the system reports
    /// them.
    static QString operatingSystem();

    /// The machine hardware name of uname(): "x86_64". A byte above 127 in it stops the process.
    static QString deviceModel();

    /// The application's folder for its data, as a URL that ends in a slash. The folder and those
    /// above it are created if they are missing, for the user alone (mode 0700). It is named after
    /// the bundle identifier, or "org.example.test" without one, in $XDG_DATA_HOME, or in
    /// ~/.local/share if that variable is unset or relative. Nothing if the folder cannot be
    /// created or the identifier contains a path separator; one line on standard output gives the
    /// reason.
    static std::optional<QUrl> applicationSupportSubdirectory();
};

} // namespace Pellarvine
