// SPDX-License-Identifier: MIT
#include "Drawing/NSGraphicsContext.h"

#include "Drawing/UpwardPainting.h"

#include <QPainter>

#include <utility>

namespace NS {

namespace {

// The top of the stack. Each context has a pointer to the one below.
thread_local QPainter *currentPainter = nullptr;

// A painter that has ended has no state, and Qt would print a warning.
void restore(QPainter *painter)
{
    if (painter && painter->isActive())
        painter->restore();
}

} // namespace

GraphicsContext::GraphicsContext(QPainter &painter)
    : m_painter(&painter)
    , m_previous(std::exchange(currentPainter, &painter))
{
    if (m_previous)
        m_previous->save();
    m_painter->save();
}

GraphicsContext::~GraphicsContext()
{
    restore(m_painter);
    currentPainter = m_previous;
    restore(m_previous);
}

QPainter *GraphicsContext::current()
{
    return currentPainter;
}

UprightDrawing::UprightDrawing(QPainter &painter, const QRectF &rect)
    : m_painter(painter)
{
    m_painter.save();
    const bool isUpwards = m_painter.worldTransform().determinant() < 0;
    m_painter.translate(rect.topLeft());
    if (isUpwards)
        detail::flip(m_painter, rect.height());
}

UprightDrawing::~UprightDrawing()
{
    restore(&m_painter);
}

} // namespace NS
