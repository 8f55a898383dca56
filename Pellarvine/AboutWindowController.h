// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSWindowController.h>

#include <QPixmap>

#include <memory>

namespace Pellarvine {

/// The about window. It shows icon, name, version and copyright of the application, from `App`, and
/// facts from its AppStream metainfo file (`NS::Bundle::metainfo()`).
///
///     Pellarvine::AboutWindowController::show();
///
/// From the metainfo file it shows the project's license (with its text on demand), the links
/// "homepage", "bugtracker" and "vcs-browser", the release notes, and entries in `<custom>`, one
/// per line:
///
///     <value key="Pellarvine::Authors">      names, twelve in the window and all on demand;
///                                            without them, the developer's is shown
///     <value key="Pellarvine::Credits">      other people and works
///     <value key="Pellarvine::Libraries">    "SQLite 3.46, blessing", below Qt and this library
///
/// The text of the license is LICENSES/ID.txt in the program's resources or beside the executable,
/// else in /usr/share/common-licenses. Empty values have no row in the window.
///
/// The window is loaded from the interface file "AboutWindowController". A program can have its own
/// file of that name (see `NS::Nib`), which replaces that of the library. Labels in it are bound to
/// the properties of the controller: "text = owner.applicationName". The texts are computed when
/// the controller is made.
class PELLARVINE_EXPORT AboutWindowController : public NS::WindowController
{
    Q_OBJECT
    Q_PROPERTY(QString applicationName READ applicationName WRITE setApplicationName NOTIFY
                       applicationNameChanged)
    Q_PROPERTY(QString applicationVersion READ applicationVersion WRITE setApplicationVersion NOTIFY
                       applicationVersionChanged)
    Q_PROPERTY(QString applicationCopyright READ applicationCopyright WRITE setApplicationCopyright
                       NOTIFY applicationCopyrightChanged)
    Q_PROPERTY(QString applicationAuthors READ applicationAuthors CONSTANT)
    Q_PROPERTY(QString applicationLinks READ applicationLinks NOTIFY linkColorChanged)
    Q_PROPERTY(QString applicationDocuments READ applicationDocuments NOTIFY linkColorChanged)
    Q_PROPERTY(bool hasApplicationName READ hasApplicationName NOTIFY applicationNameChanged)
    Q_PROPERTY(bool hasApplicationCopyright READ hasApplicationCopyright NOTIFY
                       applicationCopyrightChanged)
    Q_PROPERTY(bool hasApplicationAuthors READ hasApplicationAuthors CONSTANT)
    Q_PROPERTY(bool hasApplicationLinks READ hasApplicationLinks CONSTANT)
    Q_PROPERTY(QPixmap applicationIcon READ applicationIcon CONSTANT)
    Q_PROPERTY(QString details READ details STORED false NOTIFY detailsChanged)

public:
    /// Loads its window from the interface file.
    AboutWindowController();
    /// Manages and owns a window that was made elsewhere. `window` may be null.
    explicit AboutWindowController(QWidget *window, QObject *parent = nullptr);
    ~AboutWindowController() override;

    /// The shared controller, made by the first call, which may come from any thread. It lives
    /// until the application object is destroyed. Use it on the main thread only.
    static AboutWindowController *instance();
    /// Replaces the shared controller. The class owns the new one; the previous one is deleted
    /// (deleteLater). After null, the next call of instance() makes a new one. Main thread only.
    static void setInstance(AboutWindowController *controller);

    /// Shows the shared controller's window, or brings it to the front.
    static void show();

    /// Default: App::name().
    QString applicationName() const;
    void setApplicationName(const QString &name);

    /// Default: "Version " and App::version().
    QString applicationVersion() const;
    void setApplicationVersion(const QString &version);

    /// Default: App::copyright().
    QString applicationCopyright() const;
    void setApplicationCopyright(const QString &copyright);

    /// "By " and the authors. Empty if the metainfo names none.
    QString applicationAuthors() const;
    /// Links to web pages, as rich text in a colour that is readable in the window. Empty if the
    /// metainfo has none.
    QString applicationLinks() const;
    /// Links to license, credits, libraries and release notes, as rich text for openLink().
    QString applicationDocuments() const;

    /// @{
    /// Whether the text is not empty, for bindings of `visible`.
    bool hasApplicationName() const { return !applicationName().isEmpty(); }
    bool hasApplicationCopyright() const { return !applicationCopyright().isEmpty(); }
    bool hasApplicationAuthors() const { return !applicationAuthors().isEmpty(); }
    bool hasApplicationLinks() const { return !applicationLinks().isEmpty(); }
    /// @}

    /// Shows the document that a link of applicationDocuments() refers to, above the window, or
    /// opens an address with the user's program for it.
    Q_INVOKABLE void openLink(const QString &link);

    /// The window icon of the application, 64 pixels wide. Default: a tile with the initial of its
    /// name.
    QPixmap applicationIcon() const;

    /// Facts for a bug report: name and version, Qt, the system and the machine, one per line.
    QString details() const;
    /// Copies the details to the clipboard.
    Q_INVOKABLE void copyDetails() const;

    /// Shows the window. The first time, it is centred in the active window or on the screen.
    void showWindow(const QVariant &sender = {}) override;

    /// Lets the whole background of the window move it.
    void windowDidLoad() override;

Q_SIGNALS:
    void applicationNameChanged(const QString &name);
    void applicationVersionChanged(const QString &version);
    void applicationCopyrightChanged(const QString &copyright);
    void detailsChanged();
    /// The window's palette has changed, and with it the texts with links.
    void linkColorChanged();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
