// SPDX-License-Identifier: MIT
#include "Window/WindowDrag.h"

#include "Window/WindowManager.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QWidget>
#include <QWindow>

namespace Pellarvine::detail {

WindowDrag::WindowDrag(QWidget *window)
    : QObject(window)
    , m_window(window)
{ }

void WindowDrag::prepare(QPoint globalPosition)
{
    m_state = pressed;
    m_pressed = globalPosition;
    m_origin = m_window->pos();
}

bool WindowDrag::eventFilter(QObject *, QEvent *event)
{
    if (m_state == idle || m_isReleasing)
        return false;
    switch (event->type()) {
    case QEvent::MouseMove: {
        const auto *const move = static_cast<QMouseEvent *>(event);
        const QPoint position = move->globalPosition().toPoint();
        const int distance = (position - m_pressed).manhattanLength();
        if (!(move->buttons() & Qt::LeftButton)) {
            m_state = idle;
            return false;
        }
        if (m_state == pressed && distance >= QApplication::startDragDistance())
            begin();
        else if (m_state == movedByDesktop && distance > WindowManager::unansweredDragDistance
                 && m_window->pos() == m_origin)
            takeOver();
        if (m_state == movedByHand)
            moveByHand(position);
        return true;
    }
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Hide:
        m_state = idle;
        return false;
    default:
        return false;
    }
}

void WindowDrag::begin()
{
    if (m_window->isFullScreen()) {
        m_state = idle;
    } else if (m_window->windowHandle()->startSystemMove()) {
        m_state = movedByDesktop;
        releaseButton();
    } else {
        takeOver();
    }
}

void WindowDrag::takeOver()
{
    if (!WindowManager::canPlaceWindows()) {
        m_state = idle;
        return;
    }
    m_state = movedByHand;
    m_size = m_window->size();
    if (!m_window->isMaximized())
        return;
    // It comes back under the pointer, which keeps its share of the width. The desktop may answer
    // later, so that the normal size is set with each step.
    m_size = m_window->normalGeometry().size();
    const double share = double(m_pressed.x() - m_origin.x()) / m_window->width();
    m_origin.setX(m_pressed.x() - int(share * m_size.width()));
    m_window->showNormal();
}

void WindowDrag::moveByHand(QPoint globalPosition)
{
    m_window->setGeometry(QRect(m_origin + globalPosition - m_pressed, m_size));
}

// The desktop keeps the release for itself, without which Qt would take what is pressed for
// pressed.
void WindowDrag::releaseButton()
{
    const QScopedValueRollback<bool> guard(m_isReleasing, true);
    QMouseEvent release(QEvent::MouseButtonRelease, m_window->mapFromGlobal(m_pressed), m_pressed,
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window->windowHandle(), &release);
}

} // namespace Pellarvine::detail
