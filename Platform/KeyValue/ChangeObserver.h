// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "KeyValue/KeyValueObserving.h"

#include <QVariant>

#include <functional>
#include <utility>

namespace Pellarvine::detail {

/// Calls a function with each new value, for any key path.
class ChangeObserver : public NS::KeyValueObserver
{
public:
    explicit ChangeObserver(std::function<void(const QVariant &value)> changed)
        : m_changed(std::move(changed))
    { }
    void observeValue(const QString &, QObject *, const NS::KeyValueChange *change) override
    {
        m_changed(change->newValue);
    }

private:
    const std::function<void(const QVariant &value)> m_changed;
};

} // namespace Pellarvine::detail
