// SPDX-License-Identifier: MIT
#include "Pellarvine/BorderView.h"

#include "Base/Assign.h"
#include "Pellarvine/PaletteColors.h"
#include "View/LayerBacking.h"
#include "View/NSView+Layer.h"
#include "View/NSView.h"

#include <QEvent>

#include <array>

namespace Pellarvine {

namespace {

constexpr double thickness = 1.0;
constexpr double inkOpacity = 0.25;

struct Edge
{
    std::shared_ptr<CA::Layer> layer; // null until it is first used: most views show one line
    bool isWanted = false;
};

} // namespace

struct BorderView::Private
{
    Edge left;
    Edge right;
    Edge top;
    Edge bottom;
    QColor backgroundColor = Qt::white;
    QColor borderColor = QColor::fromRgbF(0.0F, 0.0F, 0.0F, float(inkOpacity));
    QColor lineColor = borderColor; // or the palette's
    bool usesPaletteColors = false;

    CA::Layer *layerOf(Edge &edge) const
    {
        if (!edge.layer) {
            edge.layer = std::make_shared<CA::Layer>();
            edge.layer->setBackgroundColor(lineColor);
        }
        return edge.layer.get();
    }

    // The view's layers are made when they are first drawn or asked for.
    CA::Layer *attachedLayer(const BorderView &view, Edge &edge) const
    {
        static_cast<void>(NS::layer(&view));
        return layerOf(edge);
    }

    void attach(CA::Layer &layer)
    {
        for (Edge *const edge : edges()) {
            if (edge->isWanted && !layerOf(*edge)->superlayer())
                layer.addSublayer(edge->layer);
        }
    }

    std::array<Edge *, 4> edges() { return { &left, &right, &top, &bottom }; }

    // Whether the flag had another value.
    bool setWanted(BorderView &view, Edge &edge, bool isWanted)
    {
        const bool isChange = detail::assign(edge.isWanted, isWanted);
        view.updateLayerVisibility();
        NS::setNeedsLayout(&view);
        return isChange;
    }
};

BorderView::BorderView(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>())
{
    setup();
}

BorderView::~BorderView() = default;

CA::Layer *BorderView::leftLayer() const
{
    return d->attachedLayer(*this, d->left);
}

CA::Layer *BorderView::rightLayer() const
{
    return d->attachedLayer(*this, d->right);
}

CA::Layer *BorderView::topLayer() const
{
    return d->attachedLayer(*this, d->top);
}

CA::Layer *BorderView::bottomLayer() const
{
    return d->attachedLayer(*this, d->bottom);
}

QColor BorderView::backgroundColor() const
{
    return d->backgroundColor;
}

void BorderView::setBackgroundColor(const QColor &color)
{
    const bool isOther = color != d->backgroundColor;
    d->backgroundColor = color;
    applyBackgroundColor();
    if (isOther)
        Q_EMIT backgroundColorChanged(color);
}

QColor BorderView::borderColor() const
{
    return d->borderColor;
}

void BorderView::setBorderColor(const QColor &color)
{
    const bool isOther = color != d->borderColor;
    d->borderColor = color;
    applyBorderColor();
    if (isOther)
        Q_EMIT borderColorChanged(color);
}

bool BorderView::hasLeftBorder() const
{
    return d->left.isWanted;
}

void BorderView::setHasLeftBorder(bool hasBorder)
{
    if (d->setWanted(*this, d->left, hasBorder))
        Q_EMIT hasLeftBorderChanged(hasBorder);
}

bool BorderView::hasRightBorder() const
{
    return d->right.isWanted;
}

void BorderView::setHasRightBorder(bool hasBorder)
{
    if (d->setWanted(*this, d->right, hasBorder))
        Q_EMIT hasRightBorderChanged(hasBorder);
}

bool BorderView::hasTopBorder() const
{
    return d->top.isWanted;
}

void BorderView::setHasTopBorder(bool hasBorder)
{
    if (d->setWanted(*this, d->top, hasBorder))
        Q_EMIT hasTopBorderChanged(hasBorder);
}

bool BorderView::hasBottomBorder() const
{
    return d->bottom.isWanted;
}

void BorderView::setHasBottomBorder(bool hasBorder)
{
    if (d->setWanted(*this, d->bottom, hasBorder))
        Q_EMIT hasBottomBorderChanged(hasBorder);
}

bool BorderView::usesPaletteColors() const
{
    return d->usesPaletteColors;
}

void BorderView::setUsesPaletteColors(bool usesPaletteColors)
{
    if (!detail::assign(d->usesPaletteColors, usesPaletteColors))
        return;
    applyBackgroundColor();
    applyBorderColor();
    Q_EMIT usesPaletteColorsChanged(usesPaletteColors);
}

void BorderView::updateLayerVisibility()
{
    if (CA::Layer *const layer = detail::layerInUse(this))
        d->attach(*layer);
    for (const Edge *const edge : d->edges()) {
        if (!edge->isWanted && edge->layer)
            edge->layer->removeFromSuperlayer();
    }
}

void BorderView::performLayout()
{
    const QRectF bounds = NS::bounds(this);
    const double width = bounds.width();
    const double height = bounds.height();
    if (d->left.isWanted)
        d->layerOf(d->left)->setFrame({ 0.0, 0.0, thickness, height });
    if (d->right.isWanted)
        d->layerOf(d->right)->setFrame({ width - thickness, 0.0, thickness, height });
    const double left = d->left.isWanted ? thickness : 0.0;
    const double right = d->right.isWanted ? thickness : 0.0;
    if (d->top.isWanted)
        d->layerOf(d->top)->setFrame({ left, height - thickness, width - left - right, thickness });
    if (d->bottom.isWanted)
        d->layerOf(d->bottom)->setFrame({ left, 0.0, width - left - right, thickness });
}

void BorderView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && d->usesPaletteColors) {
        applyBackgroundColor();
        applyBorderColor();
    }
}

void BorderView::setup()
{
    detail::setWantsLayer(this, [](QWidget *widget, CA::Layer &layer) {
        if (const auto *const view = qobject_cast<BorderView *>(widget)) {
            layer.setBackgroundColor(view->shownBackgroundColor());
            view->d->attach(layer);
        }
    });
    NS::setNeedsLayout(this);
}

QColor BorderView::shownBackgroundColor() const
{
    return d->usesPaletteColors ? detail::paper(palette()) : d->backgroundColor;
}

void BorderView::applyBackgroundColor()
{
    if (CA::Layer *const layer = detail::layerInUse(this))
        layer->setBackgroundColor(shownBackgroundColor());
}

void BorderView::applyBorderColor()
{
    d->lineColor = d->usesPaletteColors ? detail::ink(palette(), inkOpacity) : d->borderColor;
    for (const Edge *const edge : d->edges()) {
        if (edge->layer)
            edge->layer->setBackgroundColor(d->lineColor);
    }
}

} // namespace Pellarvine
