// SPDX-License-Identifier: MIT
// Not API: a key path from an object, walked once and kept up to date.
#pragma once

#include "Base/Global.h"
#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/KeyValueObserving.h"
#include "KeyValue/KeyValueSubscription.h"
#include "KeyValue/ObjectReference.h"
#include "KeyValue/PlainProperty.h"

#include <memory>
#include <string>

namespace Pellarvine::detail {

/// A path is a chain of links, one to each object on the way; the last is its leaf. A link holds
/// the access to the first of its keys; further keys lead into a gadget or a map and are looked up
/// in each value. The objects are watched, so that no link dangles.
class PELLARVINE_INTERNAL_EXPORT WatchedPath : protected Listener
{
public:
    enum Purpose {
        observing, ///< isTold() is asked at every change
        targeting, ///< only kept up to date, to be read and written
    };

    /// Walks the path; throws what that can throw.
    WatchedPath(NS::ObjectReference root, QString keyPath, Purpose purpose);
    virtual ~WatchedPath();

    /// Null once it is destroyed.
    QObject *root() const { return m_root.get(); }
    const QString &keyPath() const { return m_keyPath; }
    /// "Person.address.city", for messages.
    std::string name() const;

    /// Where the value is.
    struct Place
    {
        QObject *object = nullptr; ///< the last object on the way
        QString key; ///< the property of that object
        bool isMissing = false; ///< null on the way: there is nothing that could hold a value
    };
    Place place() const;

    /// Goes on watching the root, but no longer keeps it alive.
    void releaseRoot();

    /// No value for null, and where the path ends early.
    QVariant value();

    /// As setValueForKeyPath().
    void setValue(const QVariant &value);

    /// Makes it an observing path; throws if the path does not tell when it changes.
    void observe();

    /// Without an object if the value cannot be reached in place. Ask again after any function of
    /// the program has run: it may have changed the path.
    PlainProperty plain() const
    {
        if (!m_access.isPlain)
            return {};
        return { m_walk ? leafObject() : root(), m_access.type, m_access.index };
    }
    /// The same; without an object if it is read-only.
    PlainProperty plainTarget() const { return m_access.isWritable ? plain() : PlainProperty(); }

    /// What the property is directly of; null for a path of several keys.
    const NS::ObjectReference *directRoot() const { return m_walk ? nullptr : &m_root; }

    /// Whether plainTarget() would still be `property`.
    bool stillEndsAt(const PlainProperty &property) const
    {
        return (m_walk ? leafObject() : root()) == property.object && m_access.isWritable
               && m_access.index == property.index && m_access.type == property.type;
    }

protected:
    void fired(const Slot *slot) override { isTold(slot); }

    /// Whether what has fired is a change of the value. Makes the path up to date if it is not the
    /// value alone that has changed.
    bool isTold(const Slot *slot) { return Q_LIKELY(!m_walk) || update(slot); }

private:
    struct Link;
    struct Walk;

    bool update(const Slot *slot);
    QObject *leafObject() const;
    bool leafHasTail() const;
    void build(QObject *object, int firstKey);
    bool rebuild(const Slot *slot);
    void cut(std::size_t index);

    NS::ObjectReference m_root;
    QString m_keyPath;
    std::unique_ptr<Walk> m_walk; // null for a path of one key
    // The leaf's.
    Access m_access;
    Subscription m_changes;
};

/// What addObserver() makes; its observer owns it. Programs may have thousands: it is 104 bytes.
class PELLARVINE_INTERNAL_EXPORT Registration final : public WatchedPath
{
public:
    /// Throws what walking the path throws, and what the observer throws in the initial call; then
    /// nothing is registered.
    static Registration *add(NS::ObjectReference object, NS::KeyValueObserver *observer,
                             const QString &keyPath, NS::KeyValueObservingOptions options);

    /// A path to write to, told nothing until observe().
    static Registration *addTarget(NS::ObjectReference object, NS::KeyValueObserver *observer,
                                   const QString &keyPath);

    /// The registration that its observer made before; null for the first.
    Registration *next() const { return m_next; }

private:
    friend class NS::KeyValueObserver;

    Registration(NS::ObjectReference object, NS::KeyValueObserver *observer, const QString &keyPath,
                 Purpose purpose);
    void fired(const Slot *slot) override;

    NS::KeyValueObserver *m_observer;
    Registration *m_next;
};

} // namespace Pellarvine::detail
