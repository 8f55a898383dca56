// SPDX-License-Identifier: MIT
#include "View/Spinner.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>

namespace Pellarvine::detail {

namespace {

constexpr int interval = 40; // milliseconds
constexpr int steps = 25; // per turn
constexpr double side = 32; // device-independent pixels
constexpr double lineWidth = 3;
constexpr float veilOpacity = 0.75F;
constexpr int sixteenths = 16; // QPainter's angles are in sixteenths of a degree
constexpr int arc = 100 * sixteenths;

} // namespace

Spinner::Spinner(QWidget *view)
    : QWidget(view)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(view->rect());
    m_timer.start(interval, this);
    show();
}

void Spinner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor veil = palette().color(QPalette::Base);
    veil.setAlphaF(veilOpacity);
    painter.fillRect(rect(), veil);
    const double room = std::min(width(), height()) - lineWidth;
    const double diameter = std::min(side, room);
    QRectF circle(0, 0, diameter, diameter);
    circle.moveCenter(QRectF(rect()).center());
    QColor track = palette().color(QPalette::Text);
    track.setAlphaF(0.15F);
    painter.setPen(QPen(track, lineWidth));
    painter.drawEllipse(circle);
    painter.setPen(
            QPen(palette().color(QPalette::Highlight), lineWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, -m_step * 360 * sixteenths / steps, arc);
}

void Spinner::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return QWidget::timerEvent(event);
    m_step = (m_step + 1) % steps;
    update();
}

} // namespace Pellarvine::detail
