// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QImage>
#include <QMetaType>
#include <QSizeF>

#include <functional>

namespace NS {

/// A picture: a bitmap, and a size in points that is independent of the number of pixels.
///
///     const NS::Image badge({ 32, 32 }, [] {
///         QPainter &painter = *NS::GraphicsContext::current();
///         painter.setBrush(Qt::red);
///         painter.drawEllipse(QRectF(4, 4, 24, 24));
///     });
///
/// A plain value, for any thread, as cheap to copy as a QImage. In a QVariant it converts to and
/// from QImage, and, on the main thread, from QPixmap.
class PELLARVINE_EXPORT Image
{
public:
    /// Empty: no size and no bitmap.
    Image() = default;

    /// Draws an image: calls `drawingBlock` once, before the constructor returns, with a painter on
    /// a transparent bitmap as the current graphics context. Its origin is at the lower left, y
    /// grows upwards, and drawing is antialiased. For text and pictures see `UprightDrawing`. The
    /// bitmap has one pixel for each point; fractions of `size` are cut off: 10 × 5 for 10.7 × 5.2.
    /// An exception of the block is passed on, after the previous context is restored.
    ///
    /// The image is empty, and the block is not called, for a size without a pixel, a size that is
    /// not finite, a side above 32767, or more than 2^28 pixels.
    Image(const QSizeF &size, const std::function<void()> &drawingBlock);

    /// A bitmap shown at the given size.
    Image(const QImage &bitmap, const QSizeF &size);

    /// A bitmap at its own size: its pixels divided by its device pixel ratio.
    explicit Image(const QImage &bitmap);

    /// Whether there is no bitmap. The size does not matter.
    bool isEmpty() const { return m_bitmap.isNull(); }

    /// In points.
    QSizeF size() const { return m_size; }

    /// 8 bits a sample in the order red, green, blue, alpha, premultiplied, for drawn images.
    const QImage &bitmap() const { return m_bitmap; }

    /// Draws the whole image into `rect` of the current graphics context, upright in either
    /// direction of y. Does nothing without a context.
    void draw(const QRectF &rect) const;

    /// Equal sizes and equal pixels.
    friend PELLARVINE_EXPORT bool operator==(const Image &first, const Image &second);

private:
    QSizeF m_size { 0, 0 };
    QImage m_bitmap;
};

} // namespace NS

Q_DECLARE_METATYPE(NS::Image)
