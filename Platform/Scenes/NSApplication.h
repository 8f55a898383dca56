// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QApplication>
#include <QVariant>

#include <memory>

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
    Q_PROPERTY(bool followsColorScheme READ followsColorScheme WRITE setFollowsColorScheme NOTIFY
                       followsColorSchemeChanged)

public:
    /// As a QApplication is made: both have to outlive the object.
    Application(int &argc, char **argv);
    ~Application() override;

    /// The running one; null if there is none, or if it is another kind of application.
    static Application *sharedApplication();

    /// Whether the palette is dark or light, and has the accent colour, that the user has set for
    /// the desktop, also when that changes. For programs that set no palette of their own, where no
    /// platform theme does it. Default: false.
    bool followsColorScheme() const;
    void setFollowsColorScheme(bool follows);

    /// Shows the standard about panel, which is Qt's: the program's name, version and copyright.
    /// The sender is for whoever overrides this.
    Q_INVOKABLE virtual void orderFrontStandardAboutPanel(const QVariant &sender = {});

Q_SIGNALS:
    void followsColorSchemeChanged(bool follows);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
