// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/NSWindow.h"
#include "Window/WindowContent.h"
#include "Window/WindowFrame.h"

#include <QPointer>
#include <QVariantAnimation>

namespace NS {

struct Window::Private
{
    explicit Private(Window *window)
        : frame(new detail::WindowFrame(window, titled | closable | miniaturizable | resizable))
        , content(new detail::WindowContent(window))
    { }

    QMarginsF margins() const
    {
        const int margin = frame->margin();
        return QMarginsF(margin, margin, margin, margin);
    }

    detail::WindowFrame *frame;
    detail::WindowContent *content;
    TitleVisibility titleVisibility = titleVisible;
    QUrl representedURL;
    QPointer<QVariantAnimation> animation;
    bool isMovableByBackground = false;
};

} // namespace NS
