// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QObject>
#include <QRect>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// The geometry with those edges moved by that distance, within the minimum and maximum size. The
/// opposite edges stay.
PELLARVINE_INTERNAL_EXPORT QRect resizedByEdges(const QRect &geometry, Qt::Edges edges, QPoint by,
                                                QSize minimum, QSize maximum);

/// Resizes a window with the pointer at its four edges and four corners. The desktop resizes it;
/// where it does not and programs can place windows, this class does. Filters the events of the
/// window's QWindow, before any widget receives them.
class WindowEdges : public QObject
{
    Q_OBJECT

public:
    explicit WindowEdges(QWidget *window);
    ~WindowEdges() override;

    void setEnabled(bool isEnabled);
    /// The margin around the visible window. With one, the edges are dragged there, and the widgets
    /// in the window have all of its content for themselves.
    void setMargin(int margin) { m_margin = margin; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Qt::Edges edgesAt(QPoint position) const;
    int depthAt(QPoint position) const;
    void showCursor(Qt::Edges edges);

    QWidget *m_window;
    bool m_isEnabled = true;
    int m_margin = 0;
    bool m_hasCursor = false;
    Qt::Edges m_dragged; // since the button was pressed
    bool m_canBeByHand = false;
    bool m_isByHand = false;
    QPoint m_pressed; // of the pointer, global
    QRect m_geometry; // of the window at that time
};

} // namespace Pellarvine::detail
