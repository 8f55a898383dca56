// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

/// @file
/// The version of the library at compile time and at run time. Versions are semantic:
///
///     #if PELLARVINE_VERSION_MAJOR > 1 || PELLARVINE_VERSION_MINOR >= 2
///         view->repaint(); // if that were new in 1.2
///     #endif
///     qInfo("runs with Pellarvine %s", reinterpret_cast<const char *>(PellarvineVersionString));
///
/// The variables are constant. Any thread may read them.

#define PELLARVINE_VERSION_MAJOR 1 ///< increases with incompatible changes
#define PELLARVINE_VERSION_MINOR 0 ///< increases with new API
#define PELLARVINE_VERSION_PATCH 0 ///< increases with fixes

extern "C" {

/// The version of the library that is loaded: major and minor as a decimal number, 1.2 for 1.2.0.
PELLARVINE_EXPORT extern const double PellarvineVersionNumber;

/// The version of the library that is loaded as text ("1.0.0"), ended by a zero byte.
PELLARVINE_EXPORT extern const unsigned char PellarvineVersionString[];
}
