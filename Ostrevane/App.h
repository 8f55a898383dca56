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
/// or from what it has told Qt. Each call computes its value again. The functions may be called
/// from any thread, after the QCoreApplication is made.
class PELLARVINE_EXPORT App
{
public:
    /// All functions are static.
    App() = delete;

    /// "CFBundleDisplayName" if it is text, which may be empty. Otherwise "CFBundleName", or an
    /// empty text.
    static QString name();

    /// "CFBundleShortVersionString" if it is text and not empty. Otherwise "CFBundleVersion", the
    /// build number, or "0".
    static QString version();

    /// "NSHumanReadableCopyright" if it is text, otherwise an empty text.
    static QString copyright();

    /// Always "macOS": the platform of the API, not that of the machine.
    static QString platform();

    /// "macOS " followed by the name and version of the operating system, as the system reports
    /// them.
    static QString operatingSystem();

    /// The machine hardware name of uname(): "x86_64". A byte above 127 in it aborts the process.
    static QString deviceModel();

    /// The folder for the application's data, as a URL that ends in a slash. It is in
    /// $XDG_DATA_HOME, or in ~/.local/share if that variable is unset or relative, and has the name
    /// of the bundle identifier, or "org.example.test" without one. Missing folders are created for
    /// the user only (mode 0700). Returns nothing, and prints the reason on standard output, if the
    /// folder cannot be created or the identifier contains a path separator.
    static std::optional<QUrl> applicationSupportSubdirectory();
};

} // namespace Pellarvine
