// SPDX-License-Identifier: MIT
#include "Window/NSWindow.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "View/DesktopSettings.h"
#include "View/NSView.h"
#include "Window/AccessibleWindow.h"
#include "Window/NSTitlebarAccessoryViewController.h"
#include "Window/StandardWindowButton.h"
#include "Window/TitleBarView.h"
#include "Window/WindowBorder.h"
#include "Window/WindowContent.h"
#include "Window/WindowDrag.h"
#include "Window/WindowEdges.h"
#include "Window/WindowManager.h"
#include "Window/WindowMenu.h"
#include "Window/WindowState.h"

#include <QApplication>
#include <QChildEvent>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QShortcut>
#include <QStyleOption>
#include <QTimer>
#include <QVBoxLayout>
#include <QVariantAnimation>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace NS {

namespace {

constexpr Window::StyleMask standardStyle = Window::StyleMask(
        Window::titled | Window::closable | Window::miniaturizable | Window::resizable);

// Hints for single buttons would bring the desktop's frame back on X11.
Qt::WindowFlags flagsFor(Window::StyleMask styleMask, bool isNative)
{
    if (!isNative || !(styleMask & Window::titled))
        return Qt::Window | Qt::FramelessWindowHint;
    Qt::WindowFlags flags =
            Qt::Window | Qt::CustomizeWindowHint | Qt::WindowSystemMenuHint | Qt::WindowTitleHint;
    flags.setFlag(Qt::WindowCloseButtonHint, styleMask & Window::closable);
    flags.setFlag(Qt::WindowMinimizeButtonHint, styleMask & Window::miniaturizable);
    flags.setFlag(Qt::WindowMaximizeButtonHint, styleMask & Window::resizable);
    return flags;
}

double titleBarHeight(Window::StyleMask styleMask)
{
    const bool isAbove = styleMask & Window::titled && !(styleMask & Window::fullSizeContentView);
    return isAbove ? detail::TitleBarView::standardHeight : 0.0;
}

} // namespace

struct Window::Private
{
    explicit Private(Window *window)
        : q(window)
        , drag(new detail::WindowDrag(window))
        , edges(new detail::WindowEdges(window))
        , titleBar(new detail::TitleBarView(window, drag))
        , border(new detail::WindowBorder(window))
        , content(new detail::WindowContent(window))
    { }

    bool isNormal() const { return !q->isMaximized() && !q->isFullScreen(); }
    int barHeight() const;
    void arrange();
    void rearrange();
    void barHeightChanged();
    void boundWidth();
    void enterFocus();
    void applyFlags();
    void updateBorder();
    void tellResizable();
    void watchNativeWindow();

    Window *q;
    detail::WindowDrag *drag;
    detail::WindowEdges *edges;
    detail::TitleBarView *titleBar;
    detail::WindowBorder *border;
    detail::WindowContent *content;
    StyleMask styleMask = standardStyle;
    TitleVisibility titleVisibility = titleVisible;
    QUrl representedURL;
    QPointer<QVariantAnimation> animation;
    int fullBarHeight =
            detail::TitleBarView::standardHeight; // that the window's height counts with
    bool isMovableByBackground = false;
    bool hasFullKeyboardAccess = false;
    bool isNative = false;
    bool wasFixed = false; // as the window manager was told
    int boundedWidth = 0; // the least width that boundWidth() has set
};

int Window::Private::barHeight() const
{
    if (!(styleMask & titled))
        return 0;
    if (isNative && titleBar->accessories().isEmpty())
        return 0;
    return q->isFullScreen() ? titleBar->fullScreenHeight() : titleBar->fullHeight();
}

void Window::Private::arrange()
{
    const int height = barHeight();
    titleBar->setVisible(height > 0);
    titleBar->setGeometry(0, 0, q->width(), height);
    q->setContentsMargins(0, styleMask & fullSizeContentView ? 0 : height, 0, 0);
    titleBar->arrange();
    border->arrange();
    boundWidth();
}

// Outside the layout pass: a subclass moves items of the bar in the next one.
void Window::Private::rearrange()
{
    arrange();
    NS::setNeedsLayout(q);
}

void Window::Private::barHeightChanged()
{
    const int grown = titleBar->fullHeight() - std::exchange(fullBarHeight, titleBar->fullHeight());
    if (grown != 0 && isNormal() && styleMask & titled) {
        const bool hasSize = q->testAttribute(Qt::WA_Resized);
        q->resize(q->width(), q->height() + grown);
        // Without a size of its own, the window still gets the one that its content asks for.
        q->setAttribute(Qt::WA_Resized, hasSize);
    }
    rearrange();
}

// The window is at least as wide as its title bar needs, and as its layout and its program say. Once
// it has a least width of its own, the layout no longer sets it.
void Window::Private::boundWidth()
{
    const int set = q->minimumWidth();
    int least = titleBar->isHidden() ? 0 : titleBar->leastWidth();
    if (const QLayout *const layout = q->layout())
        least = std::max(least, layout->totalMinimumSize().width());
    if (set == boundedWidth ? least == set : least <= set)
        return;
    boundedWidth = least;
    q->setMinimumWidth(least);
}

// Qt would give the focus to the first widget that can have it: with full keyboard access that is
// the close button.
void Window::Private::enterFocus()
{
    const QWidget *const current = q->focusWidget();
    if (!hasFullKeyboardAccess || (current && current->isVisible()))
        return;
    QWidget *first = q;
    do {
        first = first->nextInFocusChain();
    } while (first != q
             && (!(first->focusPolicy() & Qt::TabFocus) || !first->isVisibleTo(q)
                 || !first->isEnabledTo(q) || first->window() != q
                 || qobject_cast<detail::StandardWindowButton *>(first)));
    first->setFocus(Qt::ActiveWindowFocusReason);
}

void Window::Private::applyFlags()
{
    const Qt::WindowFlags flags = flagsFor(styleMask, isNative);
    if (flags == q->windowFlags())
        return;
    const bool wasVisible = q->isVisible();
    q->setWindowFlags(flags);
    if (wasVisible)
        q->show();
}

void Window::Private::updateBorder()
{
    const bool isSnapped =
            detail::WindowManager::canPlaceWindows()
            && detail::WindowManager::isSnapped(q->geometry(), q->screen()->availableGeometry());
    border->setVisible(!isNative && isNormal() && !isSnapped);
    border->setRound(q->testAttribute(Qt::WA_TranslucentBackground)
                     && detail::WindowManager::hasCompositor());
    edges->setEnabled(!isNative && isNormal() && styleMask & resizable);
    tellResizable();
}

void Window::Private::tellResizable()
{
    const bool isFixed = !(styleMask & resizable) && isNormal();
    if (!q->windowHandle() || (!isFixed && !wasFixed))
        return;
    detail::WindowManager::setResizable(q->windowHandle(), !isFixed);
    wasFixed = isFixed;
}

void Window::Private::watchNativeWindow()
{
    if (QWindow *const window = q->windowHandle()) {
        // The one installed last is asked first.
        window->installEventFilter(titleBar);
        window->installEventFilter(drag);
        window->installEventFilter(edges);
    }
}

Window::Window(QWidget *parent)
    : QWidget(parent, flagsFor(standardStyle, false))
{
    detail::makeAccessible<Window, detail::AccessibleWindow>();
    detail::WindowManager::setApplicationId();
    d = std::make_unique<Private>(this); // whose widgets are announced by events that look for it
    // Only before the native window is made; without a compositor transparent is black.
    setAttribute(Qt::WA_TranslucentBackground, detail::WindowManager::hasCompositor());
    d->titleBar->setStyleMask(d->styleMask);
    connect(d->titleBar, &detail::TitleBarView::fullHeightChanged, this,
            [this] { d->barHeightChanged(); });
    connect(d->titleBar, &detail::TitleBarView::leastWidthChanged, this,
            [this] { d->boundWidth(); });
    connect(d->titleBar, &detail::TitleBarView::clicked, this,
            [this](detail::TitleBarClick click, QPoint position) {
                switch (detail::titleBarAction(click)) {
                case detail::TitleBarAction::zoom:
                    return zoom();
                case detail::TitleBarAction::miniaturize:
                    return miniaturize();
                case detail::TitleBarAction::lower:
                    return lower();
                case detail::TitleBarAction::windowMenu:
                    return detail::showWindowMenu(this, position);
                case detail::TitleBarAction::none:
                    return;
                }
            });
    connect(new QShortcut(QKeyCombination(Qt::ALT, Qt::Key_Space), this), &QShortcut::activated,
            this, [this] {
                if (!d->isNative)
                    detail::showWindowMenu(this, mapToGlobal(QPoint(0, d->barHeight())));
            });
    d->arrange();
    NS::setNeedsLayout(this);
}

Window::Window(const QRectF &contentRect, StyleMask styleMask, QWidget *parent)
    : Window(parent)
{
    setStyleMask(styleMask);
    NS::setFrame(this, frameRectForContentRect(contentRect, styleMask));
    d->arrange();
}

Window::~Window()
{
    disconnect(d->titleBar, nullptr, this, nullptr); // which outlives what its signals reach
}

// Frames

QRectF Window::contentRectForFrameRect(const QRectF &frame, StyleMask styleMask)
{
    return frame.adjusted(0.0, 0.0, 0.0, -NS::titleBarHeight(styleMask));
}

QRectF Window::frameRectForContentRect(const QRectF &content, StyleMask styleMask)
{
    return content.adjusted(0.0, 0.0, 0.0, NS::titleBarHeight(styleMask));
}

QRectF Window::frame() const
{
    return NS::frame(this);
}

void Window::setFrame(const QRectF &frame)
{
    setFrame(frame, false);
}

void Window::setFrame(const QRectF &frame, bool display)
{
    if (!d->isNormal())
        return;
    delete d->animation;
    NS::setFrame(this, frame);
    d->arrange(); // a hidden window hears of its size when it is shown
    if (display)
        repaint();
}

void Window::setFrame(const QRectF &frame, bool display, bool animate)
{
    constexpr int duration = 200; // milliseconds
    if (!animate || !isVisible() || !d->isNormal())
        return setFrame(frame, display);
    delete d->animation;
    d->animation = new QVariantAnimation(this);
    d->animation->setStartValue(this->frame());
    d->animation->setEndValue(frame);
    d->animation->setDuration(duration);
    d->animation->setEasingCurve(QEasingCurve::OutCubic);
    connect(d->animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { NS::setFrame(this, value.toRectF()); });
    d->animation->start(QAbstractAnimation::DeleteWhenStopped);
}

// Parts

Window::StyleMask Window::styleMask() const
{
    return d->styleMask;
}

void Window::setStyleMask(StyleMask styleMask)
{
    if (!detail::assign(d->styleMask, styleMask))
        return;
    d->titleBar->setStyleMask(styleMask);
    d->titleBar->setLetsClicksThrough(styleMask & fullSizeContentView);
    d->applyFlags();
    d->rearrange();
    d->updateBorder();
    Q_EMIT styleMaskChanged(styleMask);
}

QWidget *Window::contentView() const
{
    return d->content->view();
}

void Window::setContentView(QWidget *view)
{
    if (view == contentView())
        return;
    delete contentView();
    if (view) {
        if (!layout()) {
            auto *const layout = new QVBoxLayout(this);
            layout->setContentsMargins(0, 0, 0, 0);
            layout->setSpacing(0);
        }
        view->setParent(this); // and no window of its own any more
        view->show();
        layout()->addWidget(view);
        d->titleBar->raise();
        d->border->raise();
    }
    d->content->setView(view);
    Q_EMIT contentViewChanged(view);
}

Window::TitleVisibility Window::titleVisibility() const
{
    return d->titleVisibility;
}

void Window::setTitleVisibility(TitleVisibility visibility)
{
    if (!detail::assign(d->titleVisibility, visibility))
        return;
    d->titleBar->setTitleVisible(visibility == titleVisible);
    NS::setNeedsLayout(this);
    Q_EMIT titleVisibilityChanged(visibility);
}

QUrl Window::representedURL() const
{
    return d->representedURL;
}

void Window::setRepresentedURL(const QUrl &url)
{
    if (!detail::assign(d->representedURL, url))
        return;
    setWindowFilePath(url.toLocalFile());
    d->titleBar->setHasDocument(!url.isEmpty());
    NS::setNeedsLayout(this);
    Q_EMIT representedURLChanged(url);
}

QAbstractButton *Window::standardWindowButton(WindowButton kind) const
{
    return d->titleBar->button(kind);
}

void Window::addTitlebarAccessoryViewController(TitlebarAccessoryViewController *controller)
{
    if (auto *const owner = qobject_cast<Window *>(controller->parent())) {
        const auto index = int(owner->titlebarAccessoryViewControllers().indexOf(controller));
        if (index >= 0 && owner == this)
            return;
        if (index >= 0)
            owner->removeTitlebarAccessoryViewControllerAtIndex(index);
    }
    controller->setParent(this);
    d->titleBar->insertAccessory(controller);
}

void Window::removeTitlebarAccessoryViewControllerAtIndex(int index)
{
    if (index < 0 || index >= d->titleBar->accessories().size())
        detail::fatalError("No title bar accessory has that index");
    d->titleBar->removeAccessory(index);
}

QList<TitlebarAccessoryViewController *> Window::titlebarAccessoryViewControllers() const
{
    return d->titleBar->accessories();
}

// Manners

bool Window::isMovableByWindowBackground() const
{
    return d->isMovableByBackground;
}

void Window::setMovableByWindowBackground(bool isMovable)
{
    if (detail::assign(d->isMovableByBackground, isMovable))
        Q_EMIT movableByWindowBackgroundChanged(isMovable);
}

bool Window::hasFullKeyboardAccess() const
{
    return d->hasFullKeyboardAccess;
}

void Window::setFullKeyboardAccess(bool hasAccess)
{
    if (!detail::assign(d->hasFullKeyboardAccess, hasAccess))
        return;
    d->titleBar->setButtonFocusPolicy(hasAccess ? Qt::TabFocus : Qt::NoFocus);
    Q_EMIT fullKeyboardAccessChanged(hasAccess);
}

bool Window::hasNativeDecorations() const
{
    return d->isNative;
}

void Window::setNativeDecorations(bool areNative)
{
    if (!detail::assign(d->isNative, areNative))
        return;
    d->titleBar->setBare(areNative);
    d->applyFlags();
    d->rearrange();
    d->updateBorder();
    Q_EMIT nativeDecorationsChanged(areNative);
}

QByteArray Window::saveState() const
{
    return saveGeometry();
}

bool Window::restoreState(const QByteArray &state)
{
    return detail::isWholeWindowState(state) && restoreGeometry(state);
}

void Window::awakeFromNib() { }

void Window::layoutIfNeeded()
{
    NS::layoutSubtreeIfNeeded(this);
}

void Window::performLayout()
{
    d->arrange();
    layoutIfNeeded();
}

void Window::windowDidResize(QResizeEvent *) { }

void Window::orderFront()
{
    const bool didActivate = !testAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_ShowWithoutActivating);
    show();
    setAttribute(Qt::WA_ShowWithoutActivating, !didActivate);
    raise();
}

void Window::orderOut()
{
    hide();
}

void Window::performClose()
{
    if (QAbstractButton *const button = standardWindowButton(WindowButton::close))
        button->click();
    else
        QApplication::beep();
}

void Window::miniaturize()
{
    if (d->styleMask & miniaturizable)
        setWindowState(windowState() | Qt::WindowMinimized);
}

void Window::zoom()
{
    if (d->styleMask & resizable && !isFullScreen())
        setWindowState(windowState() ^ Qt::WindowMaximized);
}

void Window::toggleFullScreen()
{
    if (d->styleMask & resizable)
        setWindowState(windowState() ^ Qt::WindowFullScreen);
}

// Events

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
    painter.fillRect(rect(), palette().color(QPalette::Window));
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void Window::mousePressEvent(QMouseEvent *event)
{
    // What the content leaves of a title bar that it reaches up behind is still the title bar.
    if (d->styleMask & fullSizeContentView && event->position().y() < d->barHeight()) {
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
