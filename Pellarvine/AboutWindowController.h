// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSWindowController.h>

#include <QPixmap>

#include <memory>

namespace Pellarvine {

/// The about window: icon, name, version and copyright of the application, as `App` has them.
///
///     Pellarvine::AboutWindowController::show();
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
