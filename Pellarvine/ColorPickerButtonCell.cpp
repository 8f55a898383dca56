// SPDX-License-Identifier: MIT
#include "Pellarvine/ColorPickerButtonCell.h"

#include "Base/Failure.h"
#include "Drawing/ColorExchange.h"
#include "Drawing/NSGraphicsContext.h"
#include "Pellarvine/ColorPickerButton.h"
#include "View/NSView.h"

#include <QPainter>
#include <QPainterPath>

namespace Pellarvine {

namespace {

constexpr double inset = 3;
constexpr double cornerRadius = 2;
constexpr double disabledOpacity = 0.4;

} // namespace

ColorPickerButtonCell::ColorPickerButtonCell(QObject *parent)
    : ButtonCell(parent)
{ }

ColorPickerButtonCell::~ColorPickerButtonCell() = default;

QRectF ColorPickerButtonCell::swatchRect(const QRectF &frame, const QMarginsF &alignmentRectInsets)
{
    const auto &insets = alignmentRectInsets;
    const QRectF box(frame.x() + insets.left() + 0.5, frame.y() + insets.top(),
                     frame.width() - (insets.left() + insets.right()) - 1,
                     frame.height() - (insets.top() + insets.bottom()) - 1);
    return box.adjusted(inset, inset, -inset, -inset);
}

void ColorPickerButtonCell::drawInterior(const QRectF &frame, QWidget *)
{
    const auto *const button = qobject_cast<ColorPickerButton *>(controlView());
    if (!button) {
        detail::printWarning(
                "Warning: ColorPickerButtonCell without ColorPickerButton as control view!");
        return;
    }
    QPainter *const painter = NS::GraphicsContext::current();
    const QRectF swatch = swatchRect(frame, NS::alignmentRectInsets(button));
    if (!painter || swatch.isEmpty())
        return;
    painter->setRenderHint(QPainter::Antialiasing);
    if (!button->isEnabled())
        painter->setOpacity(disabledOpacity);
    QPainterPath path;
    path.addRoundedRect(swatch, cornerRadius, cornerRadius);
    detail::fillWithColor(*painter, path, button->color());
    // The clip leaves the inner half of a line one unit wide.
    painter->setClipPath(path, Qt::IntersectClip);
    painter->strokePath(path, QPen(QColor::fromRgbF(0, 0, 0, 0.2F), 1));
}

} // namespace Pellarvine
