// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

/// @file
/// Bytes that nobody can guess.

namespace Pellarvine {

/// `length` bytes from the system's cryptographically secure random source; empty for 0 and below.
/// A source that fails stops the process with "Error: could not generate secure random data: " and
/// the numeric status.
PELLARVINE_EXPORT Data secureRandomData(qsizetype length);

} // namespace Pellarvine
