// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QApplication>
#include <QVariant>

#include <memory>

namespace NS {

/// A QApplication that shows an about panel and can follow the colours of the desktop. Make it in
/// place of a QApplication:
///
///     int main(int argc, char **argv)
///     {
///         NS::Application application(argc, argv);
///         MainWindow window;
///         window.show();
///         return application.exec();
///     }
///
/// Main thread only.
class PELLARVINE_EXPORT Application : public QApplication
{
    Q_OBJECT
    Q_PROPERTY(bool followsColorScheme READ followsColorScheme WRITE setFollowsColorScheme NOTIFY
                       followsColorSchemeChanged)

public:
    /// Both arguments outlive the object, as for QApplication.
    Application(int &argc, char **argv);
    ~Application() override;

    /// The running application; null if there is none, or if it is of another class.
    static Application *sharedApplication();

    /// Whether the palette follows the colour scheme and the accent colour of the desktop, also
    /// when they change. For programs that set no palette of their own, on desktops whose platform
    /// theme does not do this. Default: false.
    bool followsColorScheme() const;
    void setFollowsColorScheme(bool follows);

    /// Shows Qt's about panel with the name, version and copyright of the program. `sender` is for
    /// subclasses.
    Q_INVOKABLE virtual void orderFrontStandardAboutPanel(const QVariant &sender = {});

Q_SIGNALS:
    void followsColorSchemeChanged(bool follows);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
