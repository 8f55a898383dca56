// SPDX-License-Identifier: MIT
// Not API: reading files that a user has chosen.
#pragma once

#include "Base/Global.h"

#include <optional>

QT_FORWARD_DECLARE_CLASS(QUrl)

namespace Pellarvine::detail {

/// The path of `url` if it leads to a regular local file, otherwise empty. Other files are not safe
/// to read: a pipe can wait for its writer for ever, and a device may have no end.
PELLARVINE_PRIVATE_EXPORT QString ordinaryFilePath(const QUrl &url);

/// The contents of a regular local file. Returns nothing if `url` is no such file, if it cannot be
/// read to its end, or if it does not fit into memory. Any thread.
PELLARVINE_PRIVATE_EXPORT std::optional<QByteArray> contentsOfFile(const QUrl &url);

} // namespace Pellarvine::detail
