// SPDX-License-Identifier: MIT
// Which widgets an engine has constraints about, and what it takes over from engines below.
#include "Layout/ConstraintLayout.h"
#include "Layout/LayoutEngine.h"
#include "Layout/LayoutHosts.h"
#include "View/NSView.h"

#include <QPointer>
#include <QWidget>

#include <algorithm>

using NS::LayoutConstraint;

namespace Pellarvine::detail {

void LayoutEngine::acquire(QWidget *widget, const QWidget *ancestor)
{
    if (!widget || widget == m_host)
        return;
    for (QWidget *between = widget->parentWidget(); between != m_host;
         between = between->parentWidget()) {
        LayoutEngine *const lower = LayoutHosts::all().ownEngine(between);
        if (lower && lower->m_system.find(widget) && isReachable(between, m_host))
            takeOverAllOf(lower);
    }
    LayoutItem *const known = m_system.find(widget);
    LayoutItem &item = known ? *known : m_system.add(widget);
    ++item.uses;
    item.placings += widget != ancestor ? 1 : 0;
    if (known)
        return;
    // The next pass takes over what the widget asks for: no required constraint depends on that.
    watch(widget);
    item.ending =
            connect(widget, &QObject::destroyed, this, [this, widget] { drop({ widget }, false); });
}

void LayoutEngine::release(QWidget *widget, const QWidget *ancestor)
{
    LayoutItem *const item = m_system.find(widget);
    if (!item)
        return;
    m_isOrderStale = true;
    item->placings -= widget != ancestor ? 1 : 0;
    if (--item->uses > 0)
        return;
    disconnect(item->ending);
    widget->removeEventFilter(this);
    m_system.remove(*item);
}

// The widget and what lies between it and the host, since that may move or leave too.
void LayoutEngine::watch(QWidget *widget)
{
    for (; widget && widget != m_host; widget = widget->parentWidget())
        widget->installEventFilter(this);
}

// Ends all constraints of these widgets, which are gone or have left the host. Those that lie as a
// whole where the widgets are now go on there.
void LayoutEngine::drop(const QSet<QWidget *> &widgets, bool areAlive)
{
    QList<std::shared_ptr<LayoutConstraint>> moved;
    const QPointer<LayoutEngine> self(this);
    std::vector<Active> all = copiesInOrder();
    for (Active &active : all) {
        if (!m_active.contains(active.constraint.get()))
            continue;
        const bool isFirst = widgets.contains(active.first);
        const bool isSecond = !active.second || widgets.contains(active.second);
        if (!isFirst && !widgets.contains(active.second))
            continue;
        if (areAlive && isFirst && isSecond)
            moved.append(active.constraint);
        takeOut(active);
        m_active.erase(active.constraint.get());
        release(active.first, active.ancestor);
        release(active.second, active.ancestor);
        active.constraint->setEngine(nullptr);
        if (!self)
            return;
    }
    request();
    LayoutConstraint::activateConstraints(moved);
}

void LayoutEngine::dropStrayed()
{
    QSet<QWidget *> strayed;
    for (const LayoutItem *const item : m_system.items()) {
        if (!m_host->isAncestorOf(item->widget))
            strayed.insert(item->widget);
    }
    if (strayed.isEmpty())
        return;
    LayoutHosts::all().giveBackStrayed(this, m_host);
    drop(strayed, true);
}

bool LayoutEngine::isGiven(const LayoutItem &item) const
{
    const QWidget *const widget = item.widget;
    if (item.placings == 0 || NS::translatesAutoresizingMaskIntoConstraints(widget)
        || isPlacedByOtherLayout(widget))
        return true;
    for (const QWidget *between = widget->parentWidget(); between != m_host;
         between = between->parentWidget()) {
        const LayoutEngine *const lower = LayoutHosts::all().ownEngine(between);
        if (lower && lower->m_system.find(widget))
            return true;
    }
    return false;
}

bool LayoutEngine::placesBelow(const QWidget *widget) const
{
    const auto &items = m_system.items();
    return std::any_of(items.begin(), items.end(),
                       [&](const LayoutItem *item) { return widget->isAncestorOf(item->widget); });
}

// From now on constraints whose common ancestor is that widget come here.
void LayoutEngine::takeOver(QWidget *host)
{
    LayoutHosts::all().takeOver(host, this);
    connect(host, &QObject::destroyed, this, [host] { LayoutHosts::all().giveBack(host); });
}

// The lower engine stays behind without constraints.
void LayoutEngine::takeOverAllOf(LayoutEngine *lower)
{
    LayoutHosts::all().takeOverFrom(lower, this);
    takeOver(lower->m_host);
    std::vector<Active> moving = lower->copiesInOrder();
    for (Active &active : moving) {
        lower->takeOut(active);
        lower->m_active.erase(active.constraint.get());
        lower->release(active.first, active.ancestor);
        lower->release(active.second, active.ancestor);
    }
    lower->request();
    for (const Active &active : moving)
        add(active.constraint, active.ancestor);
}

} // namespace Pellarvine::detail
