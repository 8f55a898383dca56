// SPDX-License-Identifier: MIT
#include "Window/NSWindowPrivate.h"

#include "View/NSView.h"
#include "Window/DocumentMenu.h"
#include "Window/StandardWindowButton.h"
#include "Window/WindowManager.h"
#include "Window/WindowMenu.h"
#include "Window/WindowShadow.h"

#include <QLayout>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace NS {

bool Window::Private::isTiled() const
{
    return q->windowHandle() && detail::WindowManager::isTiled(q->windowHandle());
}

// Hints for single buttons would bring the desktop's frame back on X11.
Qt::WindowFlags Window::Private::flagsFor(StyleMask styleMask, bool isNative)
{
    if (!isNative || !(styleMask & titled))
        return Qt::Window | Qt::FramelessWindowHint;
    Qt::WindowFlags flags =
            Qt::Window | Qt::CustomizeWindowHint | Qt::WindowSystemMenuHint | Qt::WindowTitleHint;
    flags.setFlag(Qt::WindowCloseButtonHint, styleMask & Window::closable);
    flags.setFlag(Qt::WindowMinimizeButtonHint, styleMask & Window::miniaturizable);
    flags.setFlag(Qt::WindowMaximizeButtonHint, styleMask & Window::resizable);
    return flags;
}

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
    titleBar->setGeometry(margin, margin, seen().width(), height);
    q->setContentsMargins(margin, margin + (styleMask & fullSizeContentView ? 0 : height), margin,
                          margin);
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
        const int height = q->height() + grown;
        arrange();
        if (q->layout() && q->testAttribute(Qt::WA_WState_Created))
            q->layout()->activate(); // whose least height is that with the former bar
        q->resize(q->width(), height);
        // Without a size of its own, the window still gets the one that its content asks for.
        q->setAttribute(Qt::WA_Resized, hasSize);
    }
    rearrange();
}

// The window is at least as wide as its title bar needs, and as its layout and its program say.
// Once it has a least width of its own, the layout no longer sets it.
void Window::Private::boundWidth()
{
    const int set = q->minimumWidth();
    int least = titleBar->isHidden() ? 0 : titleBar->leastWidth() + 2 * margin;
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

void Window::Private::takeButton(WindowButton kind)
{
    switch (kind) {
    case WindowButton::close:
        q->close();
        return;
    case WindowButton::miniaturize:
        return q->miniaturize();
    case WindowButton::zoom:
        return q->isFullScreen() ? q->toggleFullScreen() : q->zoom();
    case WindowButton::documentVersions:
        Q_EMIT q->documentVersionsRequested();
        return;
    case WindowButton::documentIcon:
        return detail::showDocumentMenu(titleBar->button(kind), representedURL);
    }
}

void Window::Private::takeClick(detail::TitleBarClick click, QPoint position)
{
    switch (detail::titleBarAction(click)) {
    case detail::TitleBarAction::zoom:
        return q->zoom();
    case detail::TitleBarAction::miniaturize:
        return q->miniaturize();
    case detail::TitleBarAction::lower:
        return q->lower();
    case detail::TitleBarAction::windowMenu:
        return detail::showWindowMenu(q, position);
    case detail::TitleBarAction::none:
        return;
    }
}

void Window::Private::updateButtonLayout()
{
    titleBar->setButtonLayout(followsDesktopButtonLayout ? detail::desktopButtonLayout()
                                                         : detail::ButtonLayout());
    rearrange();
}

void Window::Private::updateBorder()
{
    const bool canBeTranslucent = q->testAttribute(Qt::WA_TranslucentBackground)
                                  && detail::WindowManager::hasCompositor();
    updateMargin(canBeTranslucent);
    const QRect frame = seen().translated(q->geometry().topLeft());
    const bool isSnapped =
            detail::WindowManager::canPlaceWindows()
                    ? detail::WindowManager::isSnapped(frame, q->screen()->availableGeometry())
                    : isTiled();
    border->setVisible(!isNative && isNormal() && !isSnapped);
    border->setRound(canBeTranslucent);
    edges->setEnabled(!isNative && isNormal() && styleMask & resizable);
    tellResizable();
}

void Window::Private::updateMargin(bool canBeTranslucent)
{
    const bool hasShadow =
            knowsMargins && canBeTranslucent && !isNative && isNormal() && !isTiled();
    const int by = (hasShadow ? detail::WindowShadow::margin : 0) - margin;
    if (by == 0 || !q->windowHandle())
        return;
    const QRect geometry = q->geometry().adjusted(-by, -by, by, by);
    const bool hasPlace = q->testAttribute(Qt::WA_Moved);
    const bool hasSize = q->testAttribute(Qt::WA_Resized);
    margin += by;
    if (isNormal())
        normalMargin = margin;
    border->setMargin(margin);
    edges->setMargin(margin);
    // The desktop keeps to the limits when it changes the size.
    if (by < 0)
        moveLimits(by);
    detail::WindowManager::setMargin(q->windowHandle(), margin);
    if (by > 0)
        moveLimits(by);
    if (!q->isVisible() && isNormal()) {
        q->setGeometry(geometry);
        q->setAttribute(Qt::WA_Moved, hasPlace);
        q->setAttribute(Qt::WA_Resized, hasSize);
    }
    rearrange();
}

// Moves what the program has set; the rest is the layout's and boundWidth()'s.
void Window::Private::moveLimits(int by)
{
    if (q->layout())
        q->layout()->activate(); // for the heights below
    const auto moved = [by](int limit) {
        return limit >= QWIDGETSIZE_MAX ? limit : std::max(0, limit + 2 * by);
    };
    q->setMaximumSize(moved(q->maximumWidth()), moved(q->maximumHeight()));
    if (q->minimumWidth() != boundedWidth)
        q->setMinimumWidth(moved(q->minimumWidth()));
    const int layoutHeight = q->layout() ? q->layout()->totalMinimumSize().height() : 0;
    if (q->minimumHeight() > 0 && q->minimumHeight() != layoutHeight)
        q->setMinimumHeight(moved(q->minimumHeight()));
}

// Before the window is shown, and not when its native window is made: that it will be maximised is
// not known by then.
void Window::Private::prepareMargin()
{
    knowsMargins = q->isWindow() && detail::WindowManager::knowsMargins();
    updateMargin(q->testAttribute(Qt::WA_TranslucentBackground));
}

// The window grows by the margin after the compositor has been told of it. Mutter cuts the visible
// window down to the picture that it has by then, and keeps that until it is told again.
void Window::Private::confirmMargin()
{
    const bool hasGrown = margin > std::exchange(confirmedMargin, margin);
    if (!hasGrown || !q->isVisible() || detail::WindowManager::canPlaceWindows())
        return;
    QMetaObject::invokeMethod(
            q,
            [this] {
                if (q->windowHandle())
                    detail::WindowManager::setMargin(q->windowHandle(), margin);
            },
            Qt::QueuedConnection);
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
        if (margin > 0 && !q->isVisible()) { // a new one knows nothing of it
            detail::WindowManager::setMargin(window, margin);
            window->setGeometry(q->geometry());
        }
    }
}

} // namespace NS
