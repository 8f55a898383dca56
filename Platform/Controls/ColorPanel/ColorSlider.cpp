// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/ColorSlider.h"

#include "Base/Assign.h"
#include "Drawing/ColorExchange.h"
#include "Drawing/PixelAlignment.h"
#include "Drawing/Shades.h"
#include "View/FocusRing.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

#include <algorithm>

namespace Pellarvine::detail {

namespace {

constexpr int trackHeight = 12;
constexpr int knobSide = 18;
constexpr int ringSpace = 2; // around the knob, for the focus ring

} // namespace

ColorSlider::ColorSlider(QWidget *parent)
    : QSlider(Qt::Horizontal, parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ColorSlider::setStops(const QGradientStops &stops)
{
    if (!assign(m_stops, stops))
        return;
    update();
}

void ColorSlider::setKnobColor(const QColor &color)
{
    if (!assign(m_knobColor, color))
        return;
    update();
}

QSize ColorSlider::sizeHint() const
{
    return { 120, knobSide + 2 * ringSpace };
}

QSize ColorSlider::minimumSizeHint() const
{
    return { 60, knobSide + 2 * ringSpace };
}

void ColorSlider::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    setSliderDown(true);
    moveTo(event->position());
}

void ColorSlider::mouseMoveEvent(QMouseEvent *event)
{
    if (isSliderDown())
        moveTo(event->position());
}

void ColorSlider::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setSliderDown(false);
}

void ColorSlider::moveTo(const QPointF &point)
{
    const int margin = knobSide / 2 + ringSpace;
    setSliderPosition(QStyle::sliderValueFromPosition(minimum(), maximum(),
                                                      qRound(point.x()) - margin,
                                                      width() - 2 * margin, isRightToLeft()));
}

double ColorSlider::knobPosition() const
{
    const double fraction =
            double(sliderPosition() - minimum()) / std::max(1, maximum() - minimum());
    const double margin = knobSide / 2.0 + ringSpace;
    return margin + (isRightToLeft() ? 1 - fraction : fraction) * (width() - 2 * margin);
}

void ColorSlider::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(0.4);
    const double margin = knobSide / 2.0 + ringSpace;
    const QRectF track((knobSide - trackHeight) / 2.0 + ringSpace, (height() - trackHeight) / 2.0,
                       width() - (knobSide - trackHeight) - 2 * ringSpace, trackHeight);
    const Outline line = outlineInside(track, 1, painter.deviceTransform());
    QPainterPath path;
    path.addRoundedRect(line.middle, trackHeight / 2.0, trackHeight / 2.0);
    // From knob to knob, so that the colour under its middle is the one that it shows.
    QLinearGradient gradient(margin, 0, width() - margin, 0);
    if (isRightToLeft()) {
        gradient.setStart(width() - margin, 0);
        gradient.setFinalStop(margin, 0);
    }
    gradient.setStops(m_stops);
    const bool isTransparent = std::ranges::any_of(
            m_stops, [](const QGradientStop &stop) { return stop.second.alpha() < 255; });
    if (isTransparent)
        fillWithCheckerboard(painter, path);
    painter.fillPath(path, gradient);
    painter.strokePath(path, QPen(edgeColor(palette()), line.thickness));

    const QPointF middle(knobPosition(), height() / 2.0);
    constexpr double radius = knobSide / 2.0;
    if (hasFocus()) {
        constexpr double ringRadius = radius + ringSpace;
        drawFocusRing(painter,
                      { middle.x() - ringRadius, middle.y() - ringRadius, 2 * ringRadius,
                        2 * ringRadius },
                      palette().color(QPalette::Highlight), { .radius = ringRadius });
    }
    painter.setPen(QPen(edgeColor(palette()), 1));
    painter.setBrush(Qt::white);
    painter.drawEllipse(middle, radius - 0.5, radius - 0.5);
    QPainterPath face;
    face.addEllipse(middle, radius - 3, radius - 3);
    fillWithColor(painter, face, m_knobColor);
    painter.strokePath(face, QPen(QColor(0, 0, 0, 60), 1));
}

} // namespace Pellarvine::detail
