// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/ColorSwatch.h"

#include "Base/Assign.h"
#include "Drawing/ColorExchange.h"
#include "Drawing/PixelAlignment.h"
#include "Drawing/Shades.h"
#include "View/AccessibleControl.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace Pellarvine::detail {

namespace {

constexpr double radius = 5;

class AccessibleColorSwatch : public AccessibleControl
{
public:
    explicit AccessibleColorSwatch(ColorSwatch *swatch)
        : AccessibleControl(swatch, QAccessible::Graphic, ColorSwatch::tr("Chosen colour"))
    { }
};

} // namespace

ColorSwatch::ColorSwatch(QWidget *parent)
    : QWidget(parent)
{
    makeAccessible<ColorSwatch, AccessibleColorSwatch>();
    setAcceptDrops(true);
    setToolTip(tr("Drag this colour to another place, or drop a colour here"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ColorSwatch::setColor(const QColor &color)
{
    if (!assign(m_color, color))
        return;
    setAccessibleDescription(hexText(color, color.alpha() < 255));
    update();
}

void ColorSwatch::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->source() == this || !colorInMimeData(event->mimeData()))
        return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void ColorSwatch::dropEvent(QDropEvent *event)
{
    const auto color = colorInMimeData(event->mimeData());
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(color.has_value());
    if (color)
        Q_EMIT dropped(*color);
}

void ColorSwatch::mousePressEvent(QMouseEvent *event)
{
    m_pressed = event->position().toPoint();
}

void ColorSwatch::mouseMoveEvent(QMouseEvent *event)
{
    const int distance = (event->position().toPoint() - m_pressed).manhattanLength();
    if (!(event->buttons() & Qt::LeftButton) || distance < QApplication::startDragDistance())
        return;
    auto *const drag = new QDrag(this);
    drag->setMimeData(mimeDataForColor(m_color));
    drag->setPixmap(dragPixmap(m_color, devicePixelRatio()));
    drag->exec(Qt::CopyAction);
}

void ColorSwatch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    const Outline line = outlineInside(rect(), 1, painter.deviceTransform());
    path.addRoundedRect(line.middle, radius, radius);
    fillWithColor(painter, path, m_color);
    painter.strokePath(path, QPen(edgeColor(palette()), line.thickness));
}

} // namespace Pellarvine::detail
