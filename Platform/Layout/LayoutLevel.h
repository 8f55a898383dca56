// SPDX-License-Identifier: MIT
// Not API.
#pragma once

/// Priorities of the constraints that the layout adds itself, among those of 1 to 1000.
namespace Pellarvine::detail::LayoutLevel {

inline constexpr double container = 999.5; ///< the size of the host, and given frames
inline constexpr double explicitLimit = 990.0; ///< the minimum and maximum size of a QWidget
inline constexpr double minimumHint = 900.0;
inline constexpr double shrinking = 760.0; ///< of size 0, to find the minimum size
inline constexpr double growing = 740.0; ///< of a large size, to find the maximum size
inline constexpr double expanding = 100.0;
inline constexpr double elsewhere = 0.6; ///< of another place for an ambiguous widget
inline constexpr double unwanted = 0.5; ///< of length 0, without a size hint

} // namespace Pellarvine::detail::LayoutLevel
