// SPDX-License-Identifier: MIT
#include "Layout/ConstraintLayout.h"

#include "Layout/LayoutEngine.h"

#include <QWidget>

namespace Pellarvine::detail {

namespace {

bool holds(const QLayout *layout, const QWidget *widget)
{
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *const item = layout->itemAt(i);
        if (item->widget() == widget || (item->layout() && holds(item->layout(), widget)))
            return true;
    }
    return false;
}

} // namespace

ConstraintLayout::ConstraintLayout(QWidget *host, LayoutEngine *engine)
    : QLayout(host)
    , m_engine(engine)
{
    engine->setParent(this);
}

bool ConstraintLayout::canServe(const QWidget *host)
{
    return !host->layout() || dynamic_cast<const ConstraintLayout *>(host->layout());
}

void ConstraintLayout::invalidate()
{
    m_engine->invalidate();
    QLayout::invalidate();
}

void ConstraintLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    m_engine->apply();
}

QSize ConstraintLayout::minimumSize() const
{
    return m_engine->minimumSize();
}

QSize ConstraintLayout::sizeHint() const
{
    return m_engine->sizeHint();
}

QSize ConstraintLayout::maximumSize() const
{
    return m_engine->maximumSize();
}

bool ConstraintLayout::hasHeightForWidth() const
{
    return m_engine->hasHeightForWidth();
}

int ConstraintLayout::heightForWidth(int width) const
{
    return m_engine->heightForWidth(width);
}

int ConstraintLayout::minimumHeightForWidth(int width) const
{
    return m_engine->minimumHeightForWidth(width);
}

Qt::Orientations ConstraintLayout::expandingDirections() const
{
    return m_engine->expandingDirections();
}

bool isPlacedByOtherLayout(const QWidget *widget)
{
    const QWidget *const parent = widget->parentWidget();
    return !ConstraintLayout::canServe(parent) && holds(parent->layout(), widget);
}

bool isReachable(const QWidget *from, const QWidget *ancestor)
{
    for (; from != ancestor; from = from->parentWidget()) {
        if (isPlacedByOtherLayout(from))
            return false;
    }
    return true;
}

} // namespace Pellarvine::detail
