// SPDX-License-Identifier: MIT
// Not API: pictures from their files' bytes.
#pragma once

#include "Base/Global.h"

QT_FORWARD_DECLARE_CLASS(QImage)

namespace Pellarvine::detail {

/// The first frame of the picture, upright as its camera was held; null if the bytes are none.
/// Any thread.
PELLARVINE_PRIVATE_EXPORT QImage decodedImage(const QByteArray &bytes);

} // namespace Pellarvine::detail
