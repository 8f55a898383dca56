// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QVarLengthArray>

#include <algorithm>

namespace Pellarvine::detail {

/// Most are one or two.
using SortedIndices = QVarLengthArray<int, 2>;

inline void insertSorted(SortedIndices &indices, int index)
{
    const auto place = std::lower_bound(indices.begin(), indices.end(), index);
    if (place == indices.end() || *place != index)
        indices.emplace(place, index); // insert() moves the others one by one
}

inline void removeSorted(SortedIndices &indices, int index)
{
    const auto place = std::lower_bound(indices.begin(), indices.end(), index);
    if (place != indices.end() && *place == index)
        indices.erase(place);
}

} // namespace Pellarvine::detail
