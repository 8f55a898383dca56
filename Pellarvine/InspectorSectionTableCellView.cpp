// SPDX-License-Identifier: MIT
#include "Pellarvine/InspectorSectionTableCellView.h"

#include "Drawing/UpwardPainting.h"
#include "Pellarvine/StyleKit.h"
#include "View/NSView.h"

namespace Pellarvine {

struct InspectorSectionTableCellView::Private
{
    bool usesPaletteColors = false;
};

InspectorSectionTableCellView::InspectorSectionTableCellView(QWidget *parent)
    : TableCellView(parent)
    , d(std::make_unique<Private>())
{ }

InspectorSectionTableCellView::~InspectorSectionTableCellView() = default;

bool InspectorSectionTableCellView::usesPaletteColors() const
{
    return d->usesPaletteColors;
}

void InspectorSectionTableCellView::setUsesPaletteColors(bool usesPaletteColors)
{
    if (usesPaletteColors == d->usesPaletteColors)
        return;
    d->usesPaletteColors = usesPaletteColors;
    update();
    Q_EMIT usesPaletteColorsChanged(usesPaletteColors);
}

void InspectorSectionTableCellView::draw(const QRectF &)
{
    if (d->usesPaletteColors)
        StyleKit::drawInspectorSection(NS::bounds(this), palette());
    else
        StyleKit::drawInspectorSection(NS::bounds(this));
}

void InspectorSectionTableCellView::paintEvent(QPaintEvent *event)
{
    detail::paintUpwards(*this, *event);
}

} // namespace Pellarvine
