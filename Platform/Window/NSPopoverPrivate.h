// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/NSPopover.h"
#include "Window/PopoverBubble.h"
#include "Window/PopoverInput.h"

#include <QPointer>

#include <optional>

namespace NS {

/// The state of a popover, and the functions that show and hide it.
struct Popover::Private
{
    using Bubble = detail::PopoverBubble;

    explicit Private(Popover *popover)
        : q(popover)
        , input(popover)
    { }

    QSizeF fittingSize() const;
    std::optional<QRectF> visibleArea() const;
    QRectF anchorFor(const QRectF &areaInWindow) const;
    QRectF roomInWindow() const;
    QRectF roomOnScreen(const QRectF &anchor) const;
    bool fitsInWindow() const;
    Bubble::Surface neededSurface() const;

    void startWatching();
    void stopWatching();
    void takeView(QWidget *content);
    void createBubble();
    void removeBubble();
    void place();
    void updateArrow();
    void dismiss();
    void keepInWindow();
    void enterFocus();
    void announce();
    void follow(QObject *watched, QEvent *event);

    Popover *q;
    detail::PopoverInput input;
    QPointer<ViewController> controller;
    Behavior behavior = Behavior::applicationDefined;
    QSizeF contentSize;
    QSizeF lastSize; // on the screen
    QRectF rect;
    QPointer<QWidget> opener;
    bool deletesOnClose = false;
    bool staysInWindow = false;

    bool isShown = false;
    bool isClosing = false;
    bool isAsking = false; // whether it should close
    bool isKeptInWindow = false; // until it closes
    QPointer<QWidget> view;
    RectEdge preferredEdge = RectEdge::maxY;
    RectEdge edge = RectEdge::maxY;
    QPointer<Bubble> bubble;
    QPointer<QWidget> focusBefore;
    QMetaObject::Connection viewEnding;
};

} // namespace NS
