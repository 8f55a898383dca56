// SPDX-License-Identifier: MIT
#include "Scenes/NSWindowController.h"

#include "Base/Failure.h"
#include "Scenes/NSNib.h"
#include "Scenes/NSResponder.h"

#include <QPointer>
#include <QWidget>

#include <exception>
#include <string>
#include <utility>

namespace NS {

struct WindowController::Private
{
    QString nibName;
    QPointer<QWidget> window;
    bool hasLoaded = false;
};

WindowController::WindowController(QWidget *window, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->window = window;
    d->hasLoaded = true;
    if (window)
        setWindowController(window, this);
}

WindowController::WindowController(const QString &windowNibName, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->nibName = windowNibName;
}

WindowController::~WindowController()
{
    if (d->window && !d->window->parentWidget())
        delete d->window;
}

QWidget *WindowController::window()
{
    if (std::exchange(d->hasLoaded, true))
        return d->window;
    // Slots and key paths come here too, and no exception may leave them.
    try {
        loadWindow();
    } catch (const std::exception &error) {
        detail::printWarning(std::string("Warning: ") + error.what());
        return nullptr;
    }
    windowDidLoad();
    return d->window;
}

void WindowController::setWindow(QWidget *window)
{
    if (window == d->window)
        return;
    if (d->window && !d->window->parentWidget())
        delete d->window;
    else if (d->window)
        setWindowController(d->window, nullptr);
    d->window = window;
    d->hasLoaded = d->hasLoaded || window;
    if (window)
        setWindowController(window, this);
    Q_EMIT windowChanged(window);
}

bool WindowController::isWindowLoaded() const
{
    return d->hasLoaded && d->window;
}

QString WindowController::windowNibName() const
{
    return d->nibName;
}

void WindowController::showWindow(const QVariant &)
{
    QWidget *const shown = window();
    if (!shown)
        return;
    shown->setWindowState(shown->windowState() & ~Qt::WindowMinimized);
    shown->show();
    shown->raise();
    shown->activateWindow();
}

void WindowController::close()
{
    if (d->window)
        d->window->close();
}

void WindowController::loadWindow()
{
    if (!d->nibName.isEmpty())
        setWindow(Nib(d->nibName).instantiate(this));
}

void WindowController::windowDidLoad() { }

} // namespace NS
