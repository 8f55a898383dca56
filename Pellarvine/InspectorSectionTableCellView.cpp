// SPDX-License-Identifier: MIT
#include "Pellarvine/InspectorSectionTableCellView.h"

#include "Drawing/UpwardPainting.h"
#include "Pellarvine/InspectorSection.h"

namespace Pellarvine {

struct InspectorSectionTableCellView::Private
{
    detail::InspectorSection section;
};

InspectorSectionTableCellView::InspectorSectionTableCellView(QWidget *parent)
    : TableCellView(parent)
    , d(std::make_unique<Private>())
{ }

InspectorSectionTableCellView::~InspectorSectionTableCellView() = default;

bool InspectorSectionTableCellView::usesPaletteColors() const
{
    return d->section.usesPaletteColors;
}

void InspectorSectionTableCellView::setUsesPaletteColors(bool usesPaletteColors)
{
    if (d->section.setUsesPaletteColors(*this, usesPaletteColors))
        Q_EMIT usesPaletteColorsChanged(usesPaletteColors);
}

void InspectorSectionTableCellView::draw(const QRectF &)
{
    d->section.draw(*this);
}

void InspectorSectionTableCellView::paintEvent(QPaintEvent *event)
{
    detail::paintUpwards(*this, *event);
}

} // namespace Pellarvine
