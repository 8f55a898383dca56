// SPDX-License-Identifier: MIT
#include "Pellarvine/BorderView.h"

#include "Base/Assign.h"
#include "Pellarvine/PaletteColors.h"
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
    std::shared_ptr<CA::Layer> layer = std::make_shared<CA::Layer>();
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
    bool usesPaletteColors = false;

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
    return d->left.layer.get();
}

CA::Layer *BorderView::rightLayer() const
{
    return d->right.layer.get();
}

CA::Layer *BorderView::topLayer() const
{
    return d->top.layer.get();
}

CA::Layer *BorderView::bottomLayer() const
{
    return d->bottom.layer.get();
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
    const auto layer = NS::layer(this);
    for (const Edge *const edge : d->edges()) {
        const bool isAttached = edge->layer->superlayer();
        if (edge->isWanted && !isAttached && layer)
            layer->addSublayer(edge->layer);
        else if (!edge->isWanted && isAttached)
            edge->layer->removeFromSuperlayer();
    }
}

void BorderView::performLayout()
{
    const QRectF bounds = NS::bounds(this);
    const double width = bounds.width();
    const double height = bounds.height();
    if (d->left.isWanted)
        d->left.layer->setFrame({ 0.0, 0.0, thickness, height });
    if (d->right.isWanted)
        d->right.layer->setFrame({ width - thickness, 0.0, thickness, height });
    const double left = d->left.isWanted ? thickness : 0.0;
    const double right = d->right.isWanted ? thickness : 0.0;
    if (d->top.isWanted)
        d->top.layer->setFrame({ left, height - thickness, width - left - right, thickness });
    if (d->bottom.isWanted)
        d->bottom.layer->setFrame({ left, 0.0, width - left - right, thickness });
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
    NS::setWantsLayer(this, true);
    applyBackgroundColor();
    applyBorderColor();
    updateLayerVisibility();
    NS::setNeedsLayout(this);
}

void BorderView::applyBackgroundColor()
{
    if (const auto layer = NS::layer(this)) {
        layer->setBackgroundColor(d->usesPaletteColors ? detail::paper(palette())
                                                       : d->backgroundColor);
    }
}

void BorderView::applyBorderColor()
{
    const QColor color = d->usesPaletteColors ? detail::ink(palette(), inkOpacity) : d->borderColor;
    for (const Edge *const edge : d->edges())
        edge->layer->setBackgroundColor(color);
}

} // namespace Pellarvine
