// SPDX-License-Identifier: MIT
// Not API: a part of the colour panel.
#pragma once

#include "Base/Global.h"

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QWidget>

#include <functional>

namespace Pellarvine::detail {

/// A loupe over a still picture of the screens. A click, or Return, picks the pixel in its middle;
/// arrow keys move by one pixel, with Shift by ten; Escape picks nothing.
class PELLARVINE_INTERNAL_EXPORT ScreenColorPicker : public QWidget
{
    Q_OBJECT

public:
    /// Whether a program can read the screen: with an X server outside of a Wayland session.
    static bool isAvailable();

    /// Covers all screens until a pixel is picked, and then calls `picked`. Does not call it if the
    /// user picks none, or after `opener` is destroyed.
    static void pick(QWidget *opener, const std::function<void(const QColor &)> &picked);

    /// `picture` is what it shows, at any number of pixels a unit.
    ScreenColorPicker(const QImage &picture, QWidget *parent);

    QColor color() const;

Q_SIGNALS:
    void finished(const QColor &color); ///< invalid if nothing was picked

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void moveTo(const QPoint &point);
    QPoint pixel() const;

    QImage m_picture;
    QPoint m_point; // in units
    bool m_isPressed = false;
};

} // namespace Pellarvine::detail
