// SPDX-License-Identifier: MIT
#include "Pellarvine/UnwindSegue.h"

#include "Pellarvine/NavigationController.h"
#include "Pellarvine/NavigationDeparture.h"
#include "Pellarvine/NavigationPlacement.h"

#include <QPointer>
#include <QString>

#include <algorithm>

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isUnwindSegueRegistered =
        (NS::StoryboardSegue::registerClass<UnwindSegue>(), true);

// The controller itself or the nearest parent that is a navigation controller. Null if there is
// none.
NavigationController *navigationAround(NS::ViewController *controller)
{
    while (controller && !qobject_cast<NavigationController *>(controller))
        controller = controller->parentViewController();
    return static_cast<NavigationController *>(controller);
}

// The controllers above this one, the uppermost first. Empty if it is not in the navigation
// controller.
QList<QPointer<NS::ViewController>> above(NS::ViewController *controller,
                                          const NavigationController *navigation)
{
    QList<QPointer<NS::ViewController>> found;
    for (const QList<NS::ViewController *> &all :
         { detail::screens(navigation), navigation->navigationStack() }) {
        for (qsizetype i = all.size() - 1;
             i > all.lastIndexOf(controller) && all.contains(controller); --i) {
            if (!found.contains(all[i]))
                found.append(all[i]);
        }
    }
    return found;
}

} // namespace

UnwindSegue::~UnwindSegue() = default;

void UnwindSegue::perform()
{
    const QPointer<NS::ViewController> destination =
            qobject_cast<NS::ViewController *>(destinationController());
    QPointer<NavigationController> navigation = detail::navigationControllerOf(*this);
    QList<QPointer<NS::ViewController>> leaving;
    while (destination && navigation && leaving.isEmpty()) {
        leaving = above(destination, navigation);
        if (leaving.isEmpty())
            navigation = navigationAround(navigation->parentViewController());
    }
    for (const QPointer<NS::ViewController> &controller : std::as_const(leaving)) {
        if (controller && !controller->canUnwind(this))
            return;
    }
    if (leaving.isEmpty() || !destination || !navigation)
        return;
    destination->prepareForUnwind(this);
    detail::Departure departure(navigation);
    for (const QPointer<NS::ViewController> &controller : std::as_const(leaving))
        departure.takeAway(controller);
    if (navigation) {
        QList<NS::ViewController *> stack = navigation->navigationStack();
        stack.removeIf([&](NS::ViewController *controller) {
            return leaving.contains(controller) && controller != destination;
        });
        navigation->setNavigationStack(stack);
    }
}

QObject *UnwindSegue::existingDestination(NS::ViewController *source, const QString &scene)
{
    const NS::ViewController *inside = source;
    for (NavigationController *navigation = navigationAround(source); navigation;
         navigation = navigationAround(navigation->parentViewController())) {
        const QList<NS::ViewController *> all = detail::screens(navigation);
        // The screen that is or contains the source.
        while (inside != navigation && inside->parentViewController()
               && inside->parentViewController() != navigation)
            inside = inside->parentViewController();
        auto place = std::find(all.crbegin(), all.crend(), inside);
        place = place == all.crend() ? all.crbegin() : place + 1;
        const auto found = std::find_if(place, all.crend(), [&](const NS::ViewController *one) {
            return one->storyboard() == source->storyboard() && one->sceneIdentifier() == scene;
        });
        if (found != all.crend())
            return *found;
        inside = navigation;
    }
    return nullptr;
}

} // namespace Pellarvine
