// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSColor.h>
#include <pellarvine/Shared/Color.h>

#include <QString>

#include <optional>

/// @file
/// Colours from and to hexadecimal text.

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
/// The number is read as a scanner reads it: white space and "0x" may precede the digits, and
/// reading ends at the first character that is not a digit. The length of the whole text behind the
/// "#", in user-perceived characters, decides the form: "12zzzz" is RRGGBB with the value 0x12, and
/// "0xff" is RGBA. Nothing for a text of another length or without a digit at its start.
PELLARVINE_EXPORT std::optional<NS::Color> colorWithHex(QStringView hex);

/// "#RRGGBBAA" in upper-case digits. Each component in 0…1 becomes 0…255 by truncation: 0.5 is 7F.
/// Components out of range are not clamped: above 1 they take more than two digits, below 0 they
/// are written as a 32-bit two's complement. A component that is not finite or does not fit into 32
/// bits stops the process.
PELLARVINE_EXPORT QString hexStringWithAlpha(const NS::Color &color);

/// "#RRGGBB", by the same rules.
PELLARVINE_EXPORT QString hexStringWithoutAlpha(const NS::Color &color);

} // namespace Pellarvine
