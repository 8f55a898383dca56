// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <string_view>

// The library's own messages leave through these two functions and through no others, so that a
// host can rely on where they appear. Bad input data is neither: it is thrown or answered.

namespace Pellarvine {

/// A failed service of the system or a broken invariant: writes `message` and a newline to
/// standard error and aborts the process.
[[noreturn]] PELLARVINE_INTERNAL_EXPORT void fatalError(std::string_view message);

/// A problem that can be survived: writes `message` and a newline to standard output.
PELLARVINE_INTERNAL_EXPORT void printWarning(std::string_view message);

} // namespace Pellarvine
