// SPDX-License-Identifier: MIT
#include "Scenes/NSApplication.h"

#include "Base/NSBundle.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace NS {

Application::Application(int &argc, char **argv)
    : QApplication(argc, argv)
{ }

Application::~Application() = default;

Application *Application::sharedApplication()
{
    return qobject_cast<Application *>(QCoreApplication::instance());
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
