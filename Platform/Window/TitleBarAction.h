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

/// The user's setting for that click on title bars. Without a setting, a double click zooms, a
/// right click opens the window menu, and a middle click does nothing.
PELLARVINE_INTERNAL_EXPORT TitleBarAction titleBarAction(TitleBarClick click);

} // namespace Pellarvine::detail
