// SPDX-License-Identifier: MIT
// Warnings about constraints that contradict each other, that only a negative size satisfies, and
// that a Qt layout overrides.
#include "Base/Failure.h"
#include "Layout/ConstraintLayout.h"
#include "Layout/LayoutEngine.h"
#include "Layout/LayoutFindings.h"

#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using NS::LayoutConstraint;

namespace Pellarvine::detail {

namespace {

void warn(const QString &text)
{
    printWarning((u"Warning: "_s + text).toStdString());
}

} // namespace

std::vector<LayoutEngine::Active *>
LayoutEngine::activeOf(const std::vector<Solver::Constraint> &handles) const
{
    std::vector<Active *> all = m_inOrder;
    std::erase_if(all, [&](const Active *active) {
        return std::find(handles.begin(), handles.end(), active->handle) == handles.end();
    });
    return all;
}

void LayoutEngine::warnAbout(const LayoutConstraint &constraint,
                             const std::vector<Solver::Constraint> &conflict) const
{
    QStringList others;
    for (const Active *const active : activeOf(conflict)) {
        if (active->constraint.get() != &constraint)
            others.append(active->constraint->description());
    }
    warn(u"dropped the constraint %1, which contradicts %2"_s.arg(
            constraint.description(), others.isEmpty() ? u"itself"_s : others.join(u", "_s)));
}

// The answer depends on the constraints alone, so that it changes only with them.
void LayoutEngine::warnOfNegativeSizes()
{
    if (!std::exchange(m_hasNewConstraints, false))
        return;
    // In a host that is too small many sizes are negative that need not be.
    m_system.solve(m_host->size().expandedTo(minimumSize()));
    for (const auto &[orientation, constraints] : m_system.negativeSizes()) {
        QStringList texts;
        bool isNew = false;
        for (Active *const active : activeOf(constraints)) {
            texts.append(active->constraint->description());
            isNew = !std::exchange(active->isReported, true) || isNew;
        }
        if (isNew)
            warn(u"only a negative %1 satisfies %2"_s.arg(
                    orientation == Qt::Horizontal ? "width"_L1 : "height"_L1, texts.join(u", "_s)));
    }
}

// After solve(), the widgets that a Qt layout has placed elsewhere than required constraints do.
QSet<const QWidget *> LayoutEngine::overriddenWidgets() const
{
    QSet<const QWidget *> overridden;
    const auto look = [&](const QWidget *widget) {
        if (!widget->isWindow() && isPlacedByOtherLayout(widget))
            overridden.insert(widget);
    };
    if (!m_system.isHostOfSize(m_host->size()))
        look(m_host);
    for (const LayoutItem *const item : m_system.items()) {
        if (item->isGiven && item->widget && !m_system.isWhereGiven(*item))
            look(item->widget);
    }
    return overridden;
}

// After solve(). Waits until Qt layouts that have changed too have placed their widgets.
void LayoutEngine::lookForOverridden()
{
    if (m_isLookDue || overriddenWidgets().isEmpty())
        return;
    m_isLookDue = true;
    QTimer::singleShot(0, this, [this] {
        m_isLookDue = false;
        // Otherwise the next pass looks again.
        if (!m_isStale)
            warnOfOverridden();
    });
}

void LayoutEngine::warnOfOverridden()
{
    m_system.solve(m_host->size());
    const QSet<const QWidget *> overridden = overriddenWidgets();
    for (Active *const active : m_inOrder) {
        const LayoutConstraint &constraint = *active->constraint;
        if (active->isReported || constraint.priority() < NS::LayoutPriority::required
            || excessOf(constraint) == 0.0)
            continue;
        for (const NS::ConstraintItem item : { constraint.firstItem(), constraint.secondItem() }) {
            const QWidget *const widget = item.widget();
            if (!overridden.contains(widget) || !widget->isVisible())
                continue;
            active->isReported = true;
            warn(u"a %1 overrides the required constraint %2"_s.arg(
                    QLatin1StringView(widget->parentWidget()->layout()->metaObject()->className()),
                    constraint.description()));
            break;
        }
    }
}

} // namespace Pellarvine::detail
