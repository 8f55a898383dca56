// SPDX-License-Identifier: MIT
#include "Window/WindowPlace.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace Pellarvine::detail {

void moveToCentre(QWidget *window, const QWidget *other)
{
    const QRect screen = (other ? other : window)->screen()->availableGeometry();
    QRect place = window->rect();
    place.moveCenter(other ? other->frameGeometry().center() : screen.center());
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    place.moveLeft(std::max(place.left(), screen.left()));
    place.moveTop(std::max(place.top(), screen.top()));
    window->move(place.topLeft());
}

} // namespace Pellarvine::detail
