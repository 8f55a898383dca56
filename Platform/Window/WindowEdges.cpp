// SPDX-License-Identifier: MIT
#include "Window/WindowEdges.h"

#include "Window/WindowManager.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace Pellarvine::detail {

namespace {

constexpr int depth = 8;
// A button or scroll bar at the window's edge keeps most of its own.
constexpr int depthOverControls = 3;
constexpr int cornerLength = 16; // along an edge

Qt::CursorShape cursorFor(Qt::Edges edges)
{
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge))
        return Qt::SizeBDiagCursor;
    return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

// -1 at the lower end of a length, 1 at the upper end, 0 elsewhere.
int endAt(int place, int length, int reach)
{
    if (place < reach)
        return -1;
    return place >= length - reach ? 1 : 0;
}

} // namespace

QRect resizedByEdges(const QRect &geometry, Qt::Edges edges, QPoint by, QSize minimum,
                     QSize maximum)
{
    QSize size = geometry.size();
    if (edges & Qt::LeftEdge)
        size.rwidth() -= by.x();
    if (edges & Qt::RightEdge)
        size.rwidth() += by.x();
    if (edges & Qt::TopEdge)
        size.rheight() -= by.y();
    if (edges & Qt::BottomEdge)
        size.rheight() += by.y();
    size = size.boundedTo(maximum).expandedTo(minimum);
    QRect result(geometry.topLeft(), size);
    if (edges & Qt::LeftEdge)
        result.moveRight(geometry.right());
    if (edges & Qt::TopEdge)
        result.moveBottom(geometry.bottom());
    return result;
}

WindowEdges::WindowEdges(QWidget *window)
    : QObject(window)
    , m_window(window)
{ }

WindowEdges::~WindowEdges()
{
    showCursor({});
}

void WindowEdges::setEnabled(bool isEnabled)
{
    m_isEnabled = isEnabled;
    if (!isEnabled) {
        m_dragged = {};
        showCursor({});
    }
}

int WindowEdges::depthAt(QPoint position) const
{
    if (m_margin > 0)
        return 1; // the line around the window
    for (const QWidget *widget = m_window->childAt(position); widget && widget != m_window;
         widget = widget->parentWidget()) {
        if (qobject_cast<const QAbstractButton *>(widget)
            || qobject_cast<const QAbstractSlider *>(widget))
            return depthOverControls;
    }
    return depth;
}

Qt::Edges WindowEdges::edgesAt(QPoint position) const
{
    if (!m_isEnabled || QApplication::activePopupWidget() || !m_window->rect().contains(position))
        return {};
    const QSize size = m_window->size() - 2 * QSize(m_margin, m_margin);
    const int reach = depthAt(position);
    position -= QPoint(m_margin, m_margin);
    int x = endAt(position.x(), size.width(), reach);
    int y = endAt(position.y(), size.height(), reach);
    if (x == 0 && y != 0)
        x = endAt(position.x(), size.width(), cornerLength);
    else if (y == 0 && x != 0)
        y = endAt(position.y(), size.height(), cornerLength);
    if (m_window->minimumWidth() == m_window->maximumWidth())
        x = 0;
    if (m_window->minimumHeight() == m_window->maximumHeight())
        y = 0;
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, x < 0);
    edges.setFlag(Qt::RightEdge, x > 0);
    edges.setFlag(Qt::TopEdge, y < 0);
    edges.setFlag(Qt::BottomEdge, y > 0);
    return edges;
}

// Widgets below go on having the pointer, and their own cursors; this one is shown above.
void WindowEdges::showCursor(Qt::Edges edges)
{
    if (!edges) {
        if (std::exchange(m_hasCursor, false))
            QApplication::restoreOverrideCursor();
    } else if (std::exchange(m_hasCursor, true)) {
        QApplication::changeOverrideCursor(cursorFor(edges));
    } else {
        QApplication::setOverrideCursor(cursorFor(edges));
    }
}

bool WindowEdges::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto *const press = static_cast<QMouseEvent *>(event);
        m_dragged = press->button() == Qt::LeftButton ? edgesAt(press->position().toPoint())
                                                      : Qt::Edges();
        if (!m_dragged)
            return false;
        m_pressed = press->globalPosition().toPoint();
        m_geometry = m_window->geometry();
        // By hand, a Wayland compositor would not know of the size.
        m_canBeByHand = WindowManager::canPlaceWindows();
        m_isByHand = !m_window->windowHandle()->startSystemResize(m_dragged) && m_canBeByHand;
        return true;
    }
    case QEvent::MouseMove: {
        const auto *const move = static_cast<QMouseEvent *>(event);
        if (m_dragged && !(move->buttons() & Qt::LeftButton))
            m_dragged = {}; // the desktop kept the release
        if (!m_dragged) {
            if (move->buttons() == Qt::NoButton)
                showCursor(edgesAt(move->position().toPoint()));
            return false;
        }
        const QPoint by = move->globalPosition().toPoint() - m_pressed;
        m_isByHand =
                m_isByHand
                || (m_canBeByHand && by.manhattanLength() > WindowManager::unansweredDragDistance
                    && m_window->geometry() == m_geometry);
        if (m_isByHand)
            m_window->setGeometry(resizedByEdges(m_geometry, m_dragged, by, m_window->minimumSize(),
                                                 m_window->maximumSize()));
        return true;
    }
    case QEvent::MouseButtonRelease:
        if (!std::exchange(m_dragged, {}))
            return false;
        showCursor(edgesAt(static_cast<QMouseEvent *>(event)->position().toPoint()));
        return true;
    case QEvent::Leave:
    case QEvent::Hide:
        if (!m_dragged || event->type() == QEvent::Hide) {
            m_dragged = {};
            showCursor({});
        }
        return false;
    default:
        return false;
    }
}

} // namespace Pellarvine::detail
