// SPDX-License-Identifier: MIT
// Not API.
#pragma once

/// Levels of what is wanted without the user's saying so, among the priorities 1...1000.
namespace Pellarvine::detail::LayoutLevel {

inline constexpr double container = 999.5; ///< the host's size, and frames that are given
inline constexpr double explicitLimit = 990.0; ///< QWidget's own minimum and maximum size
inline constexpr double minimumHint = 900.0;
inline constexpr double shrinking = 760.0; ///< to find the smallest size: above resistance
inline constexpr double growing = 740.0; ///< to find the largest size: below resistance
inline constexpr double expanding = 100.0;
inline constexpr double elsewhere = 0.6; ///< another place for an ambiguous widget
inline constexpr double unwanted = 0.5; ///< a length that nobody asks for is 0

} // namespace Pellarvine::detail::LayoutLevel
