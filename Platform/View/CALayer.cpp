// SPDX-License-Identifier: MIT
#include "View/CALayer.h"

#include "Base/Assign.h"
#include "View/NSView.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <utility>

namespace CA {

struct Layer::Private
{
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
    if (rect.isEmpty())
        return;
    painter.save();
    if (d->cornerRadius > 0.0) {
        const double radius = std::min({ d->cornerRadius, rect.width() / 2, rect.height() / 2 });
        QPainterPath outline;
        outline.addRoundedRect(rect, radius, radius);
        painter.setRenderHint(QPainter::Antialiasing);
        if (d->backgroundColor.isValid())
            painter.fillPath(outline, d->backgroundColor);
        painter.setClipPath(outline, Qt::IntersectClip);
    } else if (d->backgroundColor.isValid()) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.fillRect(rect, d->backgroundColor);
    }
    painter.translate(rect.topLeft());
    for (const auto &layer : d->sublayers)
        layer->render(painter, rect.height());
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
