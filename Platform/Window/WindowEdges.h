// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QObject>
#include <QRect>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Where the window lies if those edges are moved by that much; its sizes hold, and the edges
/// opposite stay.
PELLARVINE_INTERNAL_EXPORT QRect resizedByEdges(const QRect &geometry, Qt::Edges edges, QPoint by,
                                                QSize minimum, QSize maximum);

/// Lets the pointer resize a window by its four edges and four corners: through the desktop, or by
/// hand where the desktop does not and windows can be placed. Filters the events of the window's
/// QWindow, before any widget has them.
class WindowEdges : public QObject
{
    Q_OBJECT

public:
    explicit WindowEdges(QWidget *window);
    ~WindowEdges() override;

    void setEnabled(bool isEnabled);
    /// Around the window that is seen. The pointer takes hold of the edges there, and leaves the
    /// window's content to its widgets.
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
