// SPDX-License-Identifier: MIT
#include "Window/NSPopover.h"

#include "Base/Assign.h"
#include "View/NSView.h"
#include "Window/PopoverBubble.h"
#include "Window/PopoverInput.h"
#include "Window/SeenRect.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <optional>
#include <utility>

namespace NS {

namespace {

// What a child bubble keeps free at the edges of its window.
constexpr int windowMargin = 4;

QRectF overlap(const QRectF &one, const QRectF &other)
{
    // QRectF::intersected loses lines and points, which are places too.
    QRectF result;
    result.setCoords(std::max(one.left(), other.left()), std::max(one.top(), other.top()),
                     std::min(one.right(), other.right()), std::min(one.bottom(), other.bottom()));
    return result;
}

} // namespace

struct Popover::Private
{
    explicit Private(Popover *popover)
        : q(popover)
        , input(popover)
    { }

    QSizeF fittingSize() const;
    std::optional<QRectF> visibleArea() const;
    QRectF anchorFor(const QRectF &areaInWindow) const;
    QRectF room(const QRectF &anchor) const;

    void startWatching();
    void stopWatching();
    void createBubble();
    void removeBubble();
    void place();
    void updateArrow();
    void enterFocus();
    void announce();
    void follow(QObject *watched, QEvent *event);

    Popover *q;
    detail::PopoverInput input;
    QPointer<ViewController> controller;
    Behavior behavior = Behavior::applicationDefined;
    QSizeF contentSize;
    QSizeF lastSize; // on the screen
    QRectF rect;
    QPointer<QWidget> opener;
    bool deletesOnClose = false;
    bool staysInWindow = false;

    bool isShown = false;
    bool isClosing = false;
    QPointer<QWidget> view;
    RectEdge preferredEdge = RectEdge::maxY;
    RectEdge edge = RectEdge::maxY;
    QPointer<detail::PopoverBubble> bubble;
    QPointer<QWidget> focusBefore;
    QMetaObject::Connection viewEnding;
};

Popover::Popover(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this))
{ }

Popover::~Popover()
{
    if (!d->isShown)
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
    ViewController *const former = std::exchange(d->controller, controller);
    if (d->isShown && !controller)
        close();
    if (former) {
        former->disconnect(this);
        if (former->parent() == this)
            delete former;
    }
    if (controller) {
        if (!controller->parent())
            controller->setParent(this);
        connect(controller, &ViewController::viewChanged, this, [this] {
            if (d->isShown)
                d->createBubble();
        });
        connect(controller, &QObject::destroyed, this, &Popover::close);
        if (d->isShown)
            d->createBubble();
    }
    Q_EMIT contentViewControllerChanged(controller);
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
    const QPointer<QWidget> kept(view);
    const bool isRefused =
            !d->controller || !view->isVisible() || d->isClosing
            || (!d->isShown && d->opener && detail::PopoverInput::hasJustClosed(d->opener));
    if (isRefused) {
        if (d->deletesOnClose && !d->isShown)
            deleteLater();
        return;
    }
    const bool wasShown = d->isShown;
    if (!wasShown) {
        const QPointer<Popover> self(this);
        Q_EMIT willShow();
        if (!self || !kept || !d->controller)
            return;
    }
    disconnect(d->viewEnding);
    d->view = view;
    d->viewEnding = connect(view, &QObject::destroyed, this, &Popover::close);
    d->preferredEdge = preferredEdge;
    setPositioningRect(rect);
    d->isShown = true;
    d->createBubble();
    if (wasShown || !d->isShown)
        return;
    d->startWatching();
    Q_EMIT shownChanged(true);
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
    if (d->isShown && !d->isClosing && popoverShouldClose())
        close();
}

bool Popover::popoverShouldClose()
{
    return true;
}

void Popover::popoverDidClose() { }

// The bubble

// What the view asks for, as high as its text at that width.
QSizeF Popover::Private::fittingSize() const
{
    QWidget *const content = controller ? controller->view() : nullptr;
    if (!content)
        return { 0, 0 };
    content->ensurePolished();
    const auto bounded = [content](QSize size) {
        return size.expandedTo(content->minimumSize()).boundedTo(content->maximumSize());
    };
    QSize size = content->sizeHint();
    if (!size.isValid())
        size = content->size();
    size = bounded(size.expandedTo(content->minimumSizeHint()));
    if (content->hasHeightForWidth())
        size.setHeight(content->heightForWidth(size.width()));
    return bounded(size);
}

// The part of the place in the view that no ancestor cuts off, in the window, y downwards.
std::optional<QRectF> Popover::Private::visibleArea() const
{
    QRectF area = detail::popoverArea(rect, view->size());
    for (const QWidget *widget = view; !widget->isWindow(); widget = widget->parentWidget()) {
        area.translate(widget->pos());
        area = overlap(area, QRectF(widget->parentWidget()->rect()));
    }
    if (area.width() < 0.0 || area.height() < 0.0)
        return {};
    return area;
}

QRectF Popover::Private::anchorFor(const QRectF &areaInWindow) const
{
    if (bubble->surface() == detail::PopoverBubble::Surface::child)
        return areaInWindow;
    return areaInWindow.translated(view->window()->mapToGlobal(QPoint()));
}

QRectF Popover::Private::room(const QRectF &anchor) const
{
    if (bubble->surface() == detail::PopoverBubble::Surface::child) {
        return QRectF(detail::seenRect(view->window())
                              .adjusted(windowMargin, windowMargin, -windowMargin, -windowMargin));
    }
    if (bubble->surface() == detail::PopoverBubble::Surface::unplacedWindow) {
        constexpr double plenty = 1 << 14; // the window system slides it
        return anchor.adjusted(-plenty, -plenty, plenty, plenty);
    }
    const QScreen *screen = QGuiApplication::screenAt(anchor.center().toPoint());
    if (!screen)
        screen = view->screen();
    constexpr int margin = detail::PopoverShape::margin;
    return QRectF(screen->availableGeometry().adjusted(margin, margin, -margin, -margin));
}

void Popover::Private::startWatching()
{
    qApp->installEventFilter(q);
    input.start();
}

void Popover::Private::stopWatching()
{
    qApp->removeEventFilter(q);
    input.stop();
}

void Popover::Private::createBubble()
{
    QWidget *const content = controller->view();
    if (!content) {
        q->close();
        return;
    }
    const auto surface =
            detail::PopoverBubble::surfaceFor(view, content, q->contentSize(), staysInWindow);
    const bool isUsable = bubble && bubble->view() == view && bubble->surface() == surface
                          && content->parentWidget() == bubble;
    if (isUsable) {
        place();
        return;
    }
    const bool hadBubble = bubble;
    if (hadBubble)
        removeBubble();
    bubble = new detail::PopoverBubble(view, content, surface);
    input.setBubble(bubble);
    connect(bubble, &detail::PopoverBubble::escaped, q, &Popover::performClose);
    connect(bubble, &detail::PopoverBubble::moved, q, [this] { updateArrow(); });
    connect(bubble, &detail::PopoverBubble::contentChanged, q, [this] {
        if (isShown)
            place();
    });
    connect(bubble, &detail::PopoverBubble::pressedBeside, q,
            [this](QPoint globalPosition) { input.clickBehind(globalPosition); });
    connect(bubble, &QObject::destroyed, q, &Popover::close);
    if (!hadBubble)
        focusBefore = QApplication::focusWidget();
    place();
    if (!bubble)
        return;
    bubble->show();
    if (!bubble->isWindow())
        bubble->raise();
    updateArrow();
    enterFocus();
    announce();
}

// Leaves the content to its controller, and the focus to who had it.
void Popover::Private::removeBubble()
{
    if (!bubble)
        return;
    detail::PopoverBubble *const former = std::exchange(bubble, nullptr);
    former->disconnect(q);
    const bool wasActive = former->isWindow() && former->isActiveWindow();
    QWidget *const focused = former->window()->focusWidget();
    const bool hadFocus = former->isWindow() ? wasActive : focused && former->isAncestorOf(focused);
    former->hide();
    former->releaseContent();
    former->deleteLater();
    if (!hadFocus || !focusBefore || !focusBefore->isVisible())
        return;
    if (wasActive)
        focusBefore->activateWindow();
    focusBefore->setFocus(Qt::PopupFocusReason);
}

void Popover::Private::place()
{
    const std::optional<QRectF> area = visibleArea();
    if (!area) {
        q->close();
        return;
    }
    const QRectF anchor = anchorFor(*area);
    const QSizeF size = q->contentSize();
    const auto placement = detail::placePopover(anchor, size, room(anchor), preferredEdge);
    edge = placement.edge;
    bubble->setBody(placement.body);
    updateArrow();
    if (contentSize.isEmpty() && size != std::exchange(lastSize, size))
        Q_EMIT q->contentSizeChanged(size);
}

// From where the bubble is, which need not be where it was put.
void Popover::Private::updateArrow()
{
    const std::optional<QRectF> area = view ? visibleArea() : std::nullopt;
    if (!bubble || !area)
        return;
    if (bubble->surface() == detail::PopoverBubble::Surface::unplacedWindow)
        bubble->setArrow(edge, {});
    else
        bubble->setArrow(edge, detail::popoverArrow(anchorFor(*area), bubble->body(), edge));
}

void Popover::Private::enterFocus()
{
    if (!bubble->takesFocus())
        return;
    if (bubble->isWindow())
        bubble->activateWindow();
    if (QWidget *const first = detail::PopoverBubble::firstFocusable(controller->view()))
        first->setFocus(Qt::PopupFocusReason);
}

void Popover::Private::announce()
{
    if (!controller->title().isEmpty())
        bubble->setAccessibleName(controller->title());
    QAccessibleEvent event(bubble,
                           bubble->takesFocus() ? QAccessible::DialogStart : QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void Popover::Private::follow(QObject *watched, QEvent *event)
{
    if (!view || !watched->isWidgetType())
        return;
    auto *const widget = static_cast<QWidget *>(watched);
    if (widget != view && !widget->isAncestorOf(view))
        return;
    if (event->type() == QEvent::Hide && widget == view && !view->isVisible()) {
        q->close();
    } else if (event->type() == QEvent::ParentChange && bubble
               && view->window() != bubble->parentWidget()) {
        if (view->isVisible())
            createBubble();
        else
            q->close();
    } else if (bubble && view->isVisible()) {
        place();
    }
}

bool Popover::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Hide:
    case QEvent::ParentChange:
        d->follow(watched, event);
        break;
    default:
        break;
    }
    return false;
}

} // namespace NS
