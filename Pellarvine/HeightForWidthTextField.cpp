// SPDX-License-Identifier: MIT
#include "Pellarvine/HeightForWidthTextField.h"

#include "View/NSView.h"

namespace Pellarvine {

HeightForWidthTextField::HeightForWidthTextField(QWidget *parent)
    : TextField(parent)
{ }

void HeightForWidthTextField::performLayout()
{
    setPreferredMaxLayoutWidth(NS::bounds(this).width());
    TextField::performLayout();
}

void HeightForWidthTextField::moveEvent(QMoveEvent *event)
{
    TextField::moveEvent(event);
    NS::setNeedsLayout(this);
}

void HeightForWidthTextField::resizeEvent(QResizeEvent *event)
{
    TextField::resizeEvent(event);
    NS::setNeedsLayout(this);
}

} // namespace Pellarvine
