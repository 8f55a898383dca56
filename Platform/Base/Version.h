// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

/// @file
/// The version that a program is compiled against, and the one that it runs with. Semantic
/// versioning; the build reads it here.

#define PELLARVINE_VERSION_MAJOR 1 ///< goes up when what worked may no longer
#define PELLARVINE_VERSION_MINOR 0 ///< goes up with new API
#define PELLARVINE_VERSION_PATCH 0 ///< goes up with repairs alone

extern "C" {

/// The version of the library that is loaded: major and minor as a decimal number, 1.2 for 1.2.0.
PELLARVINE_EXPORT extern const double PellarvineVersionNumber;

/// The version of the library that is loaded as text ("1.0.0"), ended by a zero byte.
PELLARVINE_EXPORT extern const unsigned char PellarvineVersionString[];
}
