// SPDX-License-Identifier: MIT
#include "Window/NSPopoverPrivate.h"

#include "Controls/ColorPanel/PortalColorPicker.h"
#include "Window/WaylandPlugin.h"
#include "Window/WindowFrame.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace NS {

namespace {

// The distance between a child bubble and the edges of its window.
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

// The size hint of the view, with the height that its text needs at that width.
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
    if (bubble->surface() == Bubble::Surface::child)
        return areaInWindow;
    return areaInWindow.translated(view->window()->mapToGlobal(QPoint()));
}

QRectF Popover::Private::roomInWindow() const
{
    return QRectF(detail::seenRect(view->window())
                          .adjusted(windowMargin, windowMargin, -windowMargin, -windowMargin));
}

QRectF Popover::Private::roomOnScreen(const QRectF &anchor) const
{
    const QScreen *screen = QGuiApplication::screenAt(anchor.center().toPoint());
    if (!screen)
        screen = view->screen();
    constexpr int margin = detail::PopoverShape::margin;
    return QRectF(screen->availableGeometry().adjusted(margin, margin, -margin, -margin));
}

// Whether there is room beside its place.
bool Popover::Private::fitsInWindow() const
{
    const std::optional<QRectF> area = visibleArea();
    if (!area)
        return true;
    const QSizeF size = q->contentSize();
    const auto placement = detail::placePopover(*area, size, roomInWindow(), preferredEdge);
    return placement.body.size() == size
           && detail::popoverArrow(*area, placement.body, placement.edge);
}

detail::PopoverBubble::Surface Popover::Private::neededSurface() const
{
    if (staysInWindow || isKeptInWindow)
        return Bubble::Surface::child;
    if (bubble && bubble->isPlacedForUs() && bubble->view() == view)
        return bubble->surface();
    return Bubble::surfaceFor(view, controller->view(), fitsInWindow(),
                              behavior != Behavior::applicationDefined);
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

// The controller has another view, or null while its view ends, which is still there then.
void Popover::Private::takeView(QWidget *content)
{
    if (!isShown)
        return;
    if (content)
        return createBubble();
    QMetaObject::invokeMethod(
            q,
            [this] {
                if (controller && !controller->view())
                    q->close();
            },
            Qt::QueuedConnection);
}

// Whatever is shown, hidden or focused in it may close or delete the popover.
void Popover::Private::createBubble()
{
    const QPointer<Popover> self(q);
    const QPointer<QWidget> content = controller->view();
    if (!content) {
        q->close();
        return;
    }
    const auto surface = neededSurface();
    const bool isUsable = bubble && bubble->view() == view && bubble->surface() == surface
                          && content->parentWidget() == bubble;
    if (isUsable) {
        place();
        return;
    }
    const bool hadBubble = bubble;
    if (hadBubble)
        removeBubble();
    if (!self || !isShown || bubble)
        return;
    if (!content || !view) {
        q->close();
        return;
    }
    const QPointer<Bubble> made = bubble = new Bubble(view, content, surface);
    const auto isThere = [&] {
        return self && made && bubble == made;
    };
    input.setBubble(bubble);
    connect(bubble, &Bubble::escaped, q, &Popover::performClose);
    connect(bubble, &Bubble::dismissed, q, [this] { dismiss(); });
    connect(bubble, &Bubble::moved, q, [this] { updateArrow(); });
    connect(bubble, &Bubble::contentChanged, q, [this] {
        if (isShown)
            place();
    });
    connect(bubble, &Bubble::pressedBeside, q,
            [this](QPoint globalPosition) { input.clickBehind(globalPosition); });
    connect(bubble, &QObject::destroyed, q, &Popover::close);
    if (!hadBubble)
        focusBefore = QApplication::focusWidget();
    place();
    if (!isThere())
        return;
    bubble->show();
    if (!isThere())
        return;
    if (!bubble->isWindow())
        bubble->raise();
    updateArrow();
    enterFocus();
    if (isThere())
        announce();
}

// The window system, or Qt, closes the bubble's window.
void Popover::Private::dismiss()
{
    if (bubble->surface() != Bubble::Surface::popup)
        return q->performClose();
    // Qt closes popups when the program loses the keyboard.
    if (input.hasKeyJustClosedPopup())
        return;
    // A popup that never came up has not got the keyboard. Others end for a click in another
    // program, for a dialog, or for picking a colour.
    const bool hasComeUp = bubble->windowHandle() && bubble->windowHandle()->isExposed();
    const bool hasUserLeft =
            hasComeUp && !input.hasDialog() && !detail::PortalColorPicker::isPicking();
    if (hasUserLeft && behavior == Behavior::transient)
        q->performClose();
    else
        keepInWindow();
}

// Takes it out of a popup that ends, in which it also had the keyboard for itself.
void Popover::Private::keepInWindow()
{
    const QWindow *const former = bubble->windowHandle();
    QWindow *const heir = view->window()->windowHandle();
    for (QWindow *const window : QGuiApplication::topLevelWindows()) {
        if (window->transientParent() == former)
            window->setTransientParent(heir);
    }
    isKeptInWindow = true;
    const QPointer<Popover> self(q);
    createBubble();
    if (self && isShown)
        input.start();
}

// Leaves the content to its controller, and the focus to who had it. Whatever is hidden may delete
// the popover and the window.
void Popover::Private::removeBubble()
{
    if (!bubble)
        return;
    Bubble *const leaving = std::exchange(bubble, nullptr);
    const QPointer<Bubble> former = leaving;
    const QPointer<QWidget> heir = focusBefore;
    leaving->disconnect(q);
    // Popovers in the content leave the screen before it: compositors want that order.
    if (controller && controller->view() && leaving->isPlacedForUs())
        controller->view()->hide();
    if (!former)
        return;
    const bool wasActive = former->isWindow() && former->isActiveWindow();
    QWidget *const focused = former->window()->focusWidget();
    const bool hadFocus = former->isWindow() ? wasActive : focused && former->isAncestorOf(focused);
    const bool wasPlaced = former->isPlacedForUs();
    former->hide();
    if (former) {
        former->releaseContent();
        former->deleteLater();
    }
    if (!hadFocus || !heir || !heir->isVisible())
        return;
    if (wasActive && !wasPlaced)
        heir->activateWindow();
    if (heir)
        heir->setFocus(Qt::PopupFocusReason);
}

void Popover::Private::place()
{
    const std::optional<QRectF> area = visibleArea();
    if (!area) {
        q->close();
        return;
    }
    bubble->setLayoutDirection(view->layoutDirection());
    const QRectF anchor = anchorFor(*area);
    const QSizeF size = q->contentSize();
    const bool isInWindow = bubble->surface() == Bubble::Surface::child;
    const QRectF room = isInWindow ? roomInWindow() : roomOnScreen(anchor);
    detail::PopoverPlacement placement;
    if (bubble->isPlacedForUs()) {
        constexpr double plenty = 1 << 14; // the window system finds the room
        placement = detail::placePopover(anchor, size.boundedTo(room.size()),
                                         anchor.adjusted(-plenty, -plenty, plenty, plenty),
                                         preferredEdge);
        bubble->setAnchor(*area, preferredEdge);
    } else {
        placement = detail::placePopover(anchor, size, room, preferredEdge);
    }
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
    const QRectF anchor = anchorFor(*area);
    if (bubble->isPlacedForUs() && !detail::WaylandPlugin::tellsPopupPlaces())
        return bubble->setArrow(edge, {});
    if (bubble->isPlacedForUs())
        edge = detail::popoverEdge(anchor, bubble->body()).value_or(edge);
    bubble->setArrow(edge, detail::popoverArrow(anchor, bubble->body(), edge));
}

void Popover::Private::enterFocus()
{
    if (!bubble->takesFocus())
        return;
    const QPointer<QWidget> first = Bubble::firstFocusable(controller->view());
    if (bubble->isWindow() && !bubble->isPlacedForUs())
        bubble->activateWindow();
    if (first)
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

} // namespace NS
