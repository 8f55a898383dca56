// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

/// @file
/// Cryptographically secure random bytes:
///
///     const Pellarvine::Data token = Pellarvine::secureRandomData(32);

namespace Pellarvine {

/// `length` bytes from the system's secure random source. Empty if `length` is 0 or less. Any
/// thread. If the source fails, the process is aborted with the message "Error: could not generate
/// secure random data: " and the status.
PELLARVINE_EXPORT Data secureRandomData(qsizetype length);

} // namespace Pellarvine
