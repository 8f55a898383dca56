// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QObject>
#include <QRect>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Moves or resizes a window with the arrow keys, as its menu offers: eight units a press, one with
/// Ctrl. Return, a click or the loss of the focus ends it, Esc takes it back. Deletes itself.
class WindowKeyboardDrag : public QObject
{
    Q_OBJECT

public:
    enum Kind {
        move,
        resize
    };

    WindowKeyboardDrag(QWidget *window, Kind kind);
    ~WindowKeyboardDrag() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void shift(QPoint by);

    QWidget *m_window;
    Kind m_kind;
    QRect m_start;
};

} // namespace Pellarvine::detail
