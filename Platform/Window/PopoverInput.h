// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/PopoverBubble.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>

QT_FORWARD_DECLARE_CLASS(QKeyEvent)
QT_FORWARD_DECLARE_CLASS(QPointerEvent)

namespace Pellarvine::detail {

/// Closes a popover when the user does something elsewhere, as its behavior says. It sees the
/// events of the whole program between start() and stop().
class PopoverInput : public QObject
{
    Q_OBJECT

public:
    explicit PopoverInput(NS::Popover *popover);

    /// Input that is under way now, such as the click that opens the popover, does not count.
    void start();
    void stop();
    void setBubble(PopoverBubble *bubble) { m_bubble = bubble; }

    /// Whether a dialog that belongs to something in the popover is on the screen.
    bool hasDialog() const;

    /// Whether a key has just closed a list or a menu, for which the program may lose the keyboard.
    bool hasKeyJustClosedPopup() const { return !m_keyboardMayGo.hasExpired(); }

    /// Whether the widget is in the popover, or belongs to something in it.
    bool contains(const QWidget *widget) const;

    /// Whether the click or the key is still under way that has closed the popover of `opener`.
    static bool hasJustClosed(const QWidget *opener);

    /// Passes a click on the bubble's shadow, or beside its arrow, to the widget that shows
    /// through.
    void clickBehind(QPoint globalPosition);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isOutsideOfPopup(const QObject *watched, QPointerEvent *event) const;
    bool isBesidePopup(const QObject *watched) const;
    bool isElsewhere(const QWidget *widget) const;
    bool closesFor(const QWidget *widget) const;
    bool watchPopups(QObject *watched, const QEvent *event);
    void press(QObject *watched, QPointerEvent *event);
    bool key(QObject *watched, QKeyEvent *event);

    NS::Popover *m_popover;
    QPointer<PopoverBubble> m_bubble;
    bool m_seesInput = false;
    bool m_isInKey = false; // a key is being delivered
    bool m_isPressed = false; // as the key press, which follows the override of shortcuts
    int m_key = 0; // the last one
    QDeadlineTimer m_keyboardMayGo; // without meaning that the user has left
    bool m_hasKeyClosedPopup = false; // a menu or a list, with the last input that there was
};

} // namespace Pellarvine::detail
