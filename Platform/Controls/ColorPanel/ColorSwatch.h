// SPDX-License-Identifier: MIT
// Not API: a part of the colour panel.
#pragma once

#include <QColor>
#include <QPoint>
#include <QWidget>

namespace Pellarvine::detail {

/// Shows a colour, and gives and takes it by drag and drop.
class ColorSwatch : public QWidget
{
    Q_OBJECT

public:
    explicit ColorSwatch(QWidget *parent = nullptr);

    void setColor(const QColor &color);
    QSize sizeHint() const override { return { 40, 28 }; }

Q_SIGNALS:
    void dropped(const QColor &color);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
    QPoint m_pressed;
};

} // namespace Pellarvine::detail
