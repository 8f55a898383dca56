// SPDX-License-Identifier: MIT
#include "Window/NSWindow.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "View/DesktopSettings.h"
#include "View/NSView.h"
#include "Window/AccessibleWindow.h"
#include "Window/NSTitlebarAccessoryViewController.h"
#include "Window/NSWindowPrivate.h"
#include "Window/StandardWindowButton.h"
#include "Window/WindowManager.h"
#include "Window/WindowMenu.h"
#include "Window/WindowState.h"

#include <QApplication>
#include <QShortcut>
#include <QVBoxLayout>
#include <QVariantAnimation>
#include <QWindow>

namespace NS {

namespace {

double titleBarHeight(Window::StyleMask styleMask)
{
    const bool isAbove = styleMask & Window::titled && !(styleMask & Window::fullSizeContentView);
    return isAbove ? detail::TitleBarView::standardHeight : 0.0;
}

} // namespace

Window::Window(QWidget *parent)
    : QWidget(parent, Private::flagsFor(Private::standardStyle, false))
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
    connect(d->titleBar, &detail::TitleBarView::buttonClicked, this,
            [this](WindowButton kind) { d->takeButton(kind); });
    connect(d->titleBar, &detail::TitleBarView::clicked, this,
            [this](detail::TitleBarClick click, QPoint position) {
                d->takeClick(click, position);
            });
    connect(&detail::DesktopSettings::instance(), &detail::DesktopSettings::changed, this, [this] {
        if (d->followsDesktopButtonLayout)
            d->updateButtonLayout();
    });
    connect(new QShortcut(QKeyCombination(Qt::ALT, Qt::Key_Space), this), &QShortcut::activated,
            this, [this] {
                if (!d->isNative)
                    detail::showWindowMenu(this, mapToGlobal(d->titleBar->geometry().bottomLeft()));
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
    delete d->content; // which watches a view that ends after the window's own parts
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
    return NS::frame(this).marginsRemoved(d->margins());
}

int Window::shadowMargin() const
{
    return d->margin;
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
    NS::setFrame(this, frame.marginsAdded(d->margins()));
    d->arrange(); // a hidden window hears of its size when it is shown
    if (display)
        repaint();
}

void Window::setFrame(const QRectF &frame, bool display, bool animate)
{
    constexpr int duration = 200; // milliseconds
    if (!animate || !isVisible() || !d->isNormal()
        || detail::DesktopSettings::instance().reducesMotion())
        return setFrame(frame, display);
    delete d->animation;
    d->animation = new QVariantAnimation(this);
    d->animation->setStartValue(this->frame());
    d->animation->setEndValue(frame);
    d->animation->setDuration(duration);
    d->animation->setEasingCurve(QEasingCurve::OutCubic);
    connect(d->animation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        NS::setFrame(this, value.toRectF().marginsAdded(d->margins()));
    });
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

// Behaviour

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

bool Window::followsDesktopButtonLayout() const
{
    return d->followsDesktopButtonLayout;
}

void Window::setFollowsDesktopButtonLayout(bool follows)
{
    if (!detail::assign(d->followsDesktopButtonLayout, follows))
        return;
    d->updateButtonLayout();
    Q_EMIT followsDesktopButtonLayoutChanged(follows);
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
    return detail::grownWindowState(saveGeometry(), -d->margin, -d->normalMargin);
}

bool Window::restoreState(const QByteArray &state)
{
    return detail::isWholeWindowState(state)
           && restoreGeometry(detail::grownWindowState(state, d->margin, d->normalMargin));
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

} // namespace NS
