// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Text/NSTextRange.h"

#include <vector>

namespace Pellarvine::detail {

/// Where a regular expression matched: the whole match, then each capture group. A group that took
/// no part has the location -1.
using PatternMatch = std::vector<TextRange>;

} // namespace Pellarvine::detail
