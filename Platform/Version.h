// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

// The version that a program is compiled against. Semantic versioning; the build reads it here.
#define PELLARVINE_VERSION_MAJOR 0
#define PELLARVINE_VERSION_MINOR 1
#define PELLARVINE_VERSION_PATCH 0

extern "C" {

/// The version of the library that is loaded: major and minor as a decimal number, 0.1 for 0.1.0.
PELLARVINE_EXPORT extern const double PellarvineVersionNumber;

/// The version of the library that is loaded as text ("0.1.0"), ended by a zero byte.
PELLARVINE_EXPORT extern const unsigned char PellarvineVersionString[];
}
