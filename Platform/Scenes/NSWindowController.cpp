// SPDX-License-Identifier: MIT
#include "Scenes/NSWindowController.h"

#include "Base/Failure.h"
#include "Scenes/NSNib.h"
#include "Scenes/NSResponder.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

#include <exception>
#include <utility>

namespace NS {

struct WindowController::Private
{
    QString nibName;
    QPointer<QWidget> window;
    bool hasLoaded = false;

    void take(QWidget *taken, WindowController *controller)
    {
        window = taken;
        if (!window)
            return;
        setWindowController(window, controller);
        window->installEventFilter(controller);
    }
    void deleteUnlessLent()
    {
        if (window && !window->parentWidget())
            delete window;
    }
};

WindowController::WindowController(QWidget *window, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->take(window, this);
    d->hasLoaded = true;
}

WindowController::WindowController(const QString &windowNibName, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->nibName = windowNibName;
}

WindowController::~WindowController()
{
    d->deleteUnlessLent();
}

QWidget *WindowController::window()
{
    if (std::exchange(d->hasLoaded, true))
        return d->window;
    // Called by slots and key paths, which no exception may leave.
    try {
        loadWindow();
    } catch (const std::exception &error) {
        detail::printWarning(error);
        return nullptr;
    }
    windowDidLoad();
    return d->window;
}

void WindowController::setWindow(QWidget *window)
{
    if (window == d->window)
        return;
    d->deleteUnlessLent();
    if (d->window) {
        setWindowController(d->window, nullptr);
        d->window->removeEventFilter(this);
    }
    d->take(window, this);
    d->hasLoaded = d->hasLoaded || window;
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

bool WindowController::windowShouldClose()
{
    return true;
}

void WindowController::windowDidLoad() { }

bool WindowController::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != d->window || event->type() != QEvent::Close || windowShouldClose())
        return false;
    event->ignore();
    return true;
}

} // namespace NS
