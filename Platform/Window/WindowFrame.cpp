// SPDX-License-Identifier: MIT
#include "Window/WindowFrame.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "View/DesktopSettings.h"
#include "View/NSView.h"
#include "Window/ButtonLayout.h"
#include "Window/StandardWindowButton.h"
#include "Window/TitleBarItems.h"
#include "Window/TitleBarView.h"
#include "Window/WindowBorder.h"
#include "Window/WindowDrag.h"
#include "Window/WindowEdges.h"
#include "Window/WindowManager.h"
#include "Window/WindowMenu.h"
#include "Window/WindowPlace.h"
#include "Window/WindowState.h"

#include <QChildEvent>
#include <QDialog>
#include <QLayout>
#include <QPainter>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QStyleOption>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// Hints for single buttons would bring the desktop's frame back on X11.
Qt::WindowFlags flagsFor(NS::Window::StyleMask styleMask, bool isNative)
{
    if (!isNative || !(styleMask & NS::Window::titled))
        return Qt::FramelessWindowHint;
    Qt::WindowFlags flags =
            Qt::CustomizeWindowHint | Qt::WindowSystemMenuHint | Qt::WindowTitleHint;
    flags.setFlag(Qt::WindowCloseButtonHint, styleMask & NS::Window::closable);
    flags.setFlag(Qt::WindowMinimizeButtonHint, styleMask & NS::Window::miniaturizable);
    flags.setFlag(Qt::WindowMaximizeButtonHint, styleMask & NS::Window::resizable);
    return flags;
}

} // namespace

WindowFrame::WindowFrame(QWidget *window, NS::Window::StyleMask styleMask, bool canZoom)
    : QObject(window)
    , m_window(window)
    , m_drag(new WindowDrag(window))
    , m_edges(new WindowEdges(window))
    , m_titleBar(new TitleBarView(window, m_drag))
    , m_border(new WindowBorder(window))
    , m_menuShortcut(new QShortcut(QKeyCombination(Qt::ALT, Qt::Key_Space), window))
    , m_styleMask(styleMask)
    , m_canZoom(canZoom)
    , m_fullBarHeight(m_titleBar->fullHeight())
{
    WindowManager::setApplicationId();
    // Only before the native window is made; without a compositor transparent is black.
    window->setAttribute(Qt::WA_TranslucentBackground, WindowManager::hasCompositor());
    updateItems();
    connect(m_titleBar, &TitleBarView::fullHeightChanged, this, &WindowFrame::barHeightChanged);
    connect(m_titleBar, &TitleBarView::leastWidthChanged, this, &WindowFrame::boundWidth);
    connect(m_titleBar->items(), &TitleBarItems::buttonClicked, this, &WindowFrame::takeButton);
    connect(m_titleBar, &TitleBarView::clicked, this, &WindowFrame::takeClick);
    connect(&DesktopSettings::instance(), &DesktopSettings::changed, this, [this] {
        if (m_followsDesktopButtonLayout)
            updateButtonLayout();
    });
    connect(m_menuShortcut, &QShortcut::activated, this, [this] {
        if (!m_isNative)
            showWindowMenu(this, m_window->mapToGlobal(m_titleBar->geometry().bottomLeft()));
    });
    window->installEventFilter(this);
    const bool hasSize = window->testAttribute(Qt::WA_Resized) || window->isVisible();
    const QSize size = window->size() + QSize(0, barHeight());
    moveLimits(QSize(0, barHeight()));
    rearrange();
    if (hasSize)
        window->resize(size);
    applyFlags();
}

WindowFrame *WindowFrame::of(const QWidget *window)
{
    return window->findChild<WindowFrame *>(QString(), Qt::FindDirectChildrenOnly);
}

QRect seenRect(const QWidget *window)
{
    const WindowFrame *const frame = WindowFrame::of(window);
    return frame ? frame->seen() : window->rect();
}

// Settings

void WindowFrame::setStyleMask(NS::Window::StyleMask styleMask)
{
    if (!assign(m_styleMask, styleMask))
        return;
    updateItems();
    m_titleBar->setLetsClicksThrough(styleMask & NS::Window::fullSizeContentView);
    applyFlags();
    rearrange();
    updateBorder();
}

void WindowFrame::setNative(bool isNative)
{
    if (!assign(m_isNative, isNative))
        return;
    m_titleBar->items()->setBare(isNative);
    applyFlags();
    rearrange();
    updateBorder();
}

void WindowFrame::setFullKeyboardAccess(bool hasAccess)
{
    if (assign(m_hasFullKeyboardAccess, hasAccess))
        m_titleBar->items()->setButtonFocusPolicy(hasAccess ? Qt::TabFocus : Qt::NoFocus);
}

void WindowFrame::setFollowsDesktopButtonLayout(bool follows)
{
    if (assign(m_followsDesktopButtonLayout, follows))
        updateButtonLayout();
}

void WindowFrame::updateItems()
{
    NS::Window::StyleMask buttons = m_styleMask;
    m_titleBar->items()->setStyleMask(buttons.setFlag(NS::Window::resizable, canZoom()));
}

QByteArray WindowFrame::saveState() const
{
    return grownWindowState(m_window->saveGeometry(), -m_margin, -m_normalMargin);
}

bool WindowFrame::restoreState(const QByteArray &state)
{
    // The sizes in it are those of a window that is normal, as this one is then.
    return isWholeWindowState(state)
           && m_window->restoreGeometry(grownWindowState(state, m_normalMargin, m_normalMargin));
}

// Arranging

bool WindowFrame::isNormal() const
{
    return !m_window->isMaximized() && !m_window->isFullScreen();
}

QRect WindowFrame::seen() const
{
    return m_window->rect().adjusted(m_margin, m_margin, -m_margin, -m_margin);
}

int WindowFrame::barHeight() const
{
    if (!(m_styleMask & NS::Window::titled) || !m_window->isWindow())
        return 0;
    if (m_isNative && m_titleBar->accessories().isEmpty())
        return 0;
    return m_window->isFullScreen() ? m_titleBar->fullScreenHeight() : m_titleBar->fullHeight();
}

void WindowFrame::arrange()
{
    const int height = barHeight();
    m_titleBar->setVisible(height > 0);
    m_titleBar->setGeometry(m_margin, m_margin, seen().width(), height);
    m_window->setContentsMargins(
            m_margin, m_margin + (m_styleMask & NS::Window::fullSizeContentView ? 0 : height),
            m_margin, m_margin);
    m_titleBar->arrange();
    m_border->arrange();
    boundWidth();
}

// Outside the layout pass: a subclass moves items of the bar in the next one.
void WindowFrame::rearrange()
{
    arrange();
    NS::setNeedsLayout(m_window);
}

void WindowFrame::barHeightChanged()
{
    const int grown =
            m_titleBar->fullHeight() - std::exchange(m_fullBarHeight, m_titleBar->fullHeight());
    if (grown != 0 && isNormal() && m_styleMask & NS::Window::titled) {
        const bool hasSize = m_window->testAttribute(Qt::WA_Resized);
        const int height = m_window->height() + grown;
        arrange();
        if (m_window->layout() && m_window->testAttribute(Qt::WA_WState_Created))
            m_window->layout()->activate(); // whose least height is that with the former bar
        m_window->resize(m_window->width(), height);
        // Without a size of its own, the window still gets the one that its content asks for.
        m_window->setAttribute(Qt::WA_Resized, hasSize);
    }
    rearrange();
}

// The window is at least as wide as its title bar needs, and as its layout and its program say.
// Once it has a least width of its own, the layout no longer sets it.
void WindowFrame::boundWidth()
{
    const int set = m_window->minimumWidth();
    int least = m_titleBar->isHidden() ? 0 : m_titleBar->leastWidth() + 2 * m_margin;
    if (const QLayout *const layout = m_window->layout())
        least = std::max(least, layout->totalMinimumSize().width());
    if (set == m_boundedWidth ? least == set : least <= set)
        return;
    m_boundedWidth = least;
    m_window->setMinimumWidth(least);
}

// Qt would give the focus to the first widget that can have it: with full keyboard access that is
// the close button.
void WindowFrame::enterFocus()
{
    const QWidget *const current = m_window->focusWidget();
    if (!m_hasFullKeyboardAccess || (current && current->isVisible()))
        return;
    QWidget *first = m_window;
    do {
        first = first->nextInFocusChain();
    } while (first != m_window
             && (!(first->focusPolicy() & Qt::TabFocus) || !first->isVisibleTo(m_window)
                 || !first->isEnabledTo(m_window) || first->window() != m_window
                 || qobject_cast<StandardWindowButton *>(first)));
    first->setFocus(Qt::ActiveWindowFocusReason);
}

Qt::WindowFlags WindowFrame::wantedFlags() const
{
    constexpr Qt::WindowFlags decorations =
            Qt::FramelessWindowHint | Qt::CustomizeWindowHint | Qt::WindowTitleHint
            | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint;
    return (m_window->windowFlags() & ~decorations) | flagsFor(m_styleMask, m_isNative);
}

void WindowFrame::applyFlags()
{
    const Qt::WindowFlags flags = wantedFlags();
    if (flags == m_window->windowFlags() || !m_window->isWindow())
        return;
    const bool wasVisible = m_window->isVisible();
    m_window->setWindowFlags(flags);
    if (wasVisible)
        m_window->show();
}

// Others that the program sets, for a new parent too, would bring the desktop's title bar back.
void WindowFrame::keepFlags()
{
    const Qt::WindowFlags flags = wantedFlags();
    if (flags == m_window->windowFlags() || !m_window->isWindow() || !m_window->windowHandle())
        return;
    m_window->overrideWindowFlags(flags);
    m_window->windowHandle()->setFlags(flags);
}

void WindowFrame::miniaturize()
{
    if (m_styleMask & NS::Window::miniaturizable)
        m_window->setWindowState(m_window->windowState() | Qt::WindowMinimized);
}

void WindowFrame::zoom()
{
    if (canZoom() && !m_window->isFullScreen())
        m_window->setWindowState(m_window->windowState() ^ Qt::WindowMaximized);
}

void WindowFrame::toggleFullScreen()
{
    if (canZoom())
        m_window->setWindowState(m_window->windowState() ^ Qt::WindowFullScreen);
}

void WindowFrame::takeButton(NS::WindowButton kind)
{
    if (kind == NS::WindowButton::close)
        m_window->close();
    else if (kind == NS::WindowButton::miniaturize)
        miniaturize();
    else if (kind == NS::WindowButton::zoom)
        m_window->isFullScreen() ? toggleFullScreen() : zoom();
}

void WindowFrame::takeClick(TitleBarClick click, QPoint position)
{
    switch (titleBarAction(click)) {
    case TitleBarAction::zoom:
        return zoom();
    case TitleBarAction::miniaturize:
        return miniaturize();
    case TitleBarAction::lower:
        return m_window->lower();
    case TitleBarAction::windowMenu:
        return showWindowMenu(this, position);
    case TitleBarAction::none:
        return;
    }
}

void WindowFrame::updateButtonLayout()
{
    m_titleBar->items()->setButtonLayout(m_followsDesktopButtonLayout ? desktopButtonLayout()
                                                                      : ButtonLayout());
    rearrange();
}

void WindowFrame::updateBorder()
{
    const bool canBeTranslucent =
            m_window->testAttribute(Qt::WA_TranslucentBackground) && WindowManager::hasCompositor();
    updateMargin(canBeTranslucent);
    const QRect frame = seen().translated(m_window->geometry().topLeft());
    const bool isSnapped =
            WindowManager::canPlaceWindows()
                    ? WindowManager::isSnapped(frame, m_window->screen()->availableGeometry())
                    : isTiled();
    const bool hasBorder = !m_isNative && isNormal() && m_window->isWindow();
    m_border->setVisible(hasBorder && !isSnapped);
    m_border->setRound(canBeTranslucent);
    m_edges->setEnabled(hasBorder && m_styleMask & NS::Window::resizable);
    m_menuShortcut->setEnabled(m_window->isWindow());
    tellResizable();
}

// Events

bool WindowFrame::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_window) { // the native window
        if (event->type() == QEvent::Expose)
            exposureChanged(static_cast<QWindow *>(watched));
        return false;
    }
    switch (event->type()) {
    case QEvent::WinIdChange:
        keepFlags();
        watchNativeWindow();
        break;
    case QEvent::ParentChange: // which may make a window of it, or the opposite
        rearrange();
        updateBorder();
        break;
    case QEvent::Show:
        if (!event->spontaneous()) {
            prepareMargin();
            placeDialog();
        }
        windowShown();
        break;
    case QEvent::WindowActivate:
        enterFocus();
        break;
    case QEvent::Resize:
        arrange();
        updateBorder();
        break;
    case QEvent::Move:
        updateBorder();
        break;
    case QEvent::WindowStateChange:
        arrange();
        updateBorder();
        [[fallthrough]];
    case QEvent::ActivationChange:
    case QEvent::ModifiedChange:
    case QEvent::WindowTitleChange:
    case QEvent::PaletteChange:
        m_titleBar->refresh();
        m_border->update();
        [[fallthrough]];
    case QEvent::LayoutDirectionChange:
    case QEvent::FontChange:
        NS::setNeedsLayout(m_window);
        break;
    case QEvent::LayoutRequest:
        boundWidth();
        break;
    case QEvent::ChildAdded:
        raiseAbove(static_cast<QChildEvent *>(event)->child());
        break;
    case QEvent::Paint:
        painted();
        drawBackground();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

// QDialog would leave room for a frame of the window manager, which this window does not have.
void WindowFrame::placeDialog()
{
    if (!qobject_cast<QDialog *>(m_window) || m_isNative || !isNormal()
        || m_window->testAttribute(Qt::WA_Moved) || !WindowManager::canPlaceWindows())
        return;
    const QWidget *const parent = m_window->parentWidget();
    moveToCentre(m_window, parent ? parent->window() : nullptr);
    // The next time it is shown, it goes to the centre again unless the program has moved it.
    QTimer::singleShot(0, this, [this, place = m_window->pos()] {
        m_window->setAttribute(Qt::WA_Moved, m_window->pos() != place);
    });
}

void WindowFrame::windowShown()
{
    watchNativeWindow();
    rearrange();
    updateBorder();
    m_titleBar->refresh();
    enterFocus();
    // The window's first picture does not wait for the bus.
    QTimer::singleShot(0, &DesktopSettings::instance(),
                       [] { DesktopSettings::instance().start(); });
    QTimer::singleShot(0, this, &WindowFrame::warnOfCoveredWidget);
}

// Without a layout the contents margins move nothing. A program may still place its widgets within
// the contents rectangle.
void WindowFrame::warnOfCoveredWidget()
{
    if (m_window->layout() || m_hasWarned)
        return;
    for (const QWidget *const child :
         m_window->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (child == m_titleBar || child == m_border || !child->isVisible() || child->isWindow()
            || m_window->contentsRect().contains(child->pos()))
            continue;
        m_hasWarned = true;
        printWarning(
                u"Warning: the title bar of the %1 \"%2\" covers a %3: the window needs a layout"_s
                        .arg(QLatin1StringView(m_window->metaObject()->className()),
                             m_window->objectName(),
                             QLatin1StringView(child->metaObject()->className()))
                        .toStdString());
        return;
    }
}

void WindowFrame::raiseAbove(const QObject *child)
{
    if (!child->isWidgetType() || child == m_titleBar || child == m_border)
        return;
    m_titleBar->raise();
    m_border->raise();
}

// A translucent window has no background of its own.
void WindowFrame::drawBackground()
{
    QPainter painter(m_window);
    painter.fillRect(seen(), m_window->palette().color(QPalette::Window));
    QStyleOption option;
    option.initFrom(m_window);
    option.rect = seen();
    m_window->style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, m_window);
}

} // namespace Pellarvine::detail
