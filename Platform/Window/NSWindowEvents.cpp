// SPDX-License-Identifier: MIT
// What a window does when Qt tells it of a change; NSWindow.cpp has what programs call.
#include "View/DesktopSettings.h"
#include "View/NSView.h"
#include "Window/NSWindow.h"
#include "Window/NSWindowPrivate.h"

#include <QChildEvent>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QTimer>

namespace NS {

void Window::setVisible(bool visible)
{
    if (visible && !isVisible() && isWindow()) {
        if (!testAttribute(Qt::WA_WState_Created))
            create();
        d->prepareMargin();
    }
    QWidget::setVisible(visible);
}

bool Window::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::WinIdChange:
        d->watchNativeWindow();
        break;
    case QEvent::WindowActivate:
        d->enterFocus();
        break;
    case QEvent::LayoutRequest:
        d->boundWidth();
        break;
    case QEvent::Close: {
        if (!d->content->agreesToClose()) {
            event->ignore();
            return true;
        }
        const bool isDone = QWidget::event(event);
        if (event->isAccepted())
            d->content->windowHasClosed();
        return isDone;
    }
    case QEvent::ChildAdded: {
        const QObject *const child = static_cast<QChildEvent *>(event)->child();
        if (d && child->isWidgetType() && child != d->titleBar && child != d->border) {
            d->titleBar->raise();
            d->border->raise();
        }
        break;
    }
    case QEvent::LayoutDirectionChange:
    case QEvent::FontChange:
        if (d)
            NS::setNeedsLayout(this);
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void Window::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::WindowStateChange:
        d->arrange();
        d->updateBorder();
        d->content->takeWindowState();
        [[fallthrough]];
    case QEvent::ActivationChange:
    case QEvent::ModifiedChange:
    case QEvent::WindowTitleChange:
    case QEvent::PaletteChange:
        d->titleBar->refresh();
        d->border->update();
        NS::setNeedsLayout(this);
        break;
    default:
        break;
    }
}

void Window::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    d->confirmMargin();
    d->arrange();
    d->updateBorder();
    windowDidResize(event);
    Q_EMIT frameChanged(frame());
}

void Window::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    d->updateBorder();
    Q_EMIT frameChanged(frame());
}

void Window::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    d->watchNativeWindow();
    d->rearrange();
    d->updateBorder();
    d->titleBar->refresh();
    d->enterFocus();
    // The window's first picture does not wait for the bus.
    QTimer::singleShot(0, &detail::DesktopSettings::instance(),
                       [] { detail::DesktopSettings::instance().start(); });
}

void Window::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(d->seen(), palette().color(QPalette::Window));
    QStyleOption option;
    option.initFrom(this);
    option.rect = d->seen();
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void Window::mousePressEvent(QMouseEvent *event)
{
    if (!d->seen().contains(event->position().toPoint()))
        return;
    // What the content leaves of a title bar that it reaches up behind is still the title bar.
    if (d->styleMask & fullSizeContentView && event->position().y() < d->margin + d->barHeight()) {
        QCoreApplication::sendEvent(d->titleBar, event);
        return;
    }
    if (!d->isMovableByBackground || event->button() != Qt::LeftButton)
        return event->ignore();
    d->drag->prepare(event->globalPosition().toPoint());
    event->accept();
}

void Window::connectNotify(const QMetaMethod &signal)
{
    if (signal == QMetaMethod::fromSignal(&Window::documentVersionsRequested))
        d->titleBar->setOffersVersions(true);
}

// It is called before the receiver is off the list, without a signal for all at once, and from the
// thread of the receiver.
void Window::disconnectNotify(const QMetaMethod &)
{
    QMetaObject::invokeMethod(
            this,
            [this] {
                d->titleBar->setOffersVersions(isSignalConnected(
                        QMetaMethod::fromSignal(&Window::documentVersionsRequested)));
            },
            Qt::QueuedConnection);
}

} // namespace NS
