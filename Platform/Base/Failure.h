// SPDX-License-Identifier: MIT
#pragma once

#include "Base/Global.h"

#include <exception>
#include <string_view>

// All messages of the library are printed by these functions, so a program can rely on their
// destination. Bad input is not printed: the library throws, or returns a result that says so.
// Any thread.

namespace Pellarvine::detail {

/// A failed service of the system or a broken invariant: writes `message` and a newline to
/// standard error and aborts the process.
[[noreturn]] PELLARVINE_PRIVATE_EXPORT void fatalError(std::string_view message);

/// A warning: writes `message` and a newline to standard output.
PELLARVINE_PRIVATE_EXPORT void printWarning(std::string_view message);

/// The same for the message of an exception, after "Warning: ".
PELLARVINE_PRIVATE_EXPORT void printWarning(const std::exception &error);

} // namespace Pellarvine::detail
