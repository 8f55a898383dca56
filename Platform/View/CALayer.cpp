// SPDX-License-Identifier: MIT
#include "View/CALayer.h"

#include "Base/Assign.h"
#include "Drawing/PixelAlignment.h"
#include "View/NSView.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <utility>

namespace CA {

struct Layer::Private
{
    void render(QPainter &painter, const QRectF &rect, const QRectF &space) const;

    QRectF frame;
    QColor backgroundColor;
    double cornerRadius = 0.0;
    QList<std::shared_ptr<Layer>> sublayers;
    Layer *superlayer = nullptr;
};

Layer::Layer()
    : d(std::make_unique<Private>())
{ }

Layer::~Layer()
{
    for (const auto &layer : std::as_const(d->sublayers))
        layer->d->superlayer = nullptr;
}

QRectF Layer::frame() const
{
    return d->frame;
}

void Layer::setFrame(const QRectF &frame)
{
    if (!detail::assign(d->frame, frame))
        return;
    noteChange();
    Q_EMIT frameChanged(frame);
}

QColor Layer::backgroundColor() const
{
    return d->backgroundColor;
}

void Layer::setBackgroundColor(const QColor &color)
{
    if (!detail::assign(d->backgroundColor, color))
        return;
    noteChange();
    Q_EMIT backgroundColorChanged(color);
}

double Layer::cornerRadius() const
{
    return d->cornerRadius;
}

void Layer::setCornerRadius(double radius)
{
    radius = std::max(0.0, radius);
    if (!detail::assign(d->cornerRadius, radius))
        return;
    noteChange();
    Q_EMIT cornerRadiusChanged(radius);
}

const QList<std::shared_ptr<Layer>> &Layer::sublayers() const
{
    return d->sublayers;
}

Layer *Layer::superlayer() const
{
    return d->superlayer;
}

void Layer::addSublayer(const std::shared_ptr<Layer> &layer)
{
    layer->removeFromSuperlayer();
    layer->d->superlayer = this;
    d->sublayers.append(layer);
    noteChange();
}

void Layer::removeFromSuperlayer()
{
    Layer *const superlayer = std::exchange(d->superlayer, nullptr);
    if (!superlayer)
        return;
    const std::shared_ptr<Layer> self = shared_from_this(); // the list may hold the last reference
    superlayer->d->sublayers.removeOne(self);
    superlayer->noteChange();
}

void Layer::render(QPainter &painter, double spaceHeight) const
{
    const QRectF rect = NS::flipped(d->frame, spaceHeight);
    d->render(painter, rect, rect);
}

// `rect` and `space` have y downwards and are in the superlayer's coordinates.
void Layer::Private::render(QPainter &painter, const QRectF &rect, const QRectF &space) const
{
    if (rect.isEmpty())
        return;
    const QRectF drawn = detail::alignedToPixels(rect, space, painter.deviceTransform());
    painter.save();
    if (cornerRadius > 0.0) {
        const double radius = std::min({ cornerRadius, drawn.width() / 2, drawn.height() / 2 });
        QPainterPath outline;
        outline.addRoundedRect(drawn, radius, radius);
        painter.setRenderHint(QPainter::Antialiasing);
        if (backgroundColor.isValid())
            painter.fillPath(outline, backgroundColor);
        painter.setClipPath(outline, Qt::IntersectClip);
    } else if (backgroundColor.isValid()) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.fillRect(drawn, backgroundColor);
    }
    painter.translate(rect.topLeft());
    const QRectF inside(QPointF(), rect.size());
    for (const auto &layer : sublayers)
        layer->d->render(painter, NS::flipped(layer->d->frame, rect.height()), inside);
    painter.restore();
}

void Layer::noteChange()
{
    Layer *top = this;
    while (top->d->superlayer)
        top = top->d->superlayer;
    Q_EMIT top->needsDisplay();
}

} // namespace CA
