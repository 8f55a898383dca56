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

/// A key path from an object, kept up to date while the objects on it change. It is a chain of
/// links, one for each object on the path; the last link is the leaf. A link holds the access to
/// its first key. Further keys of the link lead into a gadget or a map, and are looked up in each
/// value. The destruction of an object shortens the chain, so no link dangles.
class PELLARVINE_INTERNAL_EXPORT WatchedPath : protected Listener
{
public:
    enum Purpose {
        observing, ///< changes of the value are reported by isTold()
        targeting, ///< the value is read and written; its changes are not observed
    };

    /// Throws KeyValueException for a key that does not exist, or that cannot be observed.
    WatchedPath(NS::ObjectReference root, QString keyPath, Purpose purpose);
    virtual ~WatchedPath();

    /// Null after the object was destroyed.
    QObject *root() const { return m_root.get(); }
    const QString &keyPath() const { return m_keyPath; }
    /// "Person.address.city", for messages.
    std::string name() const;

    /// The place of the value.
    struct Place
    {
        QObject *object = nullptr; ///< the last object on the way
        QString key; ///< the property of that object
        bool isMissing = false; ///< an object or value on the path is null, so there is no place
    };
    Place place() const;

    /// The root is no longer kept alive. It is still observed.
    void releaseRoot();

    /// Invalid if the value, or an object on the path, is null.
    QVariant value();

    /// As NS::setValueForKeyPath().
    void setValue(const QVariant &value);

    /// Makes it an observing path. Throws if a key can change unnoticed.
    void observe();

    /// The property at the end, for direct access. Its `object` is null if the value can only be
    /// accessed as a QVariant. Valid until the program's code runs, which may change the path.
    PlainProperty plain() const
    {
        if (!m_access.isPlain)
            return {};
        return { m_walk ? leafObject() : root(), m_access.type, m_access.index };
    }
    /// The same. `object` is also null if the property is read-only.
    PlainProperty plainTarget() const { return m_access.isWritable ? plain() : PlainProperty(); }

    /// The root, if the path has one key only; otherwise null.
    const NS::ObjectReference *directRoot() const { return m_walk ? nullptr : &m_root; }

    /// Whether plainTarget() would still be `property`.
    bool stillEndsAt(const PlainProperty &property) const
    {
        return (m_walk ? leafObject() : root()) == property.object && m_access.isWritable
               && m_access.index == property.index && m_access.type == property.type;
    }

protected:
    void fired(const Slot *slot) override { isTold(slot); }

    /// Whether the event of `slot` changes the value. Rebuilds the path first if the event came
    /// from an object before the leaf.
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
    Access m_access; // to the first key of the leaf
    Subscription m_changes; // of that key
};

/// A registration of an observer, which owns it. Programs may have thousands of them, so it is kept
/// to 104 bytes.
class PELLARVINE_INTERNAL_EXPORT Registration final : public WatchedPath
{
public:
    /// Registers for NS::addObserver(). Throws KeyValueException, and what the observer throws in
    /// the initial call; nothing is registered then. Null if the initial call has ended it.
    static Registration *add(NS::ObjectReference object, NS::KeyValueObserver *observer,
                             const QString &keyPath, NS::KeyValueObservingOptions options);

    /// A path to write to. The observer is not called before observe().
    static Registration *addTarget(NS::ObjectReference object, NS::KeyValueObserver *observer,
                                   const QString &keyPath);

    ~Registration() override;

    /// The registration of the same observer that was made before this one, or null.
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
