// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/NSWindow.h"
#include "Window/TitleBarView.h"
#include "Window/WindowBorder.h"
#include "Window/WindowContent.h"
#include "Window/WindowDrag.h"
#include "Window/WindowEdges.h"

#include <QPointer>
#include <QVariantAnimation>

namespace NS {

/// The parts of a window, and what keeps them in step.
struct Window::Private
{
    /// Titled, closable, miniaturisable and resizable.
    static constexpr StyleMask standardStyle =
            StyleMask(titled | closable | miniaturizable | resizable);
    static Qt::WindowFlags flagsFor(StyleMask styleMask, bool isNative);

    explicit Private(Window *window)
        : q(window)
        , drag(new detail::WindowDrag(window))
        , edges(new detail::WindowEdges(window))
        , titleBar(new detail::TitleBarView(window, drag))
        , border(new detail::WindowBorder(window))
        , content(new detail::WindowContent(window))
    { }

    bool isNormal() const { return !q->isMaximized() && !q->isFullScreen(); }
    bool isTiled() const;
    int barHeight() const;
    QMarginsF margins() const { return QMarginsF(margin, margin, margin, margin); }
    QRect seen() const { return q->rect().adjusted(margin, margin, -margin, -margin); }
    void arrange();
    void rearrange();
    void barHeightChanged();
    void boundWidth();
    void enterFocus();
    void applyFlags();
    void takeButton(WindowButton kind);
    void takeClick(detail::TitleBarClick click, QPoint position);
    void updateButtonLayout();
    void updateBorder();
    void updateMargin(bool canBeTranslucent);
    void moveLimits(int by);
    void prepareMargin();
    void confirmMargin();
    void tellResizable();
    void watchNativeWindow();

    Window *q;
    detail::WindowDrag *drag;
    detail::WindowEdges *edges;
    detail::TitleBarView *titleBar;
    detail::WindowBorder *border;
    detail::WindowContent *content;
    StyleMask styleMask = standardStyle;
    TitleVisibility titleVisibility = titleVisible;
    QUrl representedURL;
    QPointer<QVariantAnimation> animation;
    int fullBarHeight =
            detail::TitleBarView::standardHeight; // that the window's height counts with
    bool isMovableByBackground = false;
    bool hasFullKeyboardAccess = false;
    bool followsDesktopButtonLayout = false;
    bool isNative = false;
    bool wasFixed = false; // as the window manager was told
    int boundedWidth = 0; // the least width that boundWidth() has set
    bool knowsMargins = false; // the desktop does
    int margin = 0; // around what is seen of the window
    int confirmedMargin = 0; // that the window has had a resize event with
    int normalMargin = 0; // of the window that is neither maximised nor full screen
};

} // namespace NS
