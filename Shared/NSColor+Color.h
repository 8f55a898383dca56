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

/// Reads a colour from hexadecimal text: RGB, RGBA, RRGGBB or RRGGBBAA, with or without one "#"
/// before it.
///
///     using namespace Pellarvine;
///     const auto turquoise = colorWithHex(u"#1abc9c"); // Palette<NS::Color>::turquoise()
///     const auto white = colorWithHex(u"fff");         // NS::Color::white()
///     const auto nothing = colorWithHex(u"12345");     // std::nullopt: no form has five digits
///
/// The number is read like a scanner does: white space and a "0x" may stand before its digits, and
/// reading ends at the first character that is no digit. The form follows from the length of the
/// whole text behind the "#", in user-perceived characters, so "12zzzz" is RRGGBB with the value
/// 0x12, and "0xff" is RGBA. Nothing for a text without a leading digit or of another length.
PELLARVINE_EXPORT std::optional<NS::Color> colorWithHex(QStringView hex);

/// "#RRGGBBAA" in upper-case digits, each component's 0…1 cut, not rounded, to 0…255: 0.5 is 7F.
/// Components out of range are not clamped: above 1 they take more than two digits, below 0 they
/// read as a 32-bit two's complement. One that is not finite or does not fit 32 bits stops the
/// process.
PELLARVINE_EXPORT QString hexStringWithAlpha(const NS::Color &color);

/// "#RRGGBB", made like `hexStringWithAlpha`.
PELLARVINE_EXPORT QString hexStringWithoutAlpha(const NS::Color &color);

} // namespace Pellarvine
