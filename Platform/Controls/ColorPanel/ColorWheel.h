// SPDX-License-Identifier: MIT
// Not API: a part of the colour panel.
#pragma once

#include <QImage>
#include <QWidget>

namespace Pellarvine::detail {

/// A disc of all hues, once round from red at three o'clock, anticlockwise, with the saturation
/// growing outwards. Press and drag, or the arrow keys: left and right turn, up and down go
/// outwards and inwards, with Shift in larger steps.
class ColorWheel : public QWidget
{
    Q_OBJECT

public:
    explicit ColorWheel(QWidget *parent = nullptr);

    /// Each 0…1. Values that the program sets are not reported.
    void setComponents(double hue, double saturation, double brightness);
    double hue() const { return m_hue; }
    double saturation() const { return m_saturation; }

    /// The text for screen readers: "Hue 210°, saturation 80 %".
    QString valueText() const;

    /// The place of a colour in the widget, and of the disc.
    QPointF position(double hue, double saturation) const;
    QRectF disc() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user has chosen another hue or saturation.
    void chosen(double hue, double saturation);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void choose(double hue, double saturation);
    void choose(const QPointF &point);

    double m_hue = 0;
    double m_saturation = 0;
    double m_brightness = 1;
    QImage m_image; // at full brightness, in pixels
};

} // namespace Pellarvine::detail
