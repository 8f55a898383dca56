// SPDX-License-Identifier: MIT
// The widgets and guides that an engine has constraints about, and taking over engines below.
#include "Layout/ConstraintLayout.h"
#include "Layout/LayoutEngine.h"
#include "Layout/LayoutHosts.h"
#include "View/NSView.h"

#include <QPointer>
#include <QWidget>

#include <algorithm>

using NS::LayoutConstraint;

namespace Pellarvine::detail {

namespace {

QWidget *parentOf(const QObject *object)
{
    return static_cast<QWidget *>(object->parent());
}

bool isAtOrBelow(const QObject *object, const QObject *ancestor)
{
    while (object && object != ancestor)
        object = object->parent();
    return object;
}

} // namespace

void LayoutEngine::acquire(NS::ConstraintItem item, const QWidget *ancestor)
{
    QObject *const object = item.object();
    if (!object || object == m_host)
        return;
    for (QWidget *between = parentOf(object); between != m_host;
         between = between->parentWidget()) {
        LayoutEngine *const lower = LayoutHosts::all().ownEngine(between);
        if (lower && lower->m_system.find(object) && isReachable(between, m_host))
            takeOverAllOf(lower);
    }
    LayoutItem *const known = m_system.find(object);
    LayoutItem &used = known ? *known : m_system.add(item);
    ++used.uses;
    used.placings += object != ancestor ? 1 : 0;
    if (known)
        return;
    // The next pass reads its size hints. No required constraint depends on them.
    watch(item.view());
    used.ending =
            connect(object, &QObject::destroyed, this, [this, object] { drop({ object }, false); });
    if (NS::LayoutGuide *const guide = item.guide()) {
        connect(guide, &NS::LayoutGuide::frameChanged, this, [this, guide] {
            if (m_system.find(guide)->isGiven)
                request();
        });
    }
}

void LayoutEngine::release(QObject *object, const QWidget *ancestor)
{
    LayoutItem *const item = m_system.find(object);
    if (!item)
        return;
    m_isOrderStale = true;
    item->placings -= object != ancestor ? 1 : 0;
    if (--item->uses > 0)
        return;
    disconnect(item->ending);
    if (item->guide)
        disconnect(item->guide, &NS::LayoutGuide::frameChanged, this, nullptr);
    m_system.remove(*item);
    unwatch(object);
}

// Watches the view and its ancestors up to the host, since these may move or leave too.
void LayoutEngine::watch(QWidget *view)
{
    for (; view && view != m_host; view = view->parentWidget())
        view->installEventFilter(this);
}

// Stops watching the object and its ancestors up to the host, unless an item lies in them. The
// object may be half destroyed.
void LayoutEngine::unwatch(QObject *object)
{
    for (; object && object != m_host; object = object->parent()) {
        const auto &items = m_system.items();
        if (std::any_of(items.begin(), items.end(),
                        [&](const LayoutItem *item) { return isAtOrBelow(item->object, object); }))
            return;
        object->removeEventFilter(this);
    }
}

// Ends all constraints of these items, which are destroyed or have left the host. Constraints
// between two items that have left together go on where these are now.
void LayoutEngine::drop(const QSet<QObject *> &objects, bool areAlive)
{
    QList<std::shared_ptr<LayoutConstraint>> moved;
    const QPointer<LayoutEngine> self(this);
    std::vector<Active> all = copiesInOrder();
    for (Active &active : all) {
        if (!m_active.contains(active.constraint.get()))
            continue;
        const bool isFirst = objects.contains(active.first);
        const bool isSecond = !active.second || objects.contains(active.second);
        if (!isFirst && !objects.contains(active.second))
            continue;
        if (areAlive && isFirst && isSecond)
            moved.append(active.constraint);
        takeOut(active);
        strike(active.constraint.get());
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
    QSet<QObject *> strayed;
    for (const LayoutItem *const item : m_system.items()) {
        if (!m_host->isAncestorOf(item->view()))
            strayed.insert(item->object);
    }
    if (strayed.isEmpty())
        return;
    LayoutHosts::all().giveBackStrayed(this, m_host);
    drop(strayed, true);
}

bool LayoutEngine::isGiven(const LayoutItem &item) const
{
    const QWidget *const widget = item.widget;
    if (item.placings == 0)
        return true;
    if (widget
        && (NS::translatesAutoresizingMaskIntoConstraints(widget) || isPlacedByOtherLayout(widget)))
        return true;
    for (const QWidget *between = parentOf(item.object); between != m_host;
         between = between->parentWidget()) {
        const LayoutEngine *const lower = LayoutHosts::all().ownEngine(between);
        if (lower && lower->m_system.find(item.object))
            return true;
    }
    return false;
}

bool LayoutEngine::placesBelow(const QWidget *widget) const
{
    const auto &items = m_system.items();
    return std::any_of(items.begin(), items.end(),
                       [&](const LayoutItem *item) { return widget->isAncestorOf(item->view()); });
}

// From now on this engine gets the constraints whose nearest common ancestor is that widget.
void LayoutEngine::takeOver(QWidget *host)
{
    LayoutHosts::all().takeOver(host, this);
    connect(host, &QObject::destroyed, this, [host] { LayoutHosts::all().giveBack(host); });
}

// The lower engine remains, without constraints.
void LayoutEngine::takeOverAllOf(LayoutEngine *lower)
{
    LayoutHosts::all().takeOverFrom(lower, this);
    takeOver(lower->m_host);
    std::vector<Active> moving = lower->copiesInOrder();
    for (Active &active : moving) {
        lower->takeOut(active);
        lower->strike(active.constraint.get());
        lower->release(active.first, active.ancestor);
        lower->release(active.second, active.ancestor);
    }
    lower->request();
    for (const Active &active : moving)
        add(active.constraint, active.ancestor);
}

} // namespace Pellarvine::detail
