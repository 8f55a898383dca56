// SPDX-License-Identifier: MIT
#include "Scenes/NSWindowController.h"

#include "Base/Failure.h"
#include "Scenes/NSNib.h"
#include "Scenes/NSResponder.h"
#include "Scenes/NSViewControllerPrivate.h"

#include <QDialog>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

#include <exception>
#include <utility>

namespace NS {

struct WindowController::Private
{
    QString nibName;
    QPointer<QWidget> window;
    QMetaObject::Connection windowEnd; // to the destroyed() signal of the window
    bool hasLoaded = false;

    void take(QWidget *taken, WindowController *controller)
    {
        window = taken;
        if (!window)
            return;
        setWindowController(window, controller);
        window->installEventFilter(controller);
        windowEnd = connect(window, &QObject::destroyed, controller,
                            [controller] { Q_EMIT controller->windowChanged(nullptr); });
    }
    void deleteUnlessLent(const WindowController *controller)
    {
        if (window && !window->parentWidget() && !detail::isOwnedBy(controller, window))
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
    disconnect(d->windowEnd);
    d->deleteUnlessLent(this);
}

QWidget *WindowController::window()
{
    if (std::exchange(d->hasLoaded, true))
        return d->window;
    const QPointer<WindowController> self = this;
    // Called by slots and key paths, which no exception may leave.
    try {
        loadWindow();
        windowDidLoad();
    } catch (const std::exception &error) {
        detail::printWarning(error);
    }
    return self ? d->window.get() : nullptr;
}

void WindowController::setWindow(QWidget *window)
{
    if (window == d->window)
        return;
    const QPointer<QWidget> added = window; // ends with the previous one if it is in that
    disconnect(d->windowEnd);
    d->deleteUnlessLent(this);
    if (d->window) {
        setWindowController(d->window, nullptr);
        d->window->removeEventFilter(this);
    }
    d->take(added, this);
    d->hasLoaded = d->hasLoaded || added;
    Q_EMIT windowChanged(added);
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
    if (watched != d->window)
        return false;
    if (event->type() == QEvent::KeyPress && qobject_cast<QDialog *>(watched)
        && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel)) {
        d->window->close(); // the dialog would hide without a close event
        return true;
    }
    if (event->type() != QEvent::Close)
        return false;
    const QPointer<QWidget> window = d->window;
    bool shouldClose = false;
    // Called by Qt's event loop, which no exception may leave.
    try {
        shouldClose = windowShouldClose();
    } catch (const std::exception &error) {
        detail::printWarning(error);
    }
    if (!shouldClose)
        event->ignore();
    return !shouldClose || !window;
}

} // namespace NS
