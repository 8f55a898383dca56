// SPDX-License-Identifier: MIT
// The event handlers of Window. WindowFrame handles the events first; NSWindow.cpp has the
// functions that programs call.
#include "Window/NSWindow.h"
#include "Window/NSWindowPrivate.h"
#include "Window/TitleBarItems.h"
#include "Window/TitleBarView.h"
#include "Window/WindowDrag.h"

#include <QCoreApplication>
#include <QMetaMethod>
#include <QMouseEvent>

namespace NS {

bool Window::event(QEvent *event)
{
    if (event->type() != QEvent::Close)
        return QWidget::event(event);
    const QPointer<Window> self(this); // closing may delete it
    const bool agrees = d->content->agreesToClose();
    if (!self)
        return true;
    if (!agrees) {
        event->ignore();
        return true;
    }
    const bool isDone = QWidget::event(event);
    if (self && event->isAccepted())
        d->content->windowHasClosed();
    return isDone;
}

void Window::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        d->content->takeWindowState();
}

void Window::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    windowDidResize(event);
    Q_EMIT frameChanged(frame());
}

void Window::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    Q_EMIT frameChanged(frame());
}

void Window::mousePressEvent(QMouseEvent *event)
{
    if (!d->frame->seen().contains(event->position().toPoint()))
        return;
    // The content lies behind the title bar. Presses that it ignores there are for the title bar.
    if (d->frame->styleMask() & fullSizeContentView
        && event->position().y() < d->frame->margin() + d->frame->barHeight()) {
        QCoreApplication::sendEvent(d->frame->titleBar(), event);
        return;
    }
    if (!d->isMovableByBackground || event->button() != Qt::LeftButton)
        return event->ignore();
    d->frame->drag()->prepare(event->globalPosition().toPoint());
    event->accept();
}

void Window::connectNotify(const QMetaMethod &signal)
{
    if (signal == QMetaMethod::fromSignal(&Window::documentVersionsRequested))
        d->frame->titleBar()->items()->setOffersVersions(true);
}

// It is called before the receiver is off the list, without a signal for all at once, and from the
// thread of the receiver.
void Window::disconnectNotify(const QMetaMethod &)
{
    QMetaObject::invokeMethod(
            this,
            [this] {
                d->frame->titleBar()->items()->setOffersVersions(isSignalConnected(
                        QMetaMethod::fromSignal(&Window::documentVersionsRequested)));
            },
            Qt::QueuedConnection);
}

// The frame does these. They stay for programs that were built with them.

void Window::setVisible(bool visible)
{
    QWidget::setVisible(visible);
}

void Window::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
}

void Window::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
}

} // namespace NS
