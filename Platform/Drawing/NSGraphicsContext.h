// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QRectF>

QT_FORWARD_DECLARE_CLASS(QPainter)

namespace NS {

/// Makes a painter the current painter of its thread for the lifetime of the object, so that
/// drawing functions need no painter argument:
///
///     void Badge::paintEvent(QPaintEvent *)
///     {
///         QPainter painter(this);
///         const NS::GraphicsContext context(painter);
///         drawBadge(); // draws with *NS::GraphicsContext::current()
///     }
///
/// Contexts nest. The destructor makes the previous painter current again and restores the state
/// (transform, clip, pen, …) that both painters had before, also when an exception is thrown.
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

/// Draws text and pictures upright where y grows upwards. Until the object is destroyed, the
/// painter's origin is the upper left corner of `rect` and y grows downwards. If y grows downwards
/// already, only the origin moves.
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
