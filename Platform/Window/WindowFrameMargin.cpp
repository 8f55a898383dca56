// SPDX-License-Identifier: MIT
// The part of WindowFrame for the native window and for the margin of the shadow.
#include "Window/TitleBarView.h"
#include "Window/WindowBorder.h"
#include "Window/WindowDrag.h"
#include "Window/WindowEdges.h"
#include "Window/WindowFrame.h"
#include "Window/WindowManager.h"
#include "Window/WindowShadow.h"

#include <QLayout>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace Pellarvine::detail {

// Between its show event and its native window's becoming visible it is not.
bool WindowFrame::isOnScreen() const
{
    return m_window->windowHandle() && m_window->windowHandle()->isVisible();
}

bool WindowFrame::isTiled() const
{
    return m_window->windowHandle() && WindowManager::isTiled(m_window->windowHandle());
}

void WindowFrame::updateMargin(bool canBeTranslucent)
{
    const bool hasShadow = m_knowsMargins && canBeTranslucent && !m_isNative && m_window->isWindow()
                           && isNormal() && !isTiled();
    const int by = (hasShadow ? WindowShadow::margin : 0) - m_margin;
    if (by == 0 || (m_window->isWindow() && !m_window->windowHandle()))
        return;
    const QRect geometry = m_window->geometry().adjusted(-by, -by, by, by);
    const bool hasPlace = m_window->testAttribute(Qt::WA_Moved);
    const bool hasSize = m_window->testAttribute(Qt::WA_Resized);
    m_margin += by;
    if (isNormal())
        m_normalMargin = m_margin;
    m_border->setMargin(m_margin);
    m_edges->setMargin(m_margin);
    // The desktop keeps to the limits when it changes the size.
    if (by < 0)
        moveLimits(2 * QSize(by, by));
    if (m_window->windowHandle())
        WindowManager::setMargin(m_window->windowHandle(), m_margin);
    if (by > 0)
        moveLimits(2 * QSize(by, by));
    if (!isOnScreen() && isNormal()) {
        if (hasPlace)
            m_window->setGeometry(geometry);
        else // a place would be one that the program has chosen
            m_window->resize(geometry.size());
        m_window->setAttribute(Qt::WA_Resized, hasSize);
    }
    rearrange();
}

// Moves what the program has set; the rest is the layout's and boundWidth()'s.
void WindowFrame::moveLimits(QSize by)
{
    if (m_window->layout())
        m_window->layout()->activate(); // for the height below
    const auto moved = [](int limit, int distance) {
        return limit >= QWIDGETSIZE_MAX ? limit : std::max(0, limit + distance);
    };
    m_window->setMaximumSize(moved(m_window->maximumWidth(), by.width()),
                             moved(m_window->maximumHeight(), by.height()));
    if (by.width() != 0 && m_window->minimumWidth() != m_boundedWidth)
        m_window->setMinimumWidth(moved(m_window->minimumWidth(), by.width()));
    const int layoutHeight =
            m_window->layout() ? m_window->layout()->totalMinimumSize().height() : 0;
    if (m_window->minimumHeight() > 0 && m_window->minimumHeight() != layoutHeight)
        m_window->setMinimumHeight(moved(m_window->minimumHeight(), by.height()));
}

// Called before the window is shown. When its native window is made, it is not known yet whether it
// will be maximised.
void WindowFrame::prepareMargin()
{
    m_knowsMargins = m_window->isWindow() && WindowManager::knowsMargins();
    updateMargin(m_window->testAttribute(Qt::WA_TranslucentBackground));
}

// After a change of the margin, the window paints its first picture. Until then Mutter cuts the
// visible window down to the old picture, and adds the rest of the old picture to the least size.
void WindowFrame::painted()
{
    if (m_margin == std::exchange(m_confirmedMargin, m_margin) || !isOnScreen()
        || WindowManager::canPlaceWindows())
        return;
    QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_window->windowHandle())
                    confirmMargin(m_window->windowHandle());
            },
            Qt::QueuedConnection);
}

// Both limits go with a picture that is on the screen, and the margin goes with the second.
void WindowFrame::confirmMargin(QWindow *window)
{
    const QSize least = window->minimumSize();
    window->setMinimumSize((least - QSize(1, 1)).expandedTo({ 0, 0 })); // Qt does not repeat one
    WindowManager::setMargin(window, m_margin);
    window->setMinimumSize(least);
}

// The native window counts as hidden while the compositor takes more than 100 ms for a picture, and
// then Qt does not tell the compositor of a new size. Setting the margin tells it.
void WindowFrame::exposureChanged(QWindow *window)
{
    const bool wasExposed = std::exchange(m_isExposed, window->isExposed());
    if (m_isExposed && !wasExposed && m_knowsMargins && !WindowManager::canPlaceWindows())
        WindowManager::setMargin(window, m_margin);
}

void WindowFrame::tellResizable()
{
    const bool isFixed = !(m_styleMask & NS::Window::resizable) && isNormal();
    if (!m_window->windowHandle() || (!isFixed && !m_wasFixed))
        return;
    WindowManager::setResizable(m_window->windowHandle(), !isFixed);
    m_wasFixed = isFixed;
}

void WindowFrame::watchNativeWindow()
{
    if (QWindow *const window = m_window->windowHandle()) {
        // The one installed last is asked first.
        window->installEventFilter(m_titleBar);
        window->installEventFilter(m_drag);
        window->installEventFilter(m_edges);
        window->installEventFilter(this);
        if (m_margin > 0 && !m_window->isVisible()) { // a new native window has no margin
            WindowManager::setMargin(window, m_margin);
            window->setGeometry(m_window->geometry());
        }
    }
}

} // namespace Pellarvine::detail
