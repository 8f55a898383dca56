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

/// What an observer threw, and the name of the observation.
struct ObserverFailure
{
    std::exception_ptr cause;
    std::string observation;
};

/// Calls the function, and prints what it throws as a warning, as for a Listener.
PELLARVINE_PRIVATE_EXPORT void warnOfExceptions(const std::function<void()> &function);

/// Who is told when something happens to one of its subscriptions.
class Listener
{
public:
    /// `slot` tells which. The listener may be destroyed in this call. What it throws is caught and
    /// printed as a warning, with the name that an ObserverFailure has: an exception must not
    /// travel through the signal that brought the word.
    virtual void fired(const Slot *slot) = 0;

protected:
    Listener() = default;
    ~Listener() = default;
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;
};

/// Ends when it is destroyed, also while it fires; silent once the object is gone. Word comes on
/// the thread where the change is made.
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

    /// To the changes of a property that findProperty() found. Throws if it can change without
    /// saying so; a CONSTANT one gives an empty subscription.
    static Subscription toChanges(QObject *object, const Access &access, const QString &key,
                                  const KeyPath &path, Listener *listener);
    /// To a signal, by its index.
    static Subscription toSignal(QObject *object, int signal, Listener *listener);
    static Subscription toDestruction(QObject *object, Listener *listener);

    /// What fired() is told; null for an empty subscription.
    const Slot *slot() const { return m_slot; }

private:
    explicit Subscription(Slot *slot)
        : m_slot(slot)
    { }

    Slot *m_slot = nullptr;
};

} // namespace Pellarvine::detail
