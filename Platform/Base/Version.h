// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

/// @file
/// The version of the library at compile time and at run time, by semantic versioning.

#define PELLARVINE_VERSION_MAJOR 1 ///< increases with incompatible changes
#define PELLARVINE_VERSION_MINOR 0 ///< increases with new API
#define PELLARVINE_VERSION_PATCH 0 ///< increases with fixes

extern "C" {

/// The version of the library that is loaded: major and minor as a decimal number, 1.2 for 1.2.0.
PELLARVINE_EXPORT extern const double PellarvineVersionNumber;

/// The version of the library that is loaded as text ("1.0.0"), ended by a zero byte.
PELLARVINE_EXPORT extern const unsigned char PellarvineVersionString[];
}
