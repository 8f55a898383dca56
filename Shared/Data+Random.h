// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

/// @file
/// Cryptographically secure random bytes:
///
///     const Pellarvine::Data token = Pellarvine::secureRandomData(32);

namespace Pellarvine {

/// `length` bytes from the system's secure random source; empty for 0 and below. Any thread.
/// A source that fails stops the process with "Error: could not generate secure random data: " and
/// the numeric status.
PELLARVINE_EXPORT Data secureRandomData(qsizetype length);

} // namespace Pellarvine
