// SPDX-License-Identifier: MIT
#include "Pellarvine/StyleKit.h"

#include "Base/Failure.h"
#include "Drawing/NSGraphicsContext.h"
#include "Drawing/PixelAlignment.h"
#include "Pellarvine/PaletteColors.h"

#include <QPainter>

namespace Pellarvine {

namespace {

constexpr double lineThickness = 1.0;

// The opacity of black that makes the two greys on white.
constexpr double gray = 1.0 - 0.5;
constexpr double lightGray = 1.0 - 2.0 / 3.0;

QColor fixedGray(double ink)
{
    const auto white = float(1.0 - ink);
    return QColor::fromRgbF(white, white, white);
}

void fill(const QRectF &rect, const QRectF &frame, const QColor &color)
{
    if (QPainter *const painter = NS::GraphicsContext::current())
        painter->fillRect(detail::alignedToPixels(rect, frame, painter->deviceTransform()), color);
    else
        detail::printWarning("Warning: there is no graphics context to draw into");
}

void fillLine(const QRectF &frame, const QColor &color)
{
    fill({ frame.left(), frame.top(), frame.width(), lineThickness }, frame, color);
}

void fillToolbar(const QRectF &frame, const QColor &line, const QColor &background)
{
    fillLine(frame, line);
    // A rectangle of negative height would cover the line.
    if (background.isValid() && frame.height() > lineThickness)
        fill(frame.adjusted(0, lineThickness, 0, 0), frame, background);
}

} // namespace

StyleKit::StyleKit(QObject *parent)
    : QObject(parent)
{ }

StyleKit::~StyleKit() = default;

void StyleKit::drawToolbar(const QRectF &frame, bool opaqueBackground)
{
    fillToolbar(frame, fixedGray(gray), opaqueBackground ? QColor(Qt::white) : QColor());
}

void StyleKit::drawToolbar(const QRectF &frame, bool opaqueBackground, const QPalette &palette)
{
    fillToolbar(frame, detail::ink(palette, gray),
                opaqueBackground ? detail::paper(palette) : QColor());
}

void StyleKit::drawInspectorSection(const QRectF &frame)
{
    fillLine(frame, fixedGray(lightGray));
}

void StyleKit::drawInspectorSection(const QRectF &frame, const QPalette &palette)
{
    fillLine(frame, detail::ink(palette, lightGray));
}

} // namespace Pellarvine
