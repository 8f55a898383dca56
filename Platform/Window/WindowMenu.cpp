// SPDX-License-Identifier: MIT
#include "Window/WindowMenu.h"

#include "Window/WindowFrame.h"
#include "Window/WindowKeyboardDrag.h"
#include "Window/WindowManager.h"

#include <QMenu>

namespace Pellarvine::detail {

QMenu *makeWindowMenu(WindowFrame *frame)
{
    QWidget *const window = frame->window();
    const NS::Window::StyleMask mask = frame->styleMask();
    const bool isNormal = frame->isNormal();
    const bool isResizable = mask & NS::Window::resizable;

    auto *const menu = new QMenu(window);
    const auto add = [menu](const QString &text, bool isEnabled, const auto &action) {
        QAction *const entry = menu->addAction(text);
        entry->setEnabled(isEnabled);
        QObject::connect(entry, &QAction::triggered, menu, action);
        return entry;
    };
    add(NS::Window::tr("&Restore"), !isNormal, [window] {
        window->setWindowState(window->windowState()
                               & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
    });
    add(NS::Window::tr("&Move"), isNormal && WindowManager::canPlaceWindows(),
        [window] { new WindowKeyboardDrag(window, WindowKeyboardDrag::move); });
    add(NS::Window::tr("&Size"), isNormal && isResizable && WindowManager::canPlaceWindows(),
        [window] { new WindowKeyboardDrag(window, WindowKeyboardDrag::resize); });
    add(NS::Window::tr("Mi&nimise"), mask & NS::Window::miniaturizable,
        [frame] { frame->miniaturize(); });
    add(NS::Window::tr("Ma&ximise"), isNormal && frame->canZoom(), [frame] { frame->zoom(); });
    menu->addSeparator();
    // Closing may delete the window, and the menu with it, which Qt still uses.
    QAction *const close = add(NS::Window::tr("&Close"), mask & NS::Window::closable, [window] {
        QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
    });
    close->setShortcut(QKeyCombination(Qt::ALT, Qt::Key_F4));
    return menu;
}

void showWindowMenu(WindowFrame *frame, QPoint globalPosition)
{
    if (WindowManager::showWindowMenu(frame->window()->windowHandle(), globalPosition))
        return;
    QMenu *const menu = makeWindowMenu(frame);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(globalPosition);
}

} // namespace Pellarvine::detail
