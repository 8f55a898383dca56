// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "KeyValue/KeyValueObserving.h"

#include <functional>
#include <utility>

namespace Pellarvine::detail {

/// Calls a function with each change, whatever has changed.
class ChangeObserver : public NS::KeyValueObserver
{
public:
    explicit ChangeObserver(std::function<void()> changed)
        : m_changed(std::move(changed))
    { }
    void observeValue(const QString &, QObject *, const NS::KeyValueChange *) override
    {
        m_changed();
    }

private:
    const std::function<void()> m_changed;
};

} // namespace Pellarvine::detail
