// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSApplication.h>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QAction)

namespace Pellarvine {

/// An application whose about command shows the shared `AboutWindowController`'s window:
///
///     Pellarvine::Application application(argc, argv);
///     helpMenu->addAction(application.aboutAction());
///
/// It is a QApplication in everything else.
class PELLARVINE_EXPORT Application : public NS::Application
{
    Q_OBJECT
    Q_PROPERTY(QAction *aboutAction READ aboutAction CONSTANT)

public:
    /// Both arguments outlive the object, as for QApplication.
    Application(int &argc, char **argv);
    ~Application() override;

    /// An action "About " and the name of the application, for menus. The application owns it, and
    /// returns the same one in each call.
    QAction *aboutAction();

    /// Shows the shared about window, as `AboutWindowController::show()` does, and not Qt's panel.
    /// `sender` is ignored.
    Q_INVOKABLE void orderFrontStandardAboutPanel(const QVariant &sender = {}) override;

protected:
    /// Keeps the action in the program's language.
    bool event(QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
