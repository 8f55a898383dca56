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
    /// As a QApplication is made: both have to outlive the object.
    Application(int &argc, char **argv);
    ~Application() override;

    /// "About " and the application's name, for menus. It belongs to the application, and is always
    /// the same one.
    QAction *aboutAction();

    /// Shows the shared about window, as `AboutWindowController::show()` does. The sender is not
    /// looked at, and the standard panel never shown.
    Q_INVOKABLE void orderFrontStandardAboutPanel(const QVariant &sender = {}) override;

protected:
    /// Keeps the action in the program's language.
    bool event(QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
