// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Text/NSTextRange.h"

#include <vector>

namespace Pellarvine::detail {

/// A match of a regular expression: the range of the whole match, then of each capture group. A
/// group that took no part has the location -1.
using PatternMatch = std::vector<TextRange>;

} // namespace Pellarvine::detail
