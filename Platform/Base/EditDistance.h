// SPDX-License-Identifier: MIT
// Not API: how similar two names are.
#pragma once

#include "Base/Global.h"

#include <QStringView>

namespace Pellarvine::detail {

/// The number of letters to add, remove or replace, or of neighbours to swap: 1 for "nmae" and
/// "name". No letter is changed twice.
PELLARVINE_PRIVATE_EXPORT qsizetype editDistance(QStringView one, QStringView other);

} // namespace Pellarvine::detail
