// SPDX-License-Identifier: MIT
#include "Window/NSWindowPrivate.h"

#include "View/NSView.h"
#include "Window/StandardWindowButton.h"
#include "Window/WindowManager.h"

#include <QLayout>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace NS {

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

// The window is at least as wide as its title bar needs, and as its layout and its program say.
// Once it has a least width of its own, the layout no longer sets it.
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

} // namespace NS
