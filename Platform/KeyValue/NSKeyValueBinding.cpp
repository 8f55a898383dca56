// SPDX-License-Identifier: MIT
#include "KeyValue/NSKeyValueBinding.h"

#include "Base/Failure.h"
#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/KeyValueObserving.h"

#include <QMetaProperty>
#include <QObject>
#include <QPointer>
#include <QScopeGuard>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

// Two sides that change what they are given answer each other for ever; this is where it stops.
constexpr int deepestExchange = 16;

QString propertyName(const QObject *object, const QString &binding)
{
    const QMetaObject *const metaObject = object->metaObject();
    if (binding != NSValueBinding || metaObject->indexOfProperty("value") >= 0
        || object->property("value").isValid())
        return binding;
    const QMetaProperty user = metaObject->userProperty();
    return user.isValid() ? QString::fromUtf8(user.name()) : binding;
}

// True where it cannot be known yet, since the way to the property leads through null.
bool isWritable(QObject *object, const QString &keyPath)
{
    const qsizetype dot = keyPath.lastIndexOf(u'.');
    if (dot >= 0) {
        const auto holder = detail::object(valueForKeyPath(object, keyPath.first(dot)));
        if (!holder || !*holder)
            return true;
        object = *holder;
    }
    return detail::findProperty(object, keyPath.sliced(dot + 1), keyPath).isWritable;
}

// Whether `current` is `value`, also as another type that loses nothing of it.
bool holdsAlready(const QVariant &current, const QVariant &value)
{
    if (!current.isValid() || !value.isValid())
        return current.isValid() == value.isValid();
    if (current.metaType() == value.metaType())
        return isEqual(current, value);
    QVariant there = value;
    QVariant back = current;
    return isEqual(current, value)
           || (there.convert(current.metaType()) && isEqual(there, current)
               && back.convert(value.metaType()) && isEqual(back, value));
}

class ValueBinding
{
public:
    ValueBinding(QObject *object, QString key, const ObjectReference &observed, QString keyPath)
        : m_object(object)
        , m_key(std::move(key))
        , m_observed(observed)
        , m_keyPath(std::move(keyPath))
        , m_modelObserver([this] { pass(m_observed.get(), m_keyPath, m_object, m_key); })
        , m_objectObserver([this] { pass(m_object, m_key, m_observed.get(), m_keyPath); })
    {
        if (!detail::findProperty(m_object, m_key, m_key).isWritable)
            throw KeyValueException(KeyValueException::readOnly,
                                    m_object->metaObject()->className(), m_key, m_key);
        QObject *const model = m_observed.get();
        addObserver(model, &m_modelObserver, m_keyPath, KeyValueObservingOptions::newValue);
        m_modelObserver.run();
        if (!isWritable(model, m_keyPath))
            return;
        try {
            addObserver(m_object, &m_objectObserver, m_key, KeyValueObservingOptions::newValue);
        } catch (const KeyValueException &error) {
            if (error.reason() != KeyValueException::notObservable)
                throw;
        }
    }

    QVariantMap info() const
    {
        return { { NSObservedObjectKey, QVariant::fromValue(m_observed.get()) },
                 { NSObservedKeyPathKey, m_keyPath } };
    }

private:
    class SideObserver : public KeyValueObserver
    {
    public:
        explicit SideObserver(std::function<void()> changed)
            : run(std::move(changed))
        { }
        void observeValue(const QString &, QObject *, const KeyValueChange *) override { run(); }

        const std::function<void()> run;
    };

    void pass(QObject *source, const QString &sourcePath, QObject *target,
              const QString &targetPath)
    {
        if (!source || !target)
            return;
        const QVariant value = valueForKeyPath(source, sourcePath);
        // What is not on the screen reads as invisible, also if it was never told to be.
        const bool tells = !target->isWidgetType() || targetPath != "visible"_L1;
        if (tells && holdsAlready(valueForKeyPath(target, targetPath), value))
            return;
        // Copies, since the binding may end in the call.
        const std::shared_ptr<int> depth = m_depth;
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): see above
        const QString path = targetPath;
        if (*depth == deepestExchange) {
            detail::printWarning("Warning: the binding of "
                                 + std::string(m_object->metaObject()->className()) + '.'
                                 + m_key.toStdString() + " to " + m_keyPath.toStdString()
                                 + " does not settle");
            return;
        }
        ++*depth;
        const auto leave = qScopeGuard([&depth] { --*depth; });
        setValueForKeyPath(target, path, value);
    }

    QPointer<QObject> m_object;
    QString m_key;
    ObjectReference m_observed;
    QString m_keyPath;
    std::shared_ptr<int> m_depth = std::make_shared<int>(0); // of passes within passes
    SideObserver m_modelObserver;
    SideObserver m_objectObserver;
};

// The bindings of one object, its child.
class Bindings : public QObject
{
public:
    static Bindings *of(const QObject *object)
    {
        for (QObject *const child : object->children()) {
            if (auto *const bindings = dynamic_cast<Bindings *>(child))
                return bindings;
        }
        return nullptr;
    }

    explicit Bindings(QObject *object)
        : QObject(object)
    { }

    std::map<QString, std::unique_ptr<ValueBinding>> byName;
};

} // namespace

void bind(QObject *object, const QString &binding, const ObjectReference &observed,
          const QString &keyPath)
{
    unbind(object, binding);
    auto made = std::make_unique<ValueBinding>(object, propertyName(object, binding), observed,
                                               keyPath);
    Bindings *bindings = Bindings::of(object);
    if (!bindings)
        bindings = new Bindings(object);
    bindings->byName[binding] = std::move(made);
}

void unbind(QObject *object, const QString &binding)
{
    if (Bindings *const bindings = Bindings::of(object))
        bindings->byName.erase(binding);
}

QVariantMap infoForBinding(const QObject *object, const QString &binding)
{
    const Bindings *const bindings = Bindings::of(object);
    if (!bindings)
        return {};
    const auto found = bindings->byName.find(binding);
    return found == bindings->byName.end() ? QVariantMap() : found->second->info();
}

} // namespace NS
