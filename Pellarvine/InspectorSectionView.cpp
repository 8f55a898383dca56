// SPDX-License-Identifier: MIT
#include "Pellarvine/InspectorSectionView.h"

#include "Drawing/UpwardPainting.h"
#include "Pellarvine/StyleKit.h"
#include "View/AccessibleControl.h"
#include "View/NSView.h"

namespace Pellarvine {

struct InspectorSectionView::Private
{
    bool usesPaletteColors = false;
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
    return d->usesPaletteColors;
}

void InspectorSectionView::setUsesPaletteColors(bool usesPaletteColors)
{
    if (usesPaletteColors == d->usesPaletteColors)
        return;
    d->usesPaletteColors = usesPaletteColors;
    update();
    Q_EMIT usesPaletteColorsChanged(usesPaletteColors);
}

void InspectorSectionView::draw(const QRectF &)
{
    if (d->usesPaletteColors)
        StyleKit::drawInspectorSection(NS::bounds(this), palette());
    else
        StyleKit::drawInspectorSection(NS::bounds(this));
}

void InspectorSectionView::paintEvent(QPaintEvent *event)
{
    detail::paintUpwards(*this, *event);
}

} // namespace Pellarvine
