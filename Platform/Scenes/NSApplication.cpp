// SPDX-License-Identifier: MIT
#include "Scenes/NSApplication.h"

#include "Base/NSBundle.h"
#include "View/ColorSchemeFollower.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace NS {

struct Application::Private
{
    std::unique_ptr<detail::ColorSchemeFollower> follower;
};

Application::Application(int &argc, char **argv)
    : QApplication(argc, argv)
    , d(std::make_unique<Private>())
{ }

Application::~Application() = default;

Application *Application::sharedApplication()
{
    return qobject_cast<Application *>(QCoreApplication::instance());
}

bool Application::followsColorScheme() const
{
    return bool(d->follower);
}

void Application::setFollowsColorScheme(bool follows)
{
    if (follows == followsColorScheme())
        return;
    d->follower = follows ? std::make_unique<detail::ColorSchemeFollower>() : nullptr;
    Q_EMIT followsColorSchemeChanged(follows);
}

void Application::orderFrontStandardAboutPanel(const QVariant &)
{
    const QString name = applicationDisplayName();
    auto *const panel = new QMessageBox(QMessageBox::NoIcon, tr("About %1").arg(name),
                                        u"%1 %2"_s.arg(name, applicationVersion()), QMessageBox::Ok,
                                        activeWindow());
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setIconPixmap(windowIcon().pixmap(64));
    panel->setInformativeText(
            Bundle::main().objectForInfoDictionaryKey(u"NSHumanReadableCopyright"_s).toString());
    panel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    panel->open();
}

} // namespace NS
