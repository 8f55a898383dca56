// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QObject>
#include <QPoint>
#include <QSize>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Moves a window with the pointer, once the pointer has moved the drag distance. The desktop moves
/// it, and so also snaps it; where it does not and programs can place windows, this class does.
/// Filters the events of the window's QWindow.
class WindowDrag : public QObject
{
    Q_OBJECT

public:
    explicit WindowDrag(QWidget *window);

    /// The left button was pressed where a drag moves the window.
    void prepare(QPoint globalPosition);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum State {
        idle,
        pressed,
        movedByDesktop,
        movedByHand
    };

    void begin();
    void takeOver();
    void moveByHand(QPoint globalPosition);
    void releaseButton();

    QWidget *m_window;
    State m_state = idle;
    QPoint m_pressed; // of the pointer, global
    QPoint m_origin; // of the window at that time
    QSize m_size; // that the window has while it is moved by hand
    bool m_isReleasing = false;
};

} // namespace Pellarvine::detail
