// SPDX-License-Identifier: MIT
#include "Window/NSPopover.h"

#include "Base/Assign.h"
#include "Window/NSPopoverPrivate.h"

#include <QEvent>
#include <QPointer>
#include <QScopeGuard>

#include <utility>

namespace NS {

Popover::Popover(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this))
{ }

Popover::~Popover()
{
    if (!std::exchange(d->isShown, false))
        return;
    d->stopWatching();
    d->removeBubble();
}

ViewController *Popover::contentViewController() const
{
    return d->controller;
}

void Popover::setContentViewController(ViewController *controller)
{
    if (controller == d->controller)
        return;
    const QPointer<Popover> self(this);
    const QPointer<ViewController> former = std::exchange(d->controller, controller);
    if (d->isShown && !controller)
        close();
    if (!self)
        return;
    if (former) {
        former->disconnect(this);
        if (former->parent() == this)
            former->deleteLater(); // it may be what calls
    }
    if (controller) {
        if (!controller->parent())
            controller->setParent(this);
        connect(controller, &ViewController::viewChanged, this,
                [this](QWidget *view) { d->takeView(view); });
        connect(controller, &QObject::destroyed, this, &Popover::close);
        if (d->isShown)
            d->createBubble();
    }
    if (self)
        Q_EMIT contentViewControllerChanged(d->controller);
}

Popover::Behavior Popover::behavior() const
{
    return d->behavior;
}

void Popover::setBehavior(Behavior behavior)
{
    if (detail::assign(d->behavior, behavior))
        Q_EMIT behaviorChanged(behavior);
}

QSizeF Popover::contentSize() const
{
    return d->contentSize.isEmpty() ? d->fittingSize() : d->contentSize;
}

void Popover::setContentSize(const QSizeF &size)
{
    if (!detail::assign(d->contentSize, size))
        return;
    Q_EMIT contentSizeChanged(contentSize());
    if (d->isShown)
        d->place();
}

QRectF Popover::positioningRect() const
{
    return d->rect;
}

void Popover::setPositioningRect(const QRectF &rect)
{
    if (!detail::assign(d->rect, rect))
        return;
    Q_EMIT positioningRectChanged(rect);
    if (d->isShown)
        d->place();
}

QWidget *Popover::opener() const
{
    return d->opener;
}

void Popover::setOpener(QWidget *opener)
{
    if (detail::assign(d->opener, opener))
        Q_EMIT openerChanged(opener);
}

bool Popover::deletesOnClose() const
{
    return d->deletesOnClose;
}

void Popover::setDeletesOnClose(bool deletes)
{
    if (detail::assign(d->deletesOnClose, deletes))
        Q_EMIT deletesOnCloseChanged(deletes);
}

bool Popover::staysInWindow() const
{
    return d->staysInWindow;
}

void Popover::setStaysInWindow(bool stays)
{
    if (detail::assign(d->staysInWindow, stays))
        Q_EMIT staysInWindowChanged(stays);
}

// Showing and closing

void Popover::showRelativeToRect(const QRectF &rect, QWidget *view, RectEdge preferredEdge)
{
    const QPointer<Popover> self(this);
    const QPointer<QWidget> kept(view);
    const auto canShow = [&] {
        return d->controller && d->controller->view() && kept && kept->isVisible() && !d->isClosing
               && !(d->bubble && d->input.contains(kept));
    };
    const auto refuse = [&] {
        if (self && d->deletesOnClose && !d->isShown)
            deleteLater();
    };
    if (!d->controller || !view->isVisible() || d->isClosing
        || (!d->isShown && d->opener && detail::PopoverInput::hasJustClosed(d->opener)))
        return refuse();
    // The receivers of each signal may close, show or delete whatever there is.
    if (!d->isShown)
        Q_EMIT willShow();
    if (!self || !canShow())
        return refuse();
    const bool wasShown = d->isShown;
    d->isKeptInWindow = d->isKeptInWindow && wasShown;
    disconnect(d->viewEnding);
    d->view = view;
    d->viewEnding = connect(view, &QObject::destroyed, this, &Popover::close);
    d->preferredEdge = preferredEdge;
    setPositioningRect(rect);
    if (!self || d->isShown != wasShown)
        return;
    if (!canShow())
        return refuse();
    d->isShown = true;
    d->createBubble();
    if (!self || wasShown || !d->isShown)
        return;
    d->startWatching();
    Q_EMIT shownChanged(true);
    if (self && d->isShown)
        Q_EMIT didShow();
}

bool Popover::isShown() const
{
    return d->isShown;
}

QWidget *Popover::positioningView() const
{
    return d->isShown ? d->view.data() : nullptr;
}

RectEdge Popover::edge() const
{
    return d->edge;
}

void Popover::close()
{
    if (!d->isShown || std::exchange(d->isClosing, true))
        return;
    const QPointer<Popover> self(this);
    Q_EMIT willClose();
    if (!self)
        return;
    d->isShown = false;
    d->stopWatching();
    d->removeBubble();
    if (!self)
        return;
    disconnect(d->viewEnding);
    d->isClosing = false;
    Q_EMIT shownChanged(false);
    if (self)
        popoverDidClose();
    if (self)
        Q_EMIT didClose();
    if (self && d->deletesOnClose && !d->isShown)
        deleteLater();
}

void Popover::performClose()
{
    if (!d->isShown || d->isClosing || std::exchange(d->isAsking, true))
        return;
    const QPointer<Popover> self(this);
    const auto end = qScopeGuard([&] {
        if (self)
            d->isAsking = false;
    });
    const bool shouldClose = popoverShouldClose();
    if (!self)
        return;
    if (shouldClose)
        close();
    else if (d->bubble && d->bubble->surface() == detail::PopoverBubble::Surface::popup)
        d->keepInWindow(); // a popup would keep the clicks, too
}

bool Popover::popoverShouldClose()
{
    return true;
}

void Popover::popoverDidClose() { }

bool Popover::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Hide:
    case QEvent::ParentChange:
    case QEvent::LayoutDirectionChange:
        d->follow(watched, event);
        break;
    default:
        break;
    }
    return false;
}

} // namespace NS
