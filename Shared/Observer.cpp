// SPDX-License-Identifier: MIT
#include "Shared/Observer.h"

#include "Base/Failure.h"
#include "KeyValue/KeyValuePath.h"

#include <memory>
#include <stdexcept>
#include <utility>

namespace Pellarvine {

struct Observer::Private
{
    Callback callback;
    int calls = 0; // the number of running calls
    bool isGone = false;

    // Keeps the callback alive until the last call has returned.
    class Call
    {
    public:
        explicit Call(Private *called)
            : d(called)
        {
            ++d->calls;
        }
        Call(const Call &) = delete;
        Call &operator=(const Call &) = delete;
        ~Call()
        {
            if (--d->calls == 0 && d->isGone)
                delete d;
        }

    private:
        Private *d;
    };
};

Observer::Observer(NS::ObjectReference object, const QString &keyPath, bool fireInitial,
                   Callback callback)
{
    auto owned = std::make_unique<Private>();
    owned->callback = std::move(callback);
    d = owned.get();
    detail::Registration::add(std::move(object), this, keyPath,
                              fireInitial && owned->callback
                                      ? NS::KeyValueObservingOptions::newValueAndInitial
                                      : NS::KeyValueObservingOptions::newValue);
    if (!owned->callback)
        throw std::invalid_argument("an observer needs a callback");
    static_cast<void>(owned.release());
}

Observer::Observer(NS::ObjectReference object, const QString &keyPath, Callback callback)
    : Observer(std::move(object), keyPath, true, std::move(callback))
{ }

Observer::~Observer()
{
    d->isGone = true;
    if (d->calls == 0)
        delete d;
}

void Observer::observeValue(const QString &, QObject *, const NS::KeyValueChange *change)
{
    if (!change)
        detail::fatalError("Error: an observer was notified without a change");
    const Private::Call call(d);
    d->callback(change->newValue);
}

} // namespace Pellarvine
