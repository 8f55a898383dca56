// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <algorithm>
#include <vector>

namespace Pellarvine::detail {

inline void insertSorted(std::vector<int> &indices, int index)
{
    const auto place = std::lower_bound(indices.begin(), indices.end(), index);
    if (place == indices.end() || *place != index)
        indices.insert(place, index);
}

inline void removeSorted(std::vector<int> &indices, int index)
{
    const auto place = std::lower_bound(indices.begin(), indices.end(), index);
    if (place != indices.end() && *place == index)
        indices.erase(place);
}

} // namespace Pellarvine::detail
