// SPDX-License-Identifier: MIT
// The sizes that the layout of an engine reports to Qt.
#include "Layout/LayoutEngine.h"
#include "Layout/LayoutLevel.h"

#include <QLayout>
#include <QWidget>

#include <algorithm>

namespace Pellarvine::detail {

// Constraints include the contents margins of the host, and Qt adds them again.
QSize LayoutEngine::withoutMargins(const QSize &size) const
{
    return size.shrunkBy(m_host->contentsMargins());
}

QSize LayoutEngine::minimumSize()
{
    if (!m_minimumSize) {
        refresh();
        m_minimumSize = withoutMargins(m_system.smallestSize()).expandedTo({ 0, 0 });
    }
    return *m_minimumSize;
}

QSize LayoutEngine::sizeHint()
{
    if (!m_sizeHint) {
        refresh();
        m_sizeHint = withoutMargins(m_system.preferredSize()).expandedTo(minimumSize());
    }
    return *m_sizeHint;
}

QSize LayoutEngine::maximumSize()
{
    if (!m_maximumSize) {
        refresh();
        const QSize largest = m_system.largestSize();
        QSize size = withoutMargins(largest);
        if (largest.width() >= QLAYOUTSIZE_MAX)
            size.setWidth(QLAYOUTSIZE_MAX);
        if (largest.height() >= QLAYOUTSIZE_MAX)
            size.setHeight(QLAYOUTSIZE_MAX);
        m_maximumSize = size.expandedTo(minimumSize());
    }
    return *m_maximumSize;
}

bool LayoutEngine::hasHeightForWidth()
{
    refresh();
    return m_system.hasHeightForWidth() || m_tiesOfSizes > 0;
}

int LayoutEngine::heightForWidth(int width)
{
    const auto known = m_heights.constFind(width);
    if (known != m_heights.constEnd())
        return *known;
    const int height = fittingHeight(width, NS::LayoutPriority::fittingSizeCompression);
    m_heights.insert(width, height);
    return height;
}

int LayoutEngine::minimumHeightForWidth(int width)
{
    const auto known = m_minimumHeights.constFind(width);
    if (known != m_minimumHeights.constEnd())
        return *known;
    const int height = fittingHeight(width, LayoutLevel::shrinking);
    m_minimumHeights.insert(width, height);
    return height;
}

int LayoutEngine::fittingHeight(int width, double level)
{
    refresh();
    const QMargins margins = m_host->contentsMargins();
    const int height = m_system.fittingHeight(width + margins.left() + margins.right(), level);
    return std::max(0, height - margins.top() - margins.bottom());
}

Qt::Orientations LayoutEngine::expandingDirections() const
{
    Qt::Orientations directions;
    for (const LayoutItem *const item : m_system.items()) {
        if (item->widget)
            directions |= item->widget->sizePolicy().expandingDirections();
    }
    return directions;
}

} // namespace Pellarvine::detail
