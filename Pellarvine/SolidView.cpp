// SPDX-License-Identifier: MIT
#include "Pellarvine/SolidView.h"

#include "Base/Assign.h"
#include "Pellarvine/PaletteColors.h"
#include "View/NSView+Layer.h"

#include <QEvent>

namespace Pellarvine {

struct SolidView::Private
{
    QColor backgroundColor = Qt::white;
    double radius = 0.0;
    bool usesPaletteColors = false;
};

SolidView::SolidView(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>())
{ }

SolidView::~SolidView() = default;

QColor SolidView::backgroundColor() const
{
    return d->backgroundColor;
}

void SolidView::setBackgroundColor(const QColor &color)
{
    const bool isOther = color != d->backgroundColor;
    d->backgroundColor = color;
    ensureLayer();
    applyBackgroundColor();
    if (isOther)
        Q_EMIT backgroundColorChanged(color);
}

double SolidView::radius() const
{
    return d->radius;
}

void SolidView::setRadius(double radius)
{
    const bool isOther = detail::assign(d->radius, radius);
    ensureLayer();
    NS::layer(this)->setCornerRadius(radius);
    if (isOther)
        Q_EMIT radiusChanged(radius);
}

bool SolidView::usesPaletteColors() const
{
    return d->usesPaletteColors;
}

void SolidView::setUsesPaletteColors(bool usesPaletteColors)
{
    if (!detail::assign(d->usesPaletteColors, usesPaletteColors))
        return;
    ensureLayer();
    applyBackgroundColor();
    Q_EMIT usesPaletteColorsChanged(usesPaletteColors);
}

void SolidView::awakeFromNib()
{
    ensureLayer();
}

void SolidView::prepareForInterfaceBuilder()
{
    ensureLayer();
}

void SolidView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && d->usesPaletteColors)
        applyBackgroundColor();
}

void SolidView::ensureLayer()
{
    NS::setWantsLayer(this, true);
}

void SolidView::applyBackgroundColor()
{
    if (const auto layer = NS::layer(this)) {
        layer->setBackgroundColor(d->usesPaletteColors ? detail::paper(palette())
                                                       : d->backgroundColor);
    }
}

} // namespace Pellarvine
