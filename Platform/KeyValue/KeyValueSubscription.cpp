// SPDX-License-Identifier: MIT
#include "KeyValue/KeyValueSubscription.h"

#include "Base/Failure.h"
#include "KeyValue/ChangeSignal.h"
#include "KeyValue/KeyValueException.h"

#include <QDynamicPropertyChangeEvent>
#include <QHash>
#include <QMetaProperty>
#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QThread>

#include <algorithm>
#include <array>
#include <exception>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace Pellarvine::detail {

namespace {

class Relay;

} // namespace

struct Slot
{
    union
    {
        Listener *listener = nullptr;
        Slot *nextFree;
    };
    Relay *relay = nullptr; // null for a SourceSlot
    QMetaObject::Connection connection;
};

namespace {

std::string text(const std::exception_ptr &thrown)
{
    try {
        std::rethrow_exception(thrown);
    } catch (const std::exception &error) {
        return error.what();
    } catch (...) {
        return "an observer threw an object that is not a std::exception";
    }
}

template <typename Function>
void callAndWarn(Function function) noexcept
{
    try {
        function();
    } catch (const ObserverFailure &failure) {
        printWarning("Warning: " + text(failure.cause) + " (" + failure.observation + ')');
    } catch (...) {
        printWarning("Warning: " + text(std::current_exception()));
    }
}

inline void fire(const Slot *slot) noexcept
{
    callAndWarn([slot] { slot->listener->fired(slot); });
}

// Receives the signals of many subscriptions, because a QObject for each would cost 176 bytes. Each
// connection calls a method number of its own, which gives the number of the slot.
class Relay : public QObject
{
public:
    static constexpr int slotCount = 256;
    static constexpr int firstMethod = 64; // greater than the numbers of QObject's methods

    // Without a thread, because all threads call it.
    Relay() { moveToThread(nullptr); }

    std::array<Slot, slotCount> slots;

    int method(const Slot *slot) const { return firstMethod + int(slot - slots.data()); }

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        if (call != QMetaObject::InvokeMetaMethod || id < firstMethod)
            return QObject::qt_metacall(call, id, arguments);
        fire(&slots[std::size_t(id - firstMethod)]);
        return -1;
    }
};

// The slots of all relays. A lock protects taking and returning them, because observers are made on
// all threads; a slot that is taken belongs to its subscription alone. The pool is never destroyed,
// because an observer in a static variable may use it when the process exits.
class Pool
{
public:
    static Pool &shared()
    {
        static auto *const pool = new Pool;
        return *pool;
    }

    Slot *take(Listener *listener)
    {
        const std::lock_guard lock(m_mutex);
        if (!m_free)
            grow();
        Slot *const slot = m_free;
        m_free = slot->nextFree;
        slot->listener = listener;
        return slot;
    }

    void giveBack(Slot *slot)
    {
        const std::lock_guard lock(m_mutex);
        slot->nextFree = m_free;
        m_free = slot;
    }

private:
    void grow()
    {
        m_relays.push_back(std::make_unique<Relay>());
        Relay *const relay = m_relays.back().get();
        for (Slot &slot : relay->slots) {
            slot.relay = relay;
            slot.nextFree = m_free;
            m_free = &slot;
        }
    }

    std::mutex m_mutex;
    Slot *m_free = nullptr;
    std::vector<std::unique_ptr<Relay>> m_relays;
};

// The slot of a subscription without a signal.
struct SourceSlot : Slot
{
    explicit SourceSlot(Listener *receiver) { listener = receiver; }
    SourceSlot(const SourceSlot &) = delete;
    SourceSlot &operator=(const SourceSlot &) = delete;
    virtual ~SourceSlot() = default;
};

struct BindableSlot : SourceSlot
{
    BindableSlot(Listener *receiver, const QUntypedBindable &observed)
        : SourceSlot(receiver)
        , bindable(observed)
    {
        observe();
    }

    void observe()
    {
        notifier = std::make_unique<QPropertyNotifier>(bindable.addNotifier([this] { changed(); }));
    }

    // Qt does not call a notifier for changes that are made while it runs. So another notifier
    // replaces it before the listener is called.
    void changed()
    {
        const std::unique_ptr<QPropertyNotifier> running = std::move(notifier);
        observe();
        fire(this); // may delete this object
    }

    QUntypedBindable bindable;
    std::unique_ptr<QPropertyNotifier> notifier;
};

class DynamicPropertyFilter;

struct DynamicSlot : SourceSlot
{
    DynamicSlot(Listener *receiver, QObject *object, const QString &key);
    ~DynamicSlot() override;

    QByteArray key;
    QPointer<DynamicPropertyFilter> filter;
};

// Reports the changes of an object's dynamic properties. There is one for all slots of the object:
// Qt leaves out event filters, or calls them again, if filters come and go during an event. It ends
// with its last slot, or with the object.
class DynamicPropertyFilter : public QObject
{
public:
    static DynamicPropertyFilter *of(QObject *object)
    {
        const std::lock_guard lock(all().mutex);
        DynamicPropertyFilter *&filter = all().filters[object];
        if (!filter || !filter->m_object) // of another object that had this address
            filter = new DynamicPropertyFilter(object);
        return filter;
    }

    ~DynamicPropertyFilter() override
    {
        const std::lock_guard lock(all().mutex);
        const auto found = all().filters.constFind(m_address);
        if (found != all().filters.cend() && *found == this)
            all().filters.erase(found);
    }

    void add(DynamicSlot *slot) { m_slots.push_back(slot); }

    void remove(const DynamicSlot *slot)
    {
        *std::find(m_slots.begin(), m_slots.end(), slot) = nullptr;
        tidy();
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::ThreadChange)
            setParent(object); // moves along
        if (event->type() != QEvent::DynamicPropertyChange)
            return false;
        const QByteArray key = static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName();
        const QPointer<DynamicPropertyFilter> self(this);
        ++m_depth;
        const std::size_t count = m_slots.size(); // those that are added now have no event yet
        for (std::size_t i = 0; self && i < count; ++i) {
            if (m_slots[i] && m_slots[i]->key == key)
                fire(m_slots[i]); // may delete the slot, and the object
        }
        if (self) {
            --m_depth;
            tidy();
        }
        return false;
    }

private:
    explicit DynamicPropertyFilter(QObject *object)
        : m_object(object)
        , m_address(object)
    {
        // An event filter must live in the thread of the object.
        if (object->thread() != thread())
            moveToThread(object->thread());
        object->installEventFilter(this);
    }

    void tidy()
    {
        if (m_depth > 0)
            return;
        std::erase(m_slots, nullptr);
        if (m_slots.empty())
            delete this;
    }

    struct All
    {
        std::mutex mutex;
        QHash<const QObject *, DynamicPropertyFilter *> filters; // by the address of the object
    };
    // Never destroyed, as the pool is not.
    static All &all()
    {
        static auto *const everything = new All;
        return *everything;
    }

    QPointer<QObject> m_object;
    const QObject *m_address;
    std::vector<DynamicSlot *> m_slots; // null for one that ended during an event
    int m_depth = 0; // the number of nested events
};

DynamicSlot::DynamicSlot(Listener *receiver, QObject *object, const QString &observed)
    : SourceSlot(receiver)
    , key(observed.toUtf8())
    , filter(DynamicPropertyFilter::of(object))
{
    filter->add(this);
}

DynamicSlot::~DynamicSlot()
{
    if (filter)
        filter->remove(this);
}

Slot *connected(QObject *object, int signal, Listener *listener)
{
    Slot *const slot = Pool::shared().take(listener);
    slot->connection = QMetaObject::connect(object, signal, slot->relay, slot->relay->method(slot),
                                            Qt::DirectConnection, nullptr);
    return slot;
}

} // namespace

Subscription::~Subscription()
{
    if (!m_slot)
        return;
    if (!m_slot->relay) {
        delete static_cast<SourceSlot *>(m_slot);
        return;
    }
    QObject::disconnect(m_slot->connection);
    m_slot->connection = {};
    Pool::shared().giveBack(m_slot);
}

Subscription Subscription::toChanges(QObject *object, const Access &access, const QString &key,
                                     const KeyPath &path, Listener *listener)
{
    if (access.index < 0)
        return Subscription(new DynamicSlot(listener, object, key));
    const QMetaProperty property = object->metaObject()->property(access.index);
    const int signal = changeSignal(object->metaObject(), property);
    if (signal >= 0)
        return Subscription(connected(object, signal, listener));
    if (property.isConstant())
        return {};
    QUntypedBindable bindable =
            property.isBindable() ? property.bindable(object) : QUntypedBindable();
    if (!bindable.isValid())
        throw NS::KeyValueException(NS::KeyValueException::notObservable,
                                    object->metaObject()->className(), path, key);
    return Subscription(new BindableSlot(listener, bindable));
}

Subscription Subscription::toSignal(QObject *object, int signal, Listener *listener)
{
    return Subscription(connected(object, signal, listener));
}

Subscription Subscription::toDestruction(QObject *object, Listener *listener)
{
    static const int signal = QObject::staticMetaObject.indexOfSignal("destroyed(QObject*)");
    return Subscription(connected(object, signal, listener));
}

void warnOfExceptions(const std::function<void()> &function)
{
    callAndWarn(function);
}

} // namespace Pellarvine::detail
