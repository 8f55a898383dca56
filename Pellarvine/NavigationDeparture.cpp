// SPDX-License-Identifier: MIT
#include "Pellarvine/NavigationDeparture.h"

#include "Scenes/NSViewController.h"

#include <algorithm>

namespace Pellarvine::detail {

Departure::Departure(const NS::ViewController *container)
    : m_container(container)
{
    s_all.append(this);
}

Departure::~Departure()
{
    s_all.removeOne(this);
    for (const QPointer<NS::ViewController> &controller : m_children) {
        if (controller && !controller->parent())
            controller->deleteLater();
    }
}

void Departure::takeAway(const QPointer<NS::ViewController> &controller)
{
    if (!controller || hasTaken(controller))
        return;
    m_taken.append(controller);
    if (controller->parentViewController() && controller != m_container)
        m_children.append(controller);
    controller->removeFromParentViewController();
    QWidget *const view = controller && controller->isViewLoaded() ? controller->view() : nullptr;
    if (view)
        view->setParent(nullptr);
}

bool Departure::hasTaken(const NS::ViewController *controller) const
{
    return m_taken.contains(controller);
}

bool Departure::isLeaving(const NS::ViewController *controller)
{
    return !controller->parentViewController()
           && std::any_of(s_all.cbegin(), s_all.cend(),
                          [&](const Departure *one) { return one->hasTaken(controller); });
}

} // namespace Pellarvine::detail
