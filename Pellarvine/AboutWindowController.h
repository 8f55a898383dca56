// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSWindowController.h>

#include <QPixmap>

#include <memory>

namespace Pellarvine {

/// The about window: icon, name, version and copyright of the application, as `App` has them, and
/// what its AppStream metainfo file says (`NS::Bundle::metainfo()`).
///
///     Pellarvine::AboutWindowController::show();
///
/// Of the metainfo file it shows the project's license, with its text on demand, the links
/// "homepage", "bugtracker" and "vcs-browser", the release notes, and in `<custom>`, an entry a
/// line:
///
///     <value key="Pellarvine::Authors">      names; without them, the developer's is shown
///     <value key="Pellarvine::Credits">      other people and works
///     <value key="Pellarvine::Libraries">    "SQLite 3.46, blessing", below Qt and this library
///
/// The license's text is LICENSES/ID.txt in the program's resources or beside the executable, else
/// the system's in /usr/share/common-licenses. What is empty has no row in the window.
///
/// The window comes from the interface file "AboutWindowController". The library has one; a program
/// that has its own of that name (see `NS::Nib`) shows that instead. The labels of either are bound
/// to the controller's properties: "text = owner.applicationName". The texts are those of the
/// moment in which the controller was made.
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
    Q_PROPERTY(QString applicationLinks READ applicationLinks CONSTANT)
    Q_PROPERTY(QString applicationDocuments READ applicationDocuments CONSTANT)
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
    /// Shows a window that was made elsewhere, and owns it. `window` may be null.
    explicit AboutWindowController(QWidget *window, QObject *parent = nullptr);
    ~AboutWindowController() override;

    /// The shared controller, made on first use: once, from whatever threads. It lives until the
    /// application object goes. On other threads, do nothing with it but hand it on.
    static AboutWindowController *instance();
    /// Takes another one, which belongs to the class from then on; the one before it is deleted
    /// (deleteLater). With null, the next use makes a new one. Main thread only.
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
    /// Links to web pages, as rich text. Empty if the metainfo has none.
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

    /// The application's window icon, 64 units wide; a tile with the initial of its name if it has
    /// none.
    QPixmap applicationIcon() const;

    /// What belongs into a bug report: name and version, Qt, the system and the machine, a line
    /// each.
    QString details() const;
    /// Puts the details on the clipboard.
    Q_INVOKABLE void copyDetails() const;

    /// Shows a window that has no place yet in the middle of the active one, or of the screen.
    void showWindow(const QVariant &sender = {}) override;

    /// Lets every place of the window's background move it.
    void windowDidLoad() override;

Q_SIGNALS:
    void applicationNameChanged(const QString &name);
    void applicationVersionChanged(const QString &version);
    void applicationCopyrightChanged(const QString &copyright);
    void detailsChanged();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
