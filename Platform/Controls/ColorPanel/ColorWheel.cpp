// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/ColorWheel.h"

#include "Drawing/NSColor.h"
#include "Drawing/Shades.h"
#include "View/AccessibleControl.h"
#include "View/FocusRing.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Pellarvine::detail {

namespace {

constexpr double fullTurn = 2 * std::numbers::pi;
constexpr int wheelRingSpace = 4; // around the disc, for the focus ring
constexpr double knobRadius = 7;

QImage wheelImage(int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    const double radius = side / 2.0;
    for (int y = 0; y < side; ++y) {
        auto *const line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < side; ++x) {
            const double dx = x + 0.5 - radius;
            const double dy = radius - y - 0.5;
            // A turn below 0 is as good: only the fraction of a hue counts.
            const NS::Color color(Pellarvine::HSBA { std::atan2(dy, dx) / fullTurn,
                                                     std::min(1.0, std::hypot(dx, dy) / radius), 1,
                                                     1 });
            line[x] = color.toQColor().rgb();
        }
    }
    return image;
}

class AccessibleColorWheel : public AccessibleControl, public QAccessibleValueInterface
{
public:
    explicit AccessibleColorWheel(ColorWheel *wheel)
        : AccessibleControl(wheel, QAccessible::Dial, ColorWheel::tr("Hue and saturation"))
    { }

    QString text(QAccessible::Text text) const override
    {
        return text == QAccessible::Value ? wheel()->valueText() : AccessibleControl::text(text);
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return AccessibleControl::interface_cast(type);
    }
    // The value is the hue, which goes round.
    QVariant currentValue() const override { return std::round(wheel()->hue() * 360); }
    void setCurrentValue(const QVariant &value) override
    {
        const double hue = value.toDouble() / 360;
        Q_EMIT wheel()->chosen(hue - std::floor(hue), wheel()->saturation());
    }
    QVariant maximumValue() const override { return 360.0; }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return 1.0; }

private:
    ColorWheel *wheel() const { return static_cast<ColorWheel *>(widget()); }
};

} // namespace

ColorWheel::ColorWheel(QWidget *parent)
    : QWidget(parent)
{
    makeAccessible<ColorWheel, AccessibleColorWheel>();
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ColorWheel::setComponents(double hue, double saturation, double brightness)
{
    if (hue == m_hue && saturation == m_saturation && brightness == m_brightness)
        return;
    m_hue = hue;
    m_saturation = saturation;
    m_brightness = brightness;
    update();
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, valueText());
        QAccessible::updateAccessibility(&event);
    }
}

QString ColorWheel::valueText() const
{
    return tr("Hue %1°, saturation %2 %")
            .arg(std::lround(m_hue * 360))
            .arg(std::lround(m_saturation * 100));
}

QRectF ColorWheel::disc() const
{
    const int side = std::max(1, std::min(width(), height()) - 2 * wheelRingSpace);
    QRectF disc(0, 0, side, side);
    disc.moveTopLeft(QPointF(QPoint((width() - side) / 2, (height() - side) / 2)));
    return disc;
}

QPointF ColorWheel::position(double hue, double saturation) const
{
    const QRectF disc = this->disc();
    const double distance = saturation * disc.width() / 2;
    return disc.center()
           + QPointF(distance * std::cos(hue * fullTurn), -distance * std::sin(hue * fullTurn));
}

QSize ColorWheel::sizeHint() const
{
    return { 176, 176 };
}

QSize ColorWheel::minimumSizeHint() const
{
    return { 96, 96 };
}

void ColorWheel::choose(double hue, double saturation)
{
    if (hue != m_hue || saturation != m_saturation)
        Q_EMIT chosen(hue, saturation);
}

void ColorWheel::choose(const QPointF &point)
{
    const QPointF offset = point - disc().center();
    const double distance = std::hypot(offset.x(), offset.y());
    double hue = std::atan2(-offset.y(), offset.x()) / fullTurn;
    if (hue < 0)
        hue += 1;
    // In the very middle there is no angle to read.
    choose(distance < 0.5 ? m_hue : hue, std::min(1.0, distance / (disc().width() / 2)));
}

void ColorWheel::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    choose(event->position());
}

void ColorWheel::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        choose(event->position());
}

void ColorWheel::keyPressEvent(QKeyEvent *event)
{
    const double step = event->modifiers() & Qt::ShiftModifier ? 10 : 1;
    const auto turn = [&](double degrees) {
        const double hue = m_hue + degrees / 360;
        choose(hue - std::floor(hue), m_saturation);
    };
    const auto go = [&](double percent) {
        choose(m_hue, std::clamp(m_saturation + percent / 100, 0.0, 1.0));
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return turn(-step);
    case Qt::Key_Right:
        return turn(step);
    case Qt::Key_Up:
        return go(step);
    case Qt::Key_Down:
        return go(-step);
    default:
        return QWidget::keyPressEvent(event);
    }
}

void ColorWheel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF disc = this->disc();
    const double ratio = painter.deviceTransform().m11();
    const int side = int(std::lround(disc.width() * ratio));
    if (m_image.width() != side)
        m_image = wheelImage(side);
    // A disc with a brush has a smooth edge. Translucent black above it reduces the brightness.
    QBrush brush(m_image);
    brush.setTransform(QTransform::fromTranslate(disc.x(), disc.y()).scale(1 / ratio, 1 / ratio));
    QPainterPath path;
    path.addEllipse(disc);
    painter.fillPath(path, brush);
    painter.fillPath(path, QColor::fromRgbF(0, 0, 0, float(1 - m_brightness)));
    painter.strokePath(path, edgeColor(palette()));
    if (hasFocus()) {
        drawFocusRing(painter, disc.adjusted(-3.5, -3.5, 3.5, 3.5),
                      palette().color(QPalette::Highlight), { .radius = disc.width() });
    }
    const QPointF knob = position(m_hue, m_saturation);
    painter.setPen(QPen(QColor(0, 0, 0, 110), 1));
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob, knobRadius, knobRadius);
    painter.setPen(QPen(QColor(0, 0, 0, 60), 1));
    painter.setBrush(
            NS::Color(Pellarvine::HSBA { m_hue, m_saturation, m_brightness, 1 }).toQColor());
    painter.drawEllipse(knob, knobRadius - 2.5, knobRadius - 2.5);
}

} // namespace Pellarvine::detail
