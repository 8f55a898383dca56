// SPDX-License-Identifier: MIT
#include "Window/NSPopover.h"

#include "Base/Assign.h"
#include "View/NSView.h"
#include "Window/PopoverBubble.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QPointerEvent>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;
using Pellarvine::detail::PopoverBubble;
using Pellarvine::detail::PopoverShape;

namespace NS {

namespace {

// What a child bubble keeps free at the edges of its window.
constexpr int windowMargin = 4;

// The openers on which the click or the key lies that has just closed their popovers. It forgets
// them once that is over.
class ClosingClick : public QObject
{
public:
    static ClosingClick &instance()
    {
        static ClosingClick *const click = new ClosingClick;
        return *click;
    }

    void add(QWidget *opener)
    {
        if (m_openers.isEmpty())
            qApp->installEventFilter(this);
        m_openers.append(opener);
    }
    bool isOn(const QWidget *opener) const { return m_openers.contains(opener); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        const bool isOver =
                event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::TouchEnd
                || event->type() == QEvent::TabletRelease || event->type() == QEvent::KeyRelease;
        // Whoever handles the release comes after this filter.
        if (isOver)
            QTimer::singleShot(0, this, &ClosingClick::forget);
        return false;
    }

private:
    ClosingClick()
        : QObject(qApp)
    { }

    void forget()
    {
        m_openers.clear();
        qApp->removeEventFilter(this);
    }

    QList<QPointer<QWidget>> m_openers;
};

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return false;
    }
}

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
    { }

    QWidget *effectiveOpener() const { return opener ? opener.data() : view.data(); }
    QSizeF fittingSize() const;
    QRectF areaInView() const;
    std::optional<QRectF> visibleArea() const;
    QRectF anchorFor(const QRectF &areaInWindow) const;
    QRectF room(const QRectF &anchor) const;
    bool contains(const QWidget *widget) const;
    bool isElsewhere(const QWidget *widget) const;
    bool closesFor(const QWidget *widget) const;

    void createBubble();
    void removeBubble();
    void place();
    void updateArrow();
    void enterFocus();
    void announce();
    void follow(QObject *watched, QEvent *event);
    void pressed(QObject *watched, QEvent *event);
    bool keyed(QObject *watched, QEvent *event);
    void pressBehind(QPoint globalPosition);

    Popover *q;
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
    bool seesInput = false; // not what is still going on as it comes up
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
{
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state != Qt::ApplicationActive && d->behavior == Behavior::transient)
                    performClose();
            });
}

Popover::~Popover()
{
    if (d->isShown)
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
            || (!d->isShown && ClosingClick::instance().isOn(d->opener ? d->opener.data() : view));
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
    qApp->installEventFilter(this);
    d->seesInput = false;
    QTimer::singleShot(0, this, [this] { d->seesInput = true; });
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

// The place in the view, y downwards from here on.
QRectF Popover::Private::areaInView() const
{
    return rect == QRectF() ? QRectF(view->rect()) : flipped(rect, view->height());
}

// The part of it that no ancestor cuts off, in the window.
std::optional<QRectF> Popover::Private::visibleArea() const
{
    QRectF area = areaInView();
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
        return QRectF(view->window()->rect().adjusted(windowMargin, windowMargin, -windowMargin,
                                                      -windowMargin));
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
    connect(bubble, &detail::PopoverBubble::escaped, q, &Popover::performClose);
    connect(bubble, &detail::PopoverBubble::moved, q, [this] { updateArrow(); });
    connect(bubble, &detail::PopoverBubble::contentChanged, q, [this] {
        if (isShown)
            place();
    });
    connect(bubble, &detail::PopoverBubble::pressedBeside, q,
            [this](QPoint globalPosition) { pressBehind(globalPosition); });
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
    qApp->removeEventFilter(q);
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

// What happens elsewhere

bool Popover::Private::contains(const QWidget *widget) const
{
    while (widget) {
        if (widget == bubble)
            return true;
        // A popover in a popover belongs to what it points at; menus and dialogs to their parents.
        const auto *const other = qobject_cast<const detail::PopoverBubble *>(widget);
        widget = other ? other->view() : widget->parentWidget();
    }
    return false;
}

bool Popover::Private::isElsewhere(const QWidget *widget) const
{
    const Qt::WindowType type = widget->window()->windowType();
    if (type == Qt::Popup || type == Qt::ToolTip)
        return false; // a menu or a list: what opened it counted
    const QWidget *const modal = QApplication::activeModalWidget();
    const bool isBlocked = modal && view && modal != view->window() && modal == widget->window()
                           && !modal->isAncestorOf(view);
    return !isBlocked && !contains(widget);
}

bool Popover::Private::closesFor(const QWidget *widget) const
{
    return behavior == Behavior::transient
           || (behavior == Behavior::semitransient && view && widget->window() == view->window());
}

void Popover::Private::pressed(QObject *watched, QEvent *event)
{
    if (!watched->isWidgetType()) {
        // Windows of widgets hand the event on to the widgets.
        const bool isForeign = watched->isWindowType() && !watched->inherits("QWidgetWindow");
        if (isForeign && behavior == Behavior::transient)
            q->performClose();
        return;
    }
    auto *const widget = static_cast<QWidget *>(watched);
    if (!isElsewhere(widget) || !closesFor(widget))
        return;
    QWidget *const responsible = effectiveOpener();
    if (responsible && (responsible == widget || responsible->isAncestorOf(widget))) {
        const QPointF position =
                static_cast<QPointerEvent *>(event)->points().constFirst().position();
        const bool isInPlace = responsible != view
                               || areaInView().contains(widget->mapTo(view, position.toPoint()));
        if (isInPlace)
            ClosingClick::instance().add(responsible);
    }
    q->performClose();
}

// Whether the key is used up.
bool Popover::Private::keyed(QObject *watched, QEvent *event)
{
    if (!watched->isWidgetType())
        return false;
    auto *const widget = static_cast<QWidget *>(watched);
    const auto *const key = static_cast<QKeyEvent *>(event);
    if (!isElsewhere(widget) || !closesFor(widget))
        return false;
    if (key->matches(QKeySequence::Cancel)) {
        if (event->type() == QEvent::ShortcutOverride)
            event->accept();
        else
            q->performClose();
        return true;
    }
    if (event->type() == QEvent::KeyPress && behavior == Behavior::transient
        && !isModifier(key->key())) {
        if (widget == effectiveOpener() && qobject_cast<QAbstractButton *>(widget))
            ClosingClick::instance().add(widget);
        q->performClose();
    }
    return false;
}

// A click on the shadow, or beside the arrow, is for what shines through.
void Popover::Private::pressBehind(QPoint globalPosition)
{
    const QPointer<detail::PopoverBubble> former = bubble;
    bubble->setAttribute(Qt::WA_TransparentForMouseEvents);
    QWidget *target = QApplication::widgetAt(globalPosition);
    bubble->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    if (!target || target == former)
        target = view->window()->childAt(view->window()->mapFromGlobal(globalPosition));
    if (!target || contains(target))
        return;
    for (const auto type : { QEvent::MouseButtonPress, QEvent::MouseButtonRelease }) {
        const bool isPress = type == QEvent::MouseButtonPress;
        QMouseEvent click(type, target->mapFromGlobal(QPointF(globalPosition)),
                          QPointF(globalPosition), Qt::LeftButton,
                          isPress ? Qt::LeftButton : Qt::NoButton,
                          QApplication::keyboardModifiers());
        QApplication::sendEvent(target, &click);
    }
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
    } else if (view->isVisible()) {
        place();
    }
}

bool Popover::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
        if (d->seesInput)
            d->pressed(watched, event);
        return false;
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        return d->seesInput && d->keyed(watched, event);
    case QEvent::Shortcut: // no key press follows
        if (d->seesInput && d->behavior == Behavior::transient
            && !d->contains(QApplication::focusWidget()))
            performClose();
        return false;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Hide:
    case QEvent::ParentChange:
        d->follow(watched, event);
        return false;
    default:
        return false;
    }
}

} // namespace NS
