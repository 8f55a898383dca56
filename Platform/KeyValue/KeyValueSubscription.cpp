// SPDX-License-Identifier: MIT
#include "KeyValue/KeyValueSubscription.h"

#include "Base/Failure.h"
#include "KeyValue/ChangeSignal.h"
#include "KeyValue/KeyValueException.h"

#include <QDynamicPropertyChangeEvent>
#include <QMetaProperty>
#include <QObject>
#include <QProperty>
#include <QThread>

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

class DynamicPropertyFilter : public QObject
{
public:
    DynamicPropertyFilter(QObject *object, QByteArray key, const Slot *slot)
        : m_key(std::move(key))
        , m_slot(slot)
    {
        // An event filter must live in the thread of the object.
        if (object->thread() != thread())
            moveToThread(object->thread());
        object->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::DynamicPropertyChange
            && static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName() == m_key)
            fire(m_slot); // may delete this object
        return false;
    }

private:
    QByteArray m_key;
    const Slot *m_slot;
};

struct DynamicSlot : SourceSlot
{
    DynamicSlot(Listener *receiver, QObject *object, const QString &key)
        : SourceSlot(receiver)
        , filter(object, key.toUtf8(), this)
    { }

    DynamicPropertyFilter filter;
};

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
