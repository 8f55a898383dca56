// SPDX-License-Identifier: MIT
#include "Pellarvine/Application.h"

#include "Ostrevane/App.h"
#include "Pellarvine/AboutWindowController.h"

#include <QAction>
#include <QEvent>

namespace Pellarvine {

struct Application::Private
{
    QAction *aboutAction = nullptr;

    void translate() const
    {
        if (aboutAction)
            aboutAction->setText(Application::tr("&About %1").arg(App::name()));
    }
};

Application::Application(int &argc, char **argv)
    : NS::Application(argc, argv)
    , d(std::make_unique<Private>())
{
    connect(this, &QGuiApplication::applicationDisplayNameChanged, this,
            [this] { d->translate(); });
}

Application::~Application() = default;

QAction *Application::aboutAction()
{
    if (!d->aboutAction) {
        d->aboutAction = new QAction(this);
        d->aboutAction->setMenuRole(QAction::AboutRole);
        connect(d->aboutAction, &QAction::triggered, this,
                [this] { orderFrontStandardAboutPanel(QVariant::fromValue(d->aboutAction)); });
        d->translate();
    }
    return d->aboutAction;
}

void Application::orderFrontStandardAboutPanel(const QVariant &)
{
    AboutWindowController::show();
}

bool Application::event(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange && d)
        d->translate();
    return NS::Application::event(event);
}

} // namespace Pellarvine
