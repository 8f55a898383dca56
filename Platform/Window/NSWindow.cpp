// SPDX-License-Identifier: MIT
#include "Window/NSWindow.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "View/DesktopSettings.h"
#include "View/NSView.h"
#include "Window/AccessibleWindow.h"
#include "Window/DocumentMenu.h"
#include "Window/NSTitlebarAccessoryViewController.h"
#include "Window/NSWindowPrivate.h"
#include "Window/StandardWindowButton.h"
#include "Window/TitleBarItems.h"
#include "Window/TitleBarView.h"

#include <QApplication>
#include <QVBoxLayout>
#include <QVariantAnimation>

namespace NS {

namespace {

double titleBarHeight(Window::StyleMask styleMask)
{
    const bool isAbove = styleMask & Window::titled && !(styleMask & Window::fullSizeContentView);
    return isAbove ? detail::TitleBarView::standardHeight : 0.0;
}

} // namespace

Window::Window(QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
    // Before the parts are made: screen readers hear of them, and ask for the window's interface.
    detail::makeAccessible<Window, detail::AccessibleWindow>();
    d = std::make_unique<Private>(this);
    connect(d->frame->titleBar()->items(), &detail::TitleBarItems::buttonClicked, this,
            [this](WindowButton kind) {
                if (kind == WindowButton::documentIcon)
                    detail::showDocumentMenu(standardWindowButton(kind), d->representedURL);
                else if (kind == WindowButton::documentVersions)
                    Q_EMIT documentVersionsRequested();
            });
}

Window::Window(const QRectF &contentRect, StyleMask styleMask, QWidget *parent)
    : Window(parent)
{
    setStyleMask(styleMask);
    NS::setFrame(this, frameRectForContentRect(contentRect, styleMask));
    d->frame->arrange();
}

Window::~Window()
{
    delete d->content; // which watches a view that ends after the window's own parts
}

// Frames

QRectF Window::contentRectForFrameRect(const QRectF &frame, StyleMask mask)
{
    return frame.adjusted(0.0, 0.0, 0.0, -NS::titleBarHeight(mask));
}

QRectF Window::frameRectForContentRect(const QRectF &content, StyleMask mask)
{
    return content.adjusted(0.0, 0.0, 0.0, NS::titleBarHeight(mask));
}

QRectF Window::frame() const
{
    return NS::frame(this).marginsRemoved(d->margins());
}

int Window::shadowMargin() const
{
    return d->frame->margin();
}

void Window::setFrame(const QRectF &frame)
{
    setFrame(frame, false);
}

void Window::setFrame(const QRectF &frame, bool display)
{
    if (!d->frame->isNormal())
        return;
    delete d->animation;
    NS::setFrame(this, frame.marginsAdded(d->margins()));
    d->frame->arrange(); // a hidden window hears of its size when it is shown
    if (display)
        repaint();
}

void Window::setFrame(const QRectF &frame, bool display, bool animate)
{
    constexpr int duration = 200; // milliseconds
    if (!animate || !isVisible() || !d->frame->isNormal()
        || detail::DesktopSettings::instance().reducesMotion())
        return setFrame(frame, display);
    delete d->animation;
    d->animation = new QVariantAnimation(this);
    d->animation->setStartValue(this->frame());
    d->animation->setEndValue(frame);
    d->animation->setDuration(duration);
    d->animation->setEasingCurve(QEasingCurve::OutCubic);
    connect(d->animation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        if (d->frame->isNormal())
            NS::setFrame(this, value.toRectF().marginsAdded(d->margins()));
        else
            d->animation->stop();
    });
    d->animation->start(QAbstractAnimation::DeleteWhenStopped);
}

// Parts

Window::StyleMask Window::styleMask() const
{
    return d->frame->styleMask();
}

void Window::setStyleMask(StyleMask styleMask)
{
    if (styleMask == this->styleMask())
        return;
    d->frame->setStyleMask(styleMask);
    Q_EMIT styleMaskChanged(styleMask);
}

QWidget *Window::contentView() const
{
    return d->content->view();
}

void Window::setContentView(QWidget *view)
{
    QWidget *const former = contentView();
    if (view == former)
        return;
    d->content->setView(nullptr);
    if (former) {
        // It may contain the new view, or be what calls.
        if (view)
            view->setParent(this);
        layout()->removeWidget(former);
        former->hide();
        former->deleteLater();
    }
    if (view) {
        if (!layout()) {
            auto *const layout = new QVBoxLayout(this);
            layout->setContentsMargins(0, 0, 0, 0);
            layout->setSpacing(0);
        }
        view->setParent(this); // and no window of its own any more
        view->show();
        layout()->addWidget(view);
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
    d->frame->titleBar()->items()->setTitleVisible(visibility == titleVisible);
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
    d->frame->titleBar()->items()->setHasDocument(!url.isEmpty());
    NS::setNeedsLayout(this);
    Q_EMIT representedURLChanged(url);
}

QAbstractButton *Window::standardWindowButton(WindowButton kind) const
{
    return d->frame->titleBar()->items()->button(kind);
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
    d->frame->titleBar()->insertAccessory(controller);
}

void Window::removeTitlebarAccessoryViewControllerAtIndex(int index)
{
    if (index < 0 || index >= d->frame->titleBar()->accessories().size())
        detail::fatalError("No title bar accessory has that index");
    d->frame->titleBar()->removeAccessory(index);
}

QList<TitlebarAccessoryViewController *> Window::titlebarAccessoryViewControllers() const
{
    return d->frame->titleBar()->accessories();
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
    return d->frame->hasFullKeyboardAccess();
}

void Window::setFullKeyboardAccess(bool hasAccess)
{
    if (hasAccess == hasFullKeyboardAccess())
        return;
    d->frame->setFullKeyboardAccess(hasAccess);
    Q_EMIT fullKeyboardAccessChanged(hasAccess);
}

bool Window::followsDesktopButtonLayout() const
{
    return d->frame->followsDesktopButtonLayout();
}

void Window::setFollowsDesktopButtonLayout(bool follows)
{
    if (follows == followsDesktopButtonLayout())
        return;
    d->frame->setFollowsDesktopButtonLayout(follows);
    Q_EMIT followsDesktopButtonLayoutChanged(follows);
}

bool Window::hasNativeDecorations() const
{
    return d->frame->isNative();
}

void Window::setNativeDecorations(bool areNative)
{
    if (areNative == hasNativeDecorations())
        return;
    d->frame->setNative(areNative);
    Q_EMIT nativeDecorationsChanged(areNative);
}

QByteArray Window::saveState() const
{
    return d->frame->saveState();
}

bool Window::restoreState(const QByteArray &state)
{
    return d->frame->restoreState(state);
}

void Window::awakeFromNib() { }

void Window::layoutIfNeeded()
{
    NS::layoutSubtreeIfNeeded(this);
}

void Window::performLayout()
{
    d->frame->arrange();
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
    d->frame->miniaturize();
}

void Window::zoom()
{
    d->frame->zoom();
}

void Window::toggleFullScreen()
{
    d->frame->toggleFullScreen();
}

} // namespace NS
