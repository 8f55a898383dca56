// SPDX-License-Identifier: MIT
// Not API: a part of the colour panel.
#pragma once

#include <QBrush>
#include <QSlider>

namespace Pellarvine::detail {

/// A slider over the colours that it leads to, with a knob that shows the one it is at. It goes
/// where it is pressed and follows the pointer; keys and screen readers find a slider.
class ColorSlider : public QSlider
{
public:
    explicit ColorSlider(QWidget *parent = nullptr);

    /// The colours along the track, from the least value at 0 to the greatest at 1.
    void setStops(const QGradientStops &stops);
    /// The colour that the knob shows.
    void setKnobColor(const QColor &color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void moveTo(const QPointF &point);
    double knobPosition() const;

    QGradientStops m_stops;
    QColor m_knobColor;
};

} // namespace Pellarvine::detail
