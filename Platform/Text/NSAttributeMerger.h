// SPDX-License-Identifier: MIT
// Not API: adds attributes to many runs.
#pragma once

#include "Text/NSAttributes.h"

#include <algorithm>
#include <array>

namespace Pellarvine::detail {

/// Adds one set of attributes to another, and caches the last results. The runs of a text have few
/// different sets, which then share their memory.
class AttributeMerger
{
public:
    const NS::Attributes &merged(const NS::Attributes &current, const NS::Attributes &added)
    {
        const auto isKnown = [&](const Result &result) {
            return result.current.isSharedWith(current) && result.added == added;
        };
        const auto known = std::find_if(m_results.cbegin(), m_results.cend(), isKnown);
        if (known != m_results.cend())
            return known->merged;
        Result &result = m_results[m_oldest];
        m_oldest = (m_oldest + 1) % m_results.size();
        result = { current, added, current };
        result.merged.insert(added);
        return result.merged;
    }

private:
    // Initially each entry says that nothing added to nothing is nothing.
    struct Result
    {
        NS::Attributes current;
        NS::Attributes added;
        NS::Attributes merged;
    };

    std::array<Result, 4> m_results;
    std::size_t m_oldest = 0;
};

} // namespace Pellarvine::detail
