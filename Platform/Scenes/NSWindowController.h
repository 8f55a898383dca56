// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <memory>

namespace NS {

/// Manages a window: loads it from an interface file when it is first requested, and owns it.
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

    /// The name of an interface file, as `NS::Nib` finds it.
    explicit WindowController(const QString &windowNibName, QObject *parent = nullptr);

    /// Deletes the window, unless that has a parent widget or owns this controller.
    ~WindowController() override;

    /// Returns the window and loads it in the first call. Null if no file was named, if the window
    /// has been destroyed, or if the file cannot be loaded; a warning then gives the reason.
    QWidget *window();

    /// Sets the window. The previous one is deleted if it has no parent widget.
    void setWindow(QWidget *window);
    /// Whether the window is loaded. Does not load it.
    bool isWindowLoaded() const;

    /// Empty if there is none.
    QString windowNibName() const;

    /// Shows, raises and activates the window, and restores it if it is minimised. `sender` is for
    /// subclasses.
    Q_INVOKABLE virtual void showWindow(const QVariant &sender = {});

    /// Closes the window, if it is loaded. It can be shown again.
    Q_INVOKABLE void close();

    /// Called before the window closes, for every reason, and before the closeEvent() of the window
    /// and its content. Return false to keep it open; an exception is printed as a warning and
    /// keeps it open too. A QDialog asks when Esc is pressed, but not in accept() and reject().
    /// Default: true.
    virtual bool windowShouldClose();

    /// Called once, after loadWindow(). The outlets are set. An exception is printed as a warning.
    virtual void windowDidLoad();

Q_SIGNALS:
    void windowChanged(QWidget *window);

protected:
    /// Loads the interface file and passes its outermost widget to setWindow(). Throws
    /// NS::NibError, which window() catches.
    virtual void loadWindow();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
