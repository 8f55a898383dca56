// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

namespace Pellarvine::detail {

enum class TitleBarClick {
    doubleClick,
    middle,
    right
};

enum class TitleBarAction {
    zoom,
    miniaturize,
    lower,
    windowMenu,
    none
};

/// What the user has set for that click on title bars. Where no setting is known, a double click
/// zooms, the right button opens the window menu, and the middle one does nothing.
PELLARVINE_INTERNAL_EXPORT TitleBarAction titleBarAction(TitleBarClick click);

} // namespace Pellarvine::detail
