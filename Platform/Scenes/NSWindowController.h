// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <memory>

namespace NS {

/// The object behind a window: it loads the window from an interface file when that is first asked
/// for, and owns it.
///
///     class PreferencesController : public NS::WindowController
///     {
///     public:
///         PreferencesController() : NS::WindowController(u"Preferences"_s) { }
///         void windowDidLoad() override { window()->setWindowTitle(u"Preferences"_s); }
///     };
///
/// The controller is the file's owner, so outlets, bindings and actions can name its properties and
/// slots. The window is hidden until showWindow(). Main thread only.
class PELLARVINE_EXPORT WindowController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QWidget *window READ window WRITE setWindow NOTIFY windowChanged)
    Q_PROPERTY(bool windowLoaded READ isWindowLoaded NOTIFY windowChanged)
    Q_PROPERTY(QString windowNibName READ windowNibName CONSTANT)

public:
    /// `window` may be null.
    explicit WindowController(QWidget *window, QObject *parent = nullptr);

    /// The name is one for `NS::Nib`.
    explicit WindowController(const QString &windowNibName, QObject *parent = nullptr);

    /// Deletes the window, unless that has a parent widget.
    ~WindowController() override;

    /// The first call loads the window. Null if there is none: if no file was named, if the window
    /// has been destroyed, or if the file cannot be loaded, for which a warning says why.
    QWidget *window();

    /// Takes the window; the one before it is deleted if it has no parent widget.
    void setWindow(QWidget *window);
    /// Whether there is a window already; asking loads none.
    bool isWindowLoaded() const;

    /// Empty if there is none.
    QString windowNibName() const;

    /// Shows the window in front and makes it the active one, restoring it if it is minimised. The
    /// sender is for whoever overrides this.
    Q_INVOKABLE virtual void showWindow(const QVariant &sender = {});

    /// Closes the window, if it is loaded. It can be shown again.
    Q_INVOKABLE void close();

    /// Asked whenever the window is about to close, by whomever; before the window's own
    /// closeEvent() and its content's. Returns true unless overridden.
    virtual bool windowShouldClose();

    /// Called once, after loadWindow(): the window is there, its outlets are set.
    virtual void windowDidLoad();

Q_SIGNALS:
    void windowChanged(QWidget *window);

protected:
    /// Loads the interface file and hands its outermost widget to setWindow(). Throws NS::NibError;
    /// window() catches that.
    virtual void loadWindow();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
