// SPDX-License-Identifier: MIT
#include "Scenes/NibOwnerCheck.h"

#include "Base/EditDistance.h"
#include "Base/MethodLookup.h"
#include "KeyValue/ChangeSignal.h"
#include "KeyValue/KeyValueAccess.h"
#include "Scenes/NibConnector.h"

#include <QMetaObject>
#include <QMetaProperty>
#include <QObject>
#include <QSequentialIterable>
#include <QVariant>

#include <variant>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

enum class Use {
    once,
    observed,
};

class Check
{
public:
    Check(const QObject *object, const QMetaObject *owner)
        : m_object(object)
        , m_owner(owner)
    { }

    void operator()(const NibOutlet &outlet) const
    {
        const QMetaProperty property = checkOwnerKeys(outlet.path, Use::once);
        const bool isLast = !outlet.path.keyPath.contains(u'.');
        if (property.isValid() && isLast && !canBeOutlet(property, m_object))
            throw NibFault { NS::NibError::unknownKeyPath, outlet.path.keyPath,
                             u"the property \"%1\" of %2 cannot take a %3"_s.arg(
                                     outlet.path.keyPath, className(m_owner),
                                     className(m_object->metaObject())) };
    }

    void operator()(const NibBinding &binding) const
    {
        // `value` is the USER property of any object. A control with choices has two keys more.
        const QString &key = binding.key;
        const bool isKnown = indexOf(m_object->metaObject(), key) >= 0
                             || isListBinding(m_object, key) || key == "value"_L1
                             || key == "selectedObject"_L1 || key == "selectedTag"_L1;
        if (!isKnown)
            failKey(m_object->metaObject(), binding.key, binding.key);
        const QMetaProperty property = checkOwnerKeys(binding.path, Use::observed);
        for (const QString &itemPath : { binding.options.title, binding.options.tag }) {
            if (!itemPath.isEmpty() && property.isValid())
                checkKeys(itemType(property.metaType()), itemPath, Use::once);
        }
    }

    void operator()(const NibAction &action) const
    {
        if (!action.receiver.keyPath.isEmpty())
            checkOwnerKeys(action.receiver, Use::once);
        else if (m_owner)
            signalAndSlot(m_object->metaObject(), action.signal, m_owner, action.slot);
        if (signalsMatching(m_object->metaObject(), action.signal).isEmpty())
            throw NibFault { NS::NibError::unknownMethod, action.signal,
                             u"%1 has no signal \"%2\""_s.arg(className(m_object->metaObject()),
                                                              action.signal) };
    }

    void operator()(const NibConstraint &) const { } // has no path

private:
    static QString className(const QMetaObject *type)
    {
        return QString::fromUtf8(type->className());
    }
    static int indexOf(const QMetaObject *type, const QString &key)
    {
        return type->indexOfProperty(key.toUtf8().constData());
    }
    [[noreturn]] static void failKey(const QMetaObject *type, const QString &key,
                                     const QString &keyPath)
    {
        const QString similar = similarKey(key, type);
        throw NibFault { NS::NibError::unknownKeyPath, keyPath,
                         u"%1 has no key \"%2\""_s.arg(className(type), key)
                                 + (similar.isEmpty() ? QString()
                                                      : u": did you mean \"%1\"?"_s.arg(similar)) };
    }

    // Checks the keys of a path as far as their classes are known. Returns its last property, or an
    // invalid one if that is not known.
    QMetaProperty checkOwnerKeys(const NibPath &path, Use use) const
    {
        const QString key = path.keyPath.section(u'.', 0, 0);
        if (m_owner && indexOf(m_owner, key) < 0)
            failKey(m_owner, key, path.keyPath);
        return checkKeys(m_owner, path.keyPath, use);
    }

    // An object may have a derived class with more keys. So a key that its class lacks is an error
    // only if it is similar to one of the class; values have no derived classes.
    static QMetaProperty checkKeys(const QMetaObject *type, const QString &keyPath, Use use)
    {
        QMetaProperty property;
        const QStringList keys = keyPath.split(u'.');
        for (const QString &key : keys) {
            if (!type)
                return {};
            const int index = indexOf(type, key);
            if (index < 0) {
                if (!type->inherits(&QObject::staticMetaObject) || hasSimilarKey(type, key))
                    failKey(type, key, keyPath);
                return {};
            }
            property = type->property(index);
            if (use == Use::observed && !isObservable(type, property))
                throw NibFault { NS::NibError::unknownKeyPath, keyPath,
                                 u"%1 does not report changes of its key \"%2\""_s.arg(
                                         className(type), key) };
            type = classOf(property.metaType());
        }
        return property;
    }

    static bool isObservable(const QMetaObject *type, const QMetaProperty &property)
    {
        return property.isConstant() || property.isBindable() || changeSignal(type, property) >= 0
               || !type->inherits(&QObject::staticMetaObject);
    }

    // The class of the items of a list. Null if they have none.
    static const QMetaObject *itemType(QMetaType list)
    {
        list.id(); // registers the conversion
        const QVariant value(list);
        if (!value.canConvert<QSequentialIterable>())
            return nullptr;
        return classOf(value.value<QSequentialIterable>().metaContainer().valueMetaType());
    }

    // Null for types without keys.
    static const QMetaObject *classOf(QMetaType type)
    {
        const QMetaType::TypeFlags withKeys = QMetaType::PointerToQObject | QMetaType::IsGadget;
        return type.flags() & withKeys ? type.metaObject() : nullptr;
    }

    // More similar than a suggestion for a key that is certainly wrong.
    static bool hasSimilarKey(const QMetaObject *type, const QString &key)
    {
        const QString similar = similarKey(key, type);
        return !similar.isEmpty() && editDistance(key, similar) <= (key.size() < 6 ? 1 : 2);
    }

    const QObject *m_object;
    const QMetaObject *m_owner;
};

const NibPath *pathOf(const NibEntry &entry)
{
    if (const auto *const outlet = std::get_if<NibOutlet>(&entry))
        return &outlet->path;
    if (const auto *const binding = std::get_if<NibBinding>(&entry))
        return &binding->path;
    const auto *const action = std::get_if<NibAction>(&entry);
    return action ? &action->receiver : nullptr;
}

} // namespace

bool canBeOutlet(const QMetaProperty &property, const QObject *object)
{
    if (!property.isWritable())
        return false;
    const QMetaType type = property.metaType();
    if (const QMetaObject *const wanted = type.metaObject())
        return object->metaObject()->inherits(wanted);
    // A pointer to a class that is only declared has no meta-object.
    return type.id() == QMetaType::QVariant || QByteArrayView(type.name()).endsWith('*');
}

bool beginsAtOwner(const NibEntry &entry)
{
    const NibPath *const path = pathOf(entry);
    return path && path->root == "owner"_L1;
}

void checkOwnerEntry(const QObject *object, const NibEntry &entry, const QMetaObject *owner)
{
    std::visit(Check(object, owner), entry);
}

} // namespace Pellarvine::detail
