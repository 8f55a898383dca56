// SPDX-License-Identifier: MIT
#include "Pellarvine/HeightForWidthTextField.h"

#include "View/NSView.h"

namespace Pellarvine {

HeightForWidthTextField::HeightForWidthTextField(QWidget *parent)
    : TextField(parent)
{ }

void HeightForWidthTextField::setFrame(const QRectF &frame)
{
    NS::setFrame(this, frame);
    NS::setNeedsLayout(this);
}

void HeightForWidthTextField::performLayout()
{
    setPreferredMaxLayoutWidth(NS::bounds(this).width());
    TextField::performLayout();
}

QSize HeightForWidthTextField::sizeHint() const
{
    QSize size = sizeWithin(0);
    const int given = int(preferredMaxLayoutWidth());
    if (wraps() && given > 0 && given < size.width())
        size.setHeight(heightForWidth(given));
    return size;
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
