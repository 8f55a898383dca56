// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/WindowKeyboardDrag.h>
#include <pellarvine/Platform/WindowManager.h>
#include <pellarvine/Platform/WindowMenu.h>

#include <QMenu>

namespace NS {

QMenu *makeWindowMenu(Window *window)
{
    const Window::StyleMask mask = window->styleMask();
    const bool isNormal = !window->isMaximized() && !window->isFullScreen();
    const bool isResizable = mask & Window::resizable;

    auto *const menu = new QMenu(window);
    const auto add = [menu](const QString &text, bool isEnabled, const auto &action) {
        QAction *const entry = menu->addAction(text);
        entry->setEnabled(isEnabled);
        QObject::connect(entry, &QAction::triggered, menu, action);
        return entry;
    };
    add(Window::tr("&Restore"), !isNormal, [window] {
        window->setWindowState(window->windowState()
                               & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
    });
    add(Window::tr("&Move"), isNormal && WindowManager::canPlaceWindows(),
        [window] { new WindowKeyboardDrag(window, WindowKeyboardDrag::move); });
    add(Window::tr("&Size"), isNormal && isResizable,
        [window] { new WindowKeyboardDrag(window, WindowKeyboardDrag::resize); });
    add(Window::tr("Mi&nimise"), mask & Window::miniaturizable,
        [window] { window->miniaturize(); });
    add(Window::tr("Ma&ximise"), isNormal && isResizable, [window] { window->zoom(); });
    menu->addSeparator();
    QAction *const close = add(Window::tr("&Close"), mask & Window::closable,
                               [window] { window->performClose(); });
    close->setShortcut(QKeyCombination(Qt::ALT, Qt::Key_F4));
    return menu;
}

void showWindowMenu(Window *window, QPoint globalPosition)
{
    if (WindowManager::showWindowMenu(window->windowHandle(), globalPosition))
        return;
    QMenu *const menu = makeWindowMenu(window);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(globalPosition);
}

} // namespace NS
