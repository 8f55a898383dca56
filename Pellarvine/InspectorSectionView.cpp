// SPDX-License-Identifier: MIT
#include "Pellarvine/InspectorSectionView.h"

#include "Drawing/UpwardPainting.h"
#include "Pellarvine/InspectorSection.h"
#include "View/AccessibleControl.h"

namespace Pellarvine {

struct InspectorSectionView::Private
{
    detail::InspectorSection section;
};

InspectorSectionView::InspectorSectionView(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>())
{
    detail::makeAccessible<InspectorSectionView, QAccessible::Grouping>();
}

InspectorSectionView::~InspectorSectionView() = default;

bool InspectorSectionView::usesPaletteColors() const
{
    return d->section.usesPaletteColors;
}

void InspectorSectionView::setUsesPaletteColors(bool usesPaletteColors)
{
    if (d->section.setUsesPaletteColors(*this, usesPaletteColors))
        Q_EMIT usesPaletteColorsChanged(usesPaletteColors);
}

void InspectorSectionView::draw(const QRectF &)
{
    d->section.draw(*this);
}

void InspectorSectionView::paintEvent(QPaintEvent *event)
{
    detail::paintUpwards(*this, *event);
}

} // namespace Pellarvine
