// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QRectF>

QT_FORWARD_DECLARE_CLASS(QPainter)

namespace NS {

/// Makes a painter the current one of its thread for as long as the object lives, so that drawing
/// code further down needs no painter handed to it.
///
///     void Badge::paintEvent(QPaintEvent *)
///     {
///         QPainter painter(this);
///         const NS::GraphicsContext context(painter);
///         drawBadge(); // draws with *NS::GraphicsContext::current()
///     }
///
/// Contexts nest. Going, by an exception too, each makes the one before it current again and gives
/// both painters back the state (transform, clip, pen, …) that they had when it came.
class PELLARVINE_EXPORT GraphicsContext
{
public:
    /// The painter has to be active and to outlive this object.
    explicit GraphicsContext(QPainter &painter);
    ~GraphicsContext();
    GraphicsContext(const GraphicsContext &) = delete;
    GraphicsContext &operator=(const GraphicsContext &) = delete;

    /// The current painter of this thread; null outside of any context.
    static QPainter *current();

private:
    QPainter *m_painter;
    QPainter *m_previous;
};

/// Lets `painter` draw text and pictures upright where y runs upwards: until the object goes, the
/// painter's origin is the upper left corner of `rect`, and y runs downwards. Where y runs
/// downwards already, only the origin moves.
class PELLARVINE_EXPORT UprightDrawing
{
public:
    /// `rect` in the painter's coordinates. The painter has to be active and to outlive this
    /// object.
    UprightDrawing(QPainter &painter, const QRectF &rect);
    ~UprightDrawing();
    UprightDrawing(const UprightDrawing &) = delete;
    UprightDrawing &operator=(const UprightDrawing &) = delete;

private:
    QPainter &m_painter;
};

} // namespace NS
