// SPDX-License-Identifier: MIT
// Not API: cutting text that has no room, with an ellipsis in place of the part that is left out.
#pragma once

#include "Text/NSAttributedString.h"

#include <Qt>

#include <functional>

namespace Pellarvine::detail {

/// Whether there is room for a line.
using LineFits = std::function<bool(const NS::AttributedString &line)>;

/// The longest part of a line that fits together with an ellipsis, which has the attributes of the
/// character before it. Characters that a reader sees as one stay together, and no white space is
/// left beside the ellipsis. The ellipsis alone if nothing fits.
PELLARVINE_INTERNAL_EXPORT NS::AttributedString
elidedLine(const NS::AttributedString &line, Qt::TextElideMode mode, const LineFits &fits);

/// The text with each line that does not fit elided.
PELLARVINE_INTERNAL_EXPORT NS::AttributedString
elidedLines(const NS::AttributedString &text, Qt::TextElideMode mode, const LineFits &fits);

} // namespace Pellarvine::detail
