// SPDX-License-Identifier: MIT
#include "Pellarvine/ToolBarView.h"

#include "Base/Assign.h"
#include "Drawing/UpwardPainting.h"
#include "Pellarvine/StyleKit.h"
#include "View/AccessibleControl.h"
#include "View/NSView.h"

namespace Pellarvine {

struct ToolBarView::Private
{
    bool opaqueBackground = true;
    bool usesPaletteColors = false;
};

ToolBarView::ToolBarView(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>())
{
    detail::makeAccessible<ToolBarView, QAccessible::ToolBar>();
}

ToolBarView::~ToolBarView() = default;

bool ToolBarView::opaqueBackground() const
{
    return d->opaqueBackground;
}

void ToolBarView::setOpaqueBackground(bool isOpaque)
{
    if (!detail::assign(d->opaqueBackground, isOpaque))
        return;
    update();
    Q_EMIT opaqueBackgroundChanged(isOpaque);
}

bool ToolBarView::usesPaletteColors() const
{
    return d->usesPaletteColors;
}

void ToolBarView::setUsesPaletteColors(bool usesPaletteColors)
{
    if (!detail::assign(d->usesPaletteColors, usesPaletteColors))
        return;
    update();
    Q_EMIT usesPaletteColorsChanged(usesPaletteColors);
}

void ToolBarView::draw(const QRectF &)
{
    if (d->usesPaletteColors)
        StyleKit::drawToolbar(NS::bounds(this), d->opaqueBackground, palette());
    else
        StyleKit::drawToolbar(NS::bounds(this), d->opaqueBackground);
}

void ToolBarView::paintEvent(QPaintEvent *event)
{
    detail::paintUpwards(*this, *event);
}

} // namespace Pellarvine
