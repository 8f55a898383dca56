// SPDX-License-Identifier: MIT
#include "Drawing/NSImage.h"

#include "Drawing/NSGraphicsContext.h"
#include "Drawing/UpwardPainting.h"

#include <QPainter>
#include <QPixmap>

namespace NS {

namespace {

// Qt's raster painter keeps coordinates in 16 bits.
constexpr double largestSide = 32767;

// One GiB: a larger image is a mistake.
constexpr double mostPixels = 1 << 28;

QImage transparentBitmap(const QSizeF &size)
{
    // This form of the condition refuses NaN as well.
    const bool isInRange = size.width() >= 1 && size.width() <= largestSide && size.height() >= 1
                           && size.height() <= largestSide
                           && size.width() * size.height() <= mostPixels;
    if (!isInRange)
        return {};
    QImage bitmap(int(size.width()), int(size.height()), QImage::Format_RGBA8888_Premultiplied);
    bitmap.fill(Qt::transparent);
    return bitmap;
}

[[maybe_unused]] const bool isImageRegistered = [] {
    qRegisterMetaType<Image>("NS::Image");
    QMetaType::registerConverter<Image, QImage>([](const Image &image) { return image.bitmap(); });
    QMetaType::registerConverter<QImage, Image>([](const QImage &bitmap) { return Image(bitmap); });
    QMetaType::registerConverter<QPixmap, Image>(
            [](const QPixmap &pixmap) { return Image(pixmap.toImage()); });
    return true;
}();

} // namespace

Image::Image(const QSizeF &size, const std::function<void()> &drawingBlock)
{
    QImage bitmap = transparentBitmap(size);
    if (bitmap.isNull())
        return;
    {
        QPainter painter(&bitmap);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        detail::flip(painter, bitmap.height());
        const GraphicsContext context(painter);
        drawingBlock();
    }
    m_size = size;
    m_bitmap = bitmap;
}

Image::Image(const QImage &bitmap, const QSizeF &size)
    : m_size(size)
    , m_bitmap(bitmap)
{ }

Image::Image(const QImage &bitmap)
    : Image(bitmap, bitmap.deviceIndependentSize())
{ }

void Image::draw(const QRectF &rect) const
{
    QPainter *const painter = GraphicsContext::current();
    if (!painter || isEmpty())
        return;
    const UprightDrawing upright(*painter, rect);
    painter->drawImage(QRectF(QPointF(), rect.size()), m_bitmap);
}

bool operator==(const Image &first, const Image &second)
{
    return first.m_size == second.m_size && first.m_bitmap == second.m_bitmap;
}

} // namespace NS
