// SPDX-License-Identifier: MIT
#include "KeyValue/KeyValuePath.h"

#include "Base/Failure.h"
#include "KeyValue/KeyValueCoding.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace Pellarvine::detail {

struct WatchedPath::Link
{
    QObject *object = nullptr;
    Access access;
    int firstKey = 0;
    Subscription changes;
};

struct WatchedPath::Walk
{
    Keys keys;
    std::vector<Link> middles; // the links before the leaf, the root first
    QObject *leaf = nullptr; // null if the path ends early
    int leafFirstKey = 0;
    std::vector<Subscription> destructions; // of the objects of all links
    // An object on the path does not report its changes, so each access follows the path again.
    bool isVolatile = false;
    bool isObserving = false;

    // The target of a link's keys: another object, or the value at the end.
    struct Next
    {
        QObject *object = nullptr;
        int firstKey = 0;
        bool isEnd = false;
    };

    Next next(QObject *holder, const Access &access, int firstKey, const KeyPath &path) const
    {
        const int end = int(keys.size());
        int key = firstKey + 1;
        if (key == end)
            return { nullptr, key, true };
        QVariant value = readProperty(holder, access, keys.at(firstKey));
        for (; key < end; ++key) {
            if (const auto held = object(value))
                return { *held, key };
            if (!value.isValid())
                return {};
            value = valueInside(value, keys.at(key), path);
        }
        return { nullptr, key, true };
    }
};

WatchedPath::WatchedPath(NS::ObjectReference root, QString keyPath, Purpose purpose)
    : m_root(std::move(root))
    , m_keyPath(std::move(keyPath))
{
    QObject *const object = m_root.get();
    if (object && m_keyPath.contains(u'.')) {
        m_walk = std::make_unique<Walk>();
        m_walk->isObserving = purpose == observing;
        m_walk->keys = keys(object, m_keyPath);
        build(object, 0);
        return;
    }
    m_access = findProperty(object, m_keyPath, m_keyPath);
    if (purpose == observing)
        observe();
}

WatchedPath::~WatchedPath() = default;

void WatchedPath::observe()
{
    QObject *const object = root();
    if (!object)
        return;
    if (m_walk) {
        m_walk->isObserving = true;
        cut(0);
        m_walk->isVolatile = false;
        build(object, 0);
    } else {
        m_changes = Subscription::toChanges(object, m_access, m_keyPath, m_keyPath, this);
    }
}

void WatchedPath::releaseRoot()
{
    m_root = NS::ObjectReference(m_root.get());
}

std::string WatchedPath::name() const
{
    const QObject *const object = root();
    const std::string className = object ? object->metaObject()->className() : "nullptr";
    return className + '.' + m_keyPath.toStdString();
}

WatchedPath::Place WatchedPath::place() const
{
    if (!m_walk)
        return { root(), m_keyPath };
    const auto &middles = m_walk->middles;
    if (!m_walk->leaf)
        return { middles.empty() ? nullptr : middles.back().object, {}, true };
    const Keys &keys = m_walk->keys;
    int key = m_walk->leafFirstKey;
    Place place { m_walk->leaf, keys.at(key) };
    if (!leafHasTail())
        return place;
    QVariant value = withoutNull(readProperty(m_walk->leaf, m_access, place.key));
    while (++key + 1 < keys.size() && value.isValid())
        value = withoutNull(valueInside(value, keys.at(key), m_keyPath));
    place.isMissing = !value.isValid();
    return place;
}

QVariant WatchedPath::value()
{
    if (m_walk && m_walk->isVolatile)
        return root() ? NS::valueForKeyPath(root(), m_keyPath) : QVariant();
    QObject *const object = leafObject();
    if (!object)
        return {};
    if (!m_walk)
        return withoutNull(readProperty(object, m_access, m_keyPath));
    const Keys &keys = m_walk->keys;
    int key = m_walk->leafFirstKey;
    QVariant value = readProperty(object, m_access, keys.at(key));
    while (++key < keys.size() && value.isValid())
        value = valueInside(value, keys.at(key), m_keyPath);
    return withoutNull(value);
}

void WatchedPath::setValue(const QVariant &value)
{
    const bool isVolatile = m_walk && m_walk->isVolatile;
    QObject *const object = isVolatile ? root() : leafObject();
    if (!object)
        return;
    if (!m_walk)
        writeProperty(object, m_access, m_keyPath, value, m_keyPath);
    else if (isVolatile || leafHasTail())
        detail::setValue(object, m_walk->keys, isVolatile ? 0 : m_walk->leafFirstKey, value,
                         m_keyPath);
    else
        writeProperty(object, m_access, m_walk->keys.constLast(), value, m_keyPath);
}

QObject *WatchedPath::leafObject() const
{
    return m_walk ? m_walk->leaf : root();
}

bool WatchedPath::leafHasTail() const
{
    return m_walk->leafFirstKey + 1 < m_walk->keys.size();
}

// Adds links, beginning with `object` and its key `firstKey`.
void WatchedPath::build(QObject *object, int firstKey)
{
    while (object) {
        const QString &key = m_walk->keys.at(firstKey);
        const Access access = findProperty(object, key, m_keyPath);
        const bool isLastKey = firstKey + 1 == m_walk->keys.size();
        Subscription changes;
        // A property that leads to the next object is observed for both purposes. One that is only
        // written need not report its changes.
        if (m_walk->isObserving || !isLastKey) {
            try {
                changes = Subscription::toChanges(object, access, key, m_keyPath, this);
            } catch (const NS::KeyValueException &) {
                if (m_walk->isObserving)
                    throw;
                m_walk->isVolatile = true;
            }
        }
        m_walk->destructions.push_back(Subscription::toDestruction(object, this));
        m_walk->middles.push_back({ object, access, firstKey, std::move(changes) });
        const Walk::Next next = m_walk->next(object, access, firstKey, m_keyPath);
        if (next.isEnd) {
            m_changes = std::move(m_walk->middles.back().changes);
            m_walk->middles.pop_back();
            m_walk->leaf = object;
            m_walk->leafFirstKey = firstKey;
            m_access = access;
            // A value inside a gadget or map cannot be accessed directly.
            m_access.isPlain &= isLastKey && !m_walk->isVolatile;
            return;
        }
        object = next.object;
        firstKey = next.firstKey;
    }
}

// Removes the leaf and the links from `index` on.
void WatchedPath::cut(std::size_t index)
{
    auto &middles = m_walk->middles;
    auto &destructions = m_walk->destructions;
    middles.erase(middles.begin() + std::ptrdiff_t(std::min(index, middles.size())), middles.end());
    destructions.erase(destructions.begin() + std::ptrdiff_t(std::min(index, destructions.size())),
                       destructions.end());
    m_walk->leaf = nullptr;
    m_access = {};
    m_changes = {};
}

bool WatchedPath::update(const Slot *slot)
{
    if (slot == m_changes.slot() && !leafHasTail())
        return true;
    const bool hadLeaf = m_walk->leaf;
    bool isChanged = true;
    try {
        isChanged = rebuild(slot);
    } catch (const NS::KeyValueException &error) {
        printWarning(error);
    }
    return isChanged && m_walk->isObserving && (hadLeaf || m_walk->leaf);
}

// Rebuilds the path after an event of `slot`. False if the value has not changed.
bool WatchedPath::rebuild(const Slot *slot)
{
    auto &middles = m_walk->middles;
    for (std::size_t i = 0; i < m_walk->destructions.size(); ++i) {
        if (m_walk->destructions[i].slot() == slot) {
            cut(i);
            // The root was destroyed: observers are not called any more.
            return i > 0;
        }
    }
    std::size_t index = 0;
    while (index < middles.size() && middles[index].changes.slot() != slot)
        ++index;
    const bool isLeaf = index == middles.size();
    QObject *const object = isLeaf ? m_walk->leaf : middles[index].object;
    const int firstKey = isLeaf ? m_walk->leafFirstKey : middles[index].firstKey;
    const Access access = isLeaf ? m_access : middles[index].access;
    Walk::Next next;
    try {
        next = m_walk->next(object, access, firstKey, m_keyPath);
    } catch (...) {
        // The path ends here until this link changes again.
        if (isLeaf)
            middles.push_back({ object, access, firstKey, std::exchange(m_changes, {}) });
        cut(index + 1);
        throw;
    }
    if (isLeaf && next.isEnd)
        return true;
    if (!isLeaf && next.object) {
        const bool leadsToMiddle = index + 1 < middles.size();
        if (next.object == (leadsToMiddle ? middles[index + 1].object : m_walk->leaf)
            && next.firstKey
                       == (leadsToMiddle ? middles[index + 1].firstKey : m_walk->leafFirstKey))
            return false;
    }
    cut(index);
    build(object, firstKey);
    return true;
}

static_assert(sizeof(Registration) <= 104);

namespace {

// The initial call of an observer, which may end the registration, or itself, in the call.
struct InitialCall;
thread_local InitialCall *runningCalls = nullptr;

struct InitialCall
{
    explicit InitialCall(Registration *added)
        : registration(added)
        , outer(std::exchange(runningCalls, this))
    { }
    InitialCall(const InitialCall &) = delete;
    InitialCall &operator=(const InitialCall &) = delete;
    ~InitialCall() { runningCalls = outer; }

    Registration *registration; // null once it has ended
    InitialCall *outer;
};

} // namespace

Registration::Registration(NS::ObjectReference object, NS::KeyValueObserver *observer,
                           const QString &keyPath, Purpose purpose)
    : WatchedPath(std::move(object), keyPath, purpose)
    , m_observer(observer)
    , m_next(observer->m_registrations)
{
    observer->m_registrations = this;
}

Registration::~Registration()
{
    for (InitialCall *call = runningCalls; call; call = call->outer) {
        if (call->registration == this)
            call->registration = nullptr;
    }
}

Registration *Registration::add(NS::ObjectReference object, NS::KeyValueObserver *observer,
                                const QString &keyPath, NS::KeyValueObservingOptions options)
{
    auto *const registration = new Registration(std::move(object), observer, keyPath, observing);
    if (options != NS::KeyValueObservingOptions::newValueAndInitial)
        return registration;
    const InitialCall call(registration);
    try {
        observer->pathChanged(*registration);
    } catch (const ObserverFailure &failure) {
        if (call.registration)
            observer->remove(registration);
        std::rethrow_exception(failure.cause);
    } catch (...) {
        if (call.registration)
            observer->remove(registration);
        throw;
    }
    return call.registration;
}

Registration *Registration::addTarget(NS::ObjectReference object, NS::KeyValueObserver *observer,
                                      const QString &keyPath)
{
    return new Registration(std::move(object), observer, keyPath, targeting);
}

void Registration::fired(const Slot *slot)
{
    if (isTold(slot))
        m_observer->pathChanged(*this);
}

} // namespace Pellarvine::detail
