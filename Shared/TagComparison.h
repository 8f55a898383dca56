// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QByteArrayView>

namespace Pellarvine::detail {

/// Whether a tag that came with the data equals the one computed from it, in a time that does not
/// tell where they differ. `trusted` is not empty.
PELLARVINE_INTERNAL_EXPORT bool isEqualComparingAllBytes(QByteArrayView trusted,
                                                         QByteArrayView untrusted);

} // namespace Pellarvine::detail
