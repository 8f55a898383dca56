// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSApplication.h>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QAction)

namespace Pellarvine {

/// A QApplication with an about command, which shows the shared `AboutWindowController`'s window:
///
///     Pellarvine::Application application(argc, argv);
///     helpMenu->addAction(application.aboutAction());
///
/// Make one object, in main(), as for QApplication. Main thread only.
class PELLARVINE_EXPORT Application : public NS::Application
{
    Q_OBJECT
    Q_PROPERTY(QAction *aboutAction READ aboutAction CONSTANT)

public:
    /// Both arguments must outlive the object, as for QApplication. Aborts the process without a
    /// display, as QApplication does.
    Application(int &argc, char **argv);
    ~Application() override;

    /// An action for menus, whose text is "About " and the name of the application. Each call
    /// returns the same one, which the application owns.
    QAction *aboutAction();

    /// Shows the shared about window, as `AboutWindowController::show()` does. `sender` is ignored.
    Q_INVOKABLE void orderFrontStandardAboutPanel(const QVariant &sender = {}) override;

protected:
    /// Translates the action again when the language changes.
    bool event(QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
