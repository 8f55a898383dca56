// SPDX-License-Identifier: MIT
// Not API: what property setters have in common.
#pragma once

#include <utility>

namespace Pellarvine::detail {

/// Stores `value` in `field` unless it is equal already. True if the field has changed:
///
///     if (detail::assign(d->title, title))
///         Q_EMIT titleChanged(title);
template <typename Field, typename Value>
[[nodiscard]] bool assign(Field &field, Value &&value)
{
    if (field == value)
        return false;
    field = std::forward<Value>(value);
    return true;
}

} // namespace Pellarvine::detail
