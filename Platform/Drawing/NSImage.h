// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QImage>
#include <QMetaType>
#include <QSizeF>

#include <functional>

namespace NS {

/// A picture: a size in points and a bitmap, which need not have as many pixels.
///
///     const NS::Image badge({ 32, 32 }, [] {
///         QPainter &painter = *NS::GraphicsContext::current();
///         painter.setBrush(Qt::red);
///         painter.drawEllipse(QRectF(4, 4, 24, 24));
///     });
///
/// A plain value, as cheap to copy as a QImage. In a QVariant it converts to and from QImage,
/// and from QPixmap.
class PELLARVINE_EXPORT Image
{
public:
    /// Empty: no size and no bitmap.
    Image() = default;

    /// Runs `drawingBlock` once, now, with a painter on a transparent bitmap as the current
    /// graphics context: origin at the lower left, y upwards, antialiased. For text and pictures
    /// see `UprightDrawing`. The bitmap takes one pixel a point, the fraction of `size` cut off:
    /// 10 × 5 for 10.7 × 5.2. Whatever the block throws passes through; the contexts are as they
    /// were before.
    ///
    /// A size that leaves no pixel, is not finite, or has a side above 32767 or more than 2^28
    /// pixels gives an empty image, and the block does not run.
    Image(const QSizeF &size, const std::function<void()> &drawingBlock);

    /// A bitmap at a size of one's own choice.
    Image(const QImage &bitmap, const QSizeF &size);

    /// A bitmap at its own size: its pixels divided by its device pixel ratio.
    explicit Image(const QImage &bitmap);

    /// Whether there is no bitmap, whatever the size.
    bool isEmpty() const { return m_bitmap.isNull(); }

    /// In points.
    QSizeF size() const { return m_size; }

    /// 8 bits a sample in the order red, green, blue, alpha, premultiplied, for drawn images.
    const QImage &bitmap() const { return m_bitmap; }

    /// Draws the whole image into `rect` of the current graphics context, upright wherever y runs.
    /// Does nothing outside of any context.
    void draw(const QRectF &rect) const;

    /// Equal sizes and equal pixels.
    friend PELLARVINE_EXPORT bool operator==(const Image &first, const Image &second);

private:
    QSizeF m_size { 0, 0 };
    QImage m_bitmap;
};

} // namespace NS

Q_DECLARE_METATYPE(NS::Image)
