// SPDX-License-Identifier: MIT
// Not API: reading files that a user has chosen.
#pragma once

#include "Base/Global.h"

#include <optional>

QT_FORWARD_DECLARE_CLASS(QUrl)

namespace Pellarvine::detail {

/// The path of a regular local file, after all links; otherwise empty. A pipe would wait for a
/// writer, and a device may have no end.
PELLARVINE_PRIVATE_EXPORT QString ordinaryFilePath(const QUrl &url);

/// The contents of a regular local file. Nothing if it is not one, cannot be read to its end, or
/// does not fit into memory. Any thread.
PELLARVINE_PRIVATE_EXPORT std::optional<QByteArray> contentsOfFile(const QUrl &url);

} // namespace Pellarvine::detail
