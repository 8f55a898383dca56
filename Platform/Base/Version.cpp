// SPDX-License-Identifier: MIT
#include "Base/Version.h"

#define PELLARVINE_QUOTED(text) #text
// NOLINTNEXTLINE(bugprone-macro-parentheses): they would show in the text
#define PELLARVINE_TEXT(major, minor, patch) PELLARVINE_QUOTED(major.minor.patch)

namespace {

// The decimal number "major.minor": 1.1 for 1.1, 1.12 for 1.12.
constexpr double joined(int major, int minor)
{
    double scale = 10;
    while (minor >= scale)
        scale *= 10;
    return major + minor / scale;
}

} // namespace

const double PellarvineVersionNumber = joined(PELLARVINE_VERSION_MAJOR, PELLARVINE_VERSION_MINOR);

const unsigned char PellarvineVersionString[] = PELLARVINE_TEXT(
        PELLARVINE_VERSION_MAJOR, PELLARVINE_VERSION_MINOR, PELLARVINE_VERSION_PATCH);
