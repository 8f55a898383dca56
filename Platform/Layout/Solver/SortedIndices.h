// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QVarLengthArray>

#include <algorithm>

namespace Pellarvine::detail {

/// Most are few.
using SortedIndices = QVarLengthArray<int, 4>;

inline void insertSorted(SortedIndices &indices, int index)
{
    const auto place = std::lower_bound(indices.begin(), indices.end(), index);
    if (place == indices.end() || *place != index)
        indices.emplace(place, index); // insert() moves one by one
}

inline void removeSorted(SortedIndices &indices, int index)
{
    const auto place = std::lower_bound(indices.begin(), indices.end(), index);
    if (place != indices.end() && *place == index)
        indices.erase(place);
}

} // namespace Pellarvine::detail
