// SPDX-License-Identifier: MIT
#include "Window/WindowKeyboardDrag.h"

#include "Window/WindowEdges.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace Pellarvine::detail {

WindowKeyboardDrag::WindowKeyboardDrag(QWidget *window, Kind kind)
    : QObject(window)
    , m_window(window)
    , m_kind(kind)
    , m_start(window->geometry())
{
    window->grabKeyboard();
    window->installEventFilter(this);
    QApplication::setOverrideCursor(kind == move ? Qt::SizeAllCursor : Qt::SizeFDiagCursor);
}

WindowKeyboardDrag::~WindowKeyboardDrag()
{
    m_window->releaseKeyboard();
    QApplication::restoreOverrideCursor();
}

bool WindowKeyboardDrag::eventFilter(QObject *, QEvent *event)
{
    constexpr int largeStep = 8;
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto *const press = static_cast<QKeyEvent *>(event);
        const int step = press->modifiers() & Qt::ControlModifier ? 1 : largeStep;
        switch (press->key()) {
        case Qt::Key_Left:
            shift({ -step, 0 });
            break;
        case Qt::Key_Right:
            shift({ step, 0 });
            break;
        case Qt::Key_Up:
            shift({ 0, -step });
            break;
        case Qt::Key_Down:
            shift({ 0, step });
            break;
        case Qt::Key_Escape:
            m_window->setGeometry(m_start);
            [[fallthrough]];
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            delete this;
            break;
        default:
            break;
        }
        return true;
    }
    case QEvent::ShortcutOverride: // arrows and Esc are for here
        event->accept();
        return true;
    case QEvent::KeyRelease:
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::WindowDeactivate:
    case QEvent::Hide:
    case QEvent::WindowStateChange:
        delete this;
        return false;
    default:
        return false;
    }
}

void WindowKeyboardDrag::shift(QPoint by)
{
    if (m_kind == move) {
        m_window->move(m_window->pos() + by);
        return;
    }
    m_window->setGeometry(resizedByEdges(m_window->geometry(), Qt::RightEdge | Qt::BottomEdge, by,
                                         m_window->minimumSize(), m_window->maximumSize()));
}

} // namespace Pellarvine::detail
