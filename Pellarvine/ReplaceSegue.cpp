// SPDX-License-Identifier: MIT
#include "Pellarvine/ReplaceSegue.h"

#include "Pellarvine/NavigationController.h"
#include "Pellarvine/NavigationPlacement.h"

#include <QPointer>

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isRegistered =
        (NS::StoryboardSegue::registerClass<ReplaceSegue>(), true);

} // namespace

ReplaceSegue::~ReplaceSegue() = default;

void ReplaceSegue::perform()
{
    NavigationController *const found = findNavigationController();
    const QPointer<NavigationController> navigation = found;
    const QPointer<NS::ViewController> destination =
            qobject_cast<NS::ViewController *>(destinationController());
    if (!destination)
        return;
    destination->view(); // what it throws leaves everything as it was
    if (!detail::canBePlaced(destination, navigation))
        return;
    QList<QPointer<NS::ViewController>> stack;
    for (NS::ViewController *const controller : found->navigationStack())
        stack.append(controller);
    QList<QPointer<NS::ViewController>> removed = detail::takeAway(stack);
    if (navigation && destination && detail::place(destination, navigation))
        navigation->setNavigationStack({ destination });
    removed.removeAll(navigation.data());
    detail::deleteUnowned(removed);
}

} // namespace Pellarvine
