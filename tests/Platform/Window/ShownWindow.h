// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSView.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QAbstractButton>

constexpr NS::Window::StyleMask whole =
        NS::Window::StyleMask(NS::Window::titled | NS::Window::closable | NS::Window::miniaturizable
                              | NS::Window::resizable);

/// A window on the test platform, which moves and resizes no windows by itself.
struct ShownWindow
{
    explicit ShownWindow(NS::Window::StyleMask style = whole)
        : window(QRectF(100, 200, 400, 300), style)
    {
        window.setWindowTitle(QStringLiteral("Letters"));
        window.show();
        NS::layoutSubtreeIfNeeded(&window);
    }

    QWidget *titleBar() const
    {
        return window.standardWindowButton(NS::WindowButton::close)->parentWidget();
    }

    NS::Window window;
};
