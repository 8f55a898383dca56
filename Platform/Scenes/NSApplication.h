// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QApplication>
#include <QVariant>

namespace NS {

/// A QApplication with what every program's menus call on. Make it where a QApplication would be
/// made:
///
///     int main(int argc, char **argv)
///     {
///         NS::Application application(argc, argv);
///         MainWindow window;
///         window.show();
///         return application.exec();
///     }
class PELLARVINE_EXPORT Application : public QApplication
{
    Q_OBJECT

public:
    /// As a QApplication is made: both have to outlive the object.
    Application(int &argc, char **argv);
    ~Application() override;

    /// The running one; null if there is none, or if it is another kind of application.
    static Application *sharedApplication();

    /// Shows the standard about panel, which is Qt's: the program's name, version and copyright.
    /// The sender is for whoever overrides this.
    Q_INVOKABLE virtual void orderFrontStandardAboutPanel(const QVariant &sender = {});
};

} // namespace NS
