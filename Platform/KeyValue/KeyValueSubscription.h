// SPDX-License-Identifier: MIT
// Not API: how word of a change comes from an object.
#pragma once

#include "KeyValue/KeyValueAccess.h"

#include <exception>
#include <functional>
#include <string>
#include <utility>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace Pellarvine::detail {

struct Slot;

/// An exception of an observer, with the name of the observation for the warning.
struct ObserverFailure
{
    std::exception_ptr cause;
    std::string observation;
};

/// Calls the function. An exception is caught and printed as a warning.
PELLARVINE_PRIVATE_EXPORT void warnOfExceptions(const std::function<void()> &function);

/// Receives the events of its subscriptions.
class Listener
{
public:
    /// Called for an event of the subscription with that slot(). The call may destroy the listener.
    /// An exception is caught and printed as a warning, because it must not pass through the signal
    /// that was emitted. An ObserverFailure adds the name of the observation.
    virtual void fired(const Slot *slot) = 0;

protected:
    Listener() = default;
    ~Listener() = default;
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;
};

/// A subscription to a change, a signal or the destruction of an object. The destructor ends it,
/// and may run during an event. There are no events after the object was destroyed. An event comes
/// on the thread that makes the change; subscriptions may be made on any thread, but not while
/// another thread changes the object.
class Subscription
{
public:
    Subscription() = default;
    Subscription(Subscription &&other) noexcept
        : m_slot(std::exchange(other.m_slot, nullptr))
    { }
    Subscription &operator=(Subscription &&other) noexcept
    {
        std::swap(m_slot, other.m_slot);
        return *this;
    }
    ~Subscription();

    /// To the changes of a property. `access` is the result of findProperty(). Throws if the
    /// property can change unnoticed. Empty for a CONSTANT property.
    static Subscription toChanges(QObject *object, const Access &access, const QString &key,
                                  const KeyPath &path, Listener *listener);
    /// To a signal; `signal` is its index.
    static Subscription toSignal(QObject *object, int signal, Listener *listener);
    static Subscription toDestruction(QObject *object, Listener *listener);

    /// The argument of fired(). Null for an empty subscription.
    const Slot *slot() const { return m_slot; }

private:
    explicit Subscription(Slot *slot)
        : m_slot(slot)
    { }

    Slot *m_slot = nullptr;
};

} // namespace Pellarvine::detail
