// SPDX-License-Identifier: MIT
#include "KeyValue/BindingGroup.h"

#include "Base/Failure.h"
#include "KeyValue/KeyValueSubscription.h"

#include <QHash>
#include <QPointer>
#include <QScopeGuard>

#include <utility>
#include <vector>

namespace Pellarvine {

struct BindingGroup::Private
{
    std::vector<std::function<void()>> pending; // empty after forget()
    QHash<const void *, std::size_t> places; // in `pending`, by key
    std::size_t next = 0; // the place of the next change to carry
    bool isFlushing = false;

    // A change that is carried may end bindings that are still pending, and may delete the group,
    // whose destructor then carries the others.
    static void carryAll(const QPointer<BindingGroup> &group)
    {
        while (group && group->d->next < group->d->pending.size()) {
            Private &d = *group->d;
            if (const auto carry = std::exchange(d.pending[d.next++], nullptr))
                detail::warnOfExceptions(carry);
        }
    }
};

BindingGroup::BindingGroup(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{ }

BindingGroup::~BindingGroup()
{
    d->isFlushing = true;
    Private::carryAll(this);
}

bool BindingGroup::isPending() const
{
    return !d->places.isEmpty();
}

bool BindingGroup::defer(const void *key, std::function<void()> carry)
{
    if (d->isFlushing)
        return false;
    const auto place = d->places.constFind(key);
    if (place != d->places.cend()) {
        d->pending[*place] = std::move(carry);
        return true;
    }
    if (d->pending.empty())
        QMetaObject::invokeMethod(this, &BindingGroup::flush, Qt::QueuedConnection);
    d->places.insert(key, d->pending.size());
    d->pending.push_back(std::move(carry));
    return true;
}

void BindingGroup::forget(const void *key)
{
    const auto place = d->places.constFind(key);
    if (place == d->places.cend())
        return;
    d->pending[*place] = nullptr;
    d->places.erase(place);
}

void BindingGroup::flush()
{
    if (d->isFlushing)
        return;
    d->isFlushing = true;
    const QPointer<BindingGroup> self = this;
    Private::carryAll(self);
    if (!self)
        return;
    d->pending.clear();
    d->places.clear();
    d->next = 0;
    d->isFlushing = false;
}

} // namespace Pellarvine
