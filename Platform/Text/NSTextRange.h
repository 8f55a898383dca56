// SPDX-License-Identifier: MIT
// Not API: ranges of a text.
#pragma once

#include <QtGlobal>

#include <algorithm>

namespace Pellarvine::detail {

/// A range of UTF-16 units.
struct TextRange
{
    qsizetype location = 0;
    qsizetype length = 0;

    qsizetype end() const { return location + length; }
    friend bool operator==(const TextRange &, const TextRange &) = default;
};

/// The part of a range inside a text of that size. Empty if the length is negative.
inline TextRange rangeInside(qsizetype location, qsizetype length, qsizetype size)
{
    const qsizetype start = std::clamp(location, qsizetype(0), size);
    if (length <= 0)
        return { start, 0 };
    // Avoids sums that could overflow.
    if (location < 0)
        return { 0, std::clamp(location + length, qsizetype(0), size) };
    return { start, std::min(length, size - start) };
}

} // namespace Pellarvine::detail
