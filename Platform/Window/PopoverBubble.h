// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/PopoverPlacement.h"

#include <QPointer>
#include <QWidget>

#include <optional>

namespace Pellarvine::detail {

/// The widget of a popover: the outline with its shadow, and the content in it. Each time that the
/// popover is shown, it makes a new one.
class PopoverBubble : public QWidget
{
    Q_OBJECT

public:
    enum class Surface {
        translucentWindow,
        maskedWindow, ///< where nothing mixes windows: without shadow and smooth edges
        child, ///< in the window of the view
        popup, ///< a window that a Wayland compositor places, with the keyboard, like a menu
        hint, ///< a window that a Wayland compositor places, without the keyboard
    };

    /// The surface for a popover of that view. Only one that a click elsewhere closes is a popup.
    static Surface surfaceFor(const QWidget *view, QWidget *content, bool fitsInWindow,
                              bool clicksClose);
    /// The first that can have the focus; null if nothing can.
    static QWidget *firstFocusable(QWidget *content);

    /// Takes the content, until it ends. Neither may be null.
    PopoverBubble(QWidget *view, QWidget *content, Surface surface);
    ~PopoverBubble() override;

    Surface surface() const { return m_surface; }
    /// Whether the window system decides where it is.
    bool isPlacedForUs() const { return m_surface == Surface::popup || m_surface == Surface::hint; }
    bool takesFocus() const { return m_takesFocus; }
    QWidget *view() const { return m_view; }

    /// Leaves the content without a parent, as it was before.
    void releaseContent();

    /// Without the margin around, in the coordinates of the screen or, of a child, of the window.
    QRectF body() const;
    void setBody(const QRectF &body);
    void setArrow(NS::RectEdge edge, std::optional<double> arrow);
    /// Asks the window system to place the window at that edge of `anchor`, in the coordinates of
    /// the parent.
    void setAnchor(const QRectF &anchor, NS::RectEdge edge);
    /// In its own coordinates.
    QPainterPath outline() const;

Q_SIGNALS:
    void escaped();
    void dismissed(); ///< by the window system, or by Qt for another window
    void moved();
    void contentChanged(); ///< and may want another size
    void pressedBeside(QPoint globalPosition); ///< on what seems to lie behind it

protected:
    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QRectF innerBody() const;
    void updateShape();
    void updatePalette();

    QPointer<QWidget> m_view;
    QPointer<QWidget> m_content;
    Surface m_surface;
    bool m_takesFocus;
    NS::RectEdge m_edge = NS::RectEdge::maxY;
    std::optional<double> m_arrow;
};

} // namespace Pellarvine::detail
