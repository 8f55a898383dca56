// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QByteArrayView>

namespace Pellarvine::detail {

/// Whether the tag of a container (`untrusted`) equals the computed tag (`trusted`, not empty). The
/// time does not depend on the first difference, so an attacker learns nothing from it.
PELLARVINE_INTERNAL_EXPORT bool isEqualComparingAllBytes(QByteArrayView trusted,
                                                         QByteArrayView untrusted);

} // namespace Pellarvine::detail
