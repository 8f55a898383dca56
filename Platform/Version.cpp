// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/Version.h>

#define PELLARVINE_QUOTED(text) #text
#define PELLARVINE_TEXT(major, minor, patch) PELLARVINE_QUOTED(major.minor.patch)
#define PELLARVINE_JOINED(major, minor) major##.##minor
#define PELLARVINE_NUMBER(major, minor) PELLARVINE_JOINED(major, minor)

const double PellarvineVersionNumber =
        PELLARVINE_NUMBER(PELLARVINE_VERSION_MAJOR, PELLARVINE_VERSION_MINOR);

const unsigned char PellarvineVersionString[] = PELLARVINE_TEXT(
        PELLARVINE_VERSION_MAJOR, PELLARVINE_VERSION_MINOR, PELLARVINE_VERSION_PATCH);
