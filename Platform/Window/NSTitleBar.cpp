// SPDX-License-Identifier: MIT
#include "Window/NSTitleBar.h"

#include "Base/Failure.h"
#include "Window/AccessibleWindow.h"
#include "Window/WindowFrame.h"
#include "Window/WindowState.h"

namespace NS::TitleBar {

void install(QWidget *window)
{
    if (!window->isWindow())
        detail::fatalError("Only a window can have a title bar of its own");
    if (detail::WindowFrame::of(window))
        return;
    const Qt::WindowFlags flags = window->windowFlags();
    Window::StyleMask styleMask = Window::titled | Window::resizable;
    styleMask.setFlag(Window::closable, flags & Qt::WindowCloseButtonHint);
    styleMask.setFlag(Window::miniaturizable, flags & Qt::WindowMinimizeButtonHint);
    new detail::WindowFrame(window, styleMask, flags & Qt::WindowMaximizeButtonHint);
    detail::AccessibleWindow::replaceStandard(window);
}

QByteArray saveState(const QWidget *window)
{
    const detail::WindowFrame *const frame = detail::WindowFrame::of(window);
    return frame ? frame->saveState() : window->saveGeometry();
}

bool restoreState(QWidget *window, const QByteArray &state)
{
    detail::WindowFrame *const frame = detail::WindowFrame::of(window);
    if (frame)
        return frame->restoreState(state);
    return detail::isWholeWindowState(state) && window->restoreGeometry(state);
}

} // namespace NS::TitleBar
