// SPDX-License-Identifier: MIT
#include "Layout/NSLayoutAmbiguity.h"

#include "Layout/LayoutEngine.h"
#include "Layout/LayoutHosts.h"

#include <QWidget>

#include <algorithm>

namespace Pellarvine::detail {

LayoutEngine *LayoutEngine::placing(const QWidget *widget)
{
    for (const QWidget *host = widget; host && !host->isWindow();) {
        host = host->parentWidget();
        LayoutEngine *const engine = LayoutHosts::all().ownEngine(host);
        if (!engine)
            continue;
        engine->refresh();
        const LayoutItem *const item = engine->m_system.find(widget);
        if (item && !item->isGiven)
            return engine;
    }
    return nullptr;
}

bool LayoutEngine::isDetermined(const QWidget *widget)
{
    m_system.solve(m_host->size());
    return m_system.isDetermined(*m_system.find(widget));
}

void LayoutEngine::exercise(const QWidget *widget)
{
    const QRect before = widget->geometry();
    m_system.solve(m_host->size());
    if (!placeItems())
        return;
    const LayoutItem *const item = m_system.find(widget);
    if (!item || widget->geometry() != before)
        return;
    m_system.moveElsewhere(*item);
    placeItems();
}

std::vector<std::shared_ptr<NS::LayoutConstraint>>
LayoutEngine::affecting(const QWidget *widget, Qt::Orientation orientation)
{
    m_system.solve(m_host->size());
    const auto handles = m_system.determining(*m_system.find(widget), orientation);
    std::vector<std::shared_ptr<NS::LayoutConstraint>> all;
    for (const Active *const active : m_inOrder) {
        if (active->handle
            && std::find(handles.begin(), handles.end(), *active->handle) != handles.end())
            all.push_back(active->constraint);
    }
    return all;
}

} // namespace Pellarvine::detail

namespace NS {

using Pellarvine::detail::LayoutEngine;

bool hasAmbiguousLayout(const QWidget *widget)
{
    LayoutEngine *const engine = LayoutEngine::placing(widget);
    return engine && !engine->isDetermined(widget);
}

void exerciseAmbiguity(QWidget *widget)
{
    LayoutEngine *const engine = LayoutEngine::placing(widget);
    if (engine && !engine->isDetermined(widget))
        engine->exercise(widget);
}

QList<std::shared_ptr<LayoutConstraint>> constraintsAffectingLayout(const QWidget *widget,
                                                                    Qt::Orientation orientation)
{
    QList<std::shared_ptr<LayoutConstraint>> affecting;
    if (LayoutEngine *const engine = LayoutEngine::placing(widget)) {
        for (const auto &constraint : engine->affecting(widget, orientation))
            affecting.append(constraint);
    }
    return affecting;
}

} // namespace NS
