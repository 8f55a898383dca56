// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSColor.h>
#include <pellarvine/Shared/Color.h>

#include <QString>

#include <optional>

/// @file
/// Colours from and to hexadecimal text. The functions may be called from any thread.

namespace Pellarvine {

static_assert(Color<NS::Color>);

/// Reads a colour from hexadecimal text: RGB, RGBA, RRGGBB or RRGGBBAA, with an optional "#" before
/// it.
///
///     using namespace Pellarvine;
///     const auto turquoise = colorWithHex(u"#1abc9c"); // Palette<NS::Color>::turquoise()
///     const auto white = colorWithHex(u"fff");         // NS::Color::white()
///     const auto nothing = colorWithHex(u"12345");     // std::nullopt: no form has five digits
///
/// White space and "0x" may precede the digits, and reading ends at the first character that is not
/// a digit. The form depends on the length of the whole text after the "#", in user-perceived
/// characters: "12zzzz" is RRGGBB with the value 0x12, and "0xff" is RGBA. Returns nothing for a
/// text of another length, and for one that does not begin with a digit.
PELLARVINE_EXPORT std::optional<NS::Color> colorWithHex(QStringView hex);

/// The colour as "#RRGGBBAA" in upper-case digits. Each component in 0…1 becomes 0…255 by
/// truncation: 0.5 is 7F. Other components are not clamped: one above 1 may have more than two
/// digits, and one below 0 is written as a 32-bit two's complement. A component that is not finite
/// or does not fit into 32 bits aborts the process.
PELLARVINE_EXPORT QString hexStringWithAlpha(const NS::Color &color);

/// The colour as "#RRGGBB", by the same rules.
PELLARVINE_EXPORT QString hexStringWithoutAlpha(const NS::Color &color);

} // namespace Pellarvine
