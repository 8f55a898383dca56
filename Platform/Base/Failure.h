// SPDX-License-Identifier: MIT
#pragma once

#include "Base/Global.h"

#include <exception>
#include <string_view>

// The library's own messages leave through these two functions and through no others, so that a
// host can rely on where they appear. Bad input data is neither: it is thrown or answered.

namespace Pellarvine::detail {

/// A failed service of the system or a broken invariant: writes `message` and a newline to
/// standard error and aborts the process.
[[noreturn]] PELLARVINE_PRIVATE_EXPORT void fatalError(std::string_view message);

/// A problem that can be survived: writes `message` and a newline to standard output.
PELLARVINE_PRIVATE_EXPORT void printWarning(std::string_view message);

/// The same for what an exception says, behind "Warning: ".
PELLARVINE_PRIVATE_EXPORT void printWarning(const std::exception &error);

} // namespace Pellarvine::detail
