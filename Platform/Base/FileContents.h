// SPDX-License-Identifier: MIT
// Not API: reading files that a user has chosen.
#pragma once

#include "Base/Global.h"

#include <optional>

QT_FORWARD_DECLARE_CLASS(QUrl)

namespace Pellarvine::detail {

/// The path of a local file that is an ordinary one, following links; else empty. Only those can be
/// read to their end: a pipe would wait for a writer, a device may have no end.
PELLARVINE_PRIVATE_EXPORT QString ordinaryFilePath(const QUrl &url);

/// The whole file, byte for byte; nothing if it is no ordinary local file, cannot be read to its
/// end, or does not fit in memory. Any thread.
PELLARVINE_PRIVATE_EXPORT std::optional<QByteArray> contentsOfFile(const QUrl &url);

} // namespace Pellarvine::detail
