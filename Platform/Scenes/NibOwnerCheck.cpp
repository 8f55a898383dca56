// SPDX-License-Identifier: MIT
#include "Scenes/NibOwnerCheck.h"

#include "Base/EditDistance.h"
#include "Base/MethodLookup.h"
#include "Scenes/NibConnector.h"

#include <QMetaObject>
#include <QMetaProperty>
#include <QObject>

#include <variant>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

class Check
{
public:
    Check(const QObject *object, const QMetaObject *owner)
        : m_object(object)
        , m_owner(owner)
    { }

    void operator()(const NibOutlet &outlet) const
    {
        const QMetaProperty property = ownerProperty(outlet.path);
        checkKeys(outlet.path);
        const bool isLast = !outlet.path.keyPath.contains(u'.');
        if (!property.isValid() || !isLast)
            return;
        if (!canBeOutlet(property, m_object))
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
        checkKeys(binding.path);
    }

    void operator()(const NibAction &action) const
    {
        if (!action.receiver.keyPath.isEmpty())
            checkKeys(action.receiver);
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
        throw NibFault { NS::NibError::unknownKeyPath, keyPath,
                         u"%1 has no key \"%2\""_s.arg(className(type), key) };
    }

    // The first property on the path. Invalid if the class of the owner is not known.
    QMetaProperty ownerProperty(const NibPath &path) const
    {
        if (!m_owner)
            return {};
        const QString key = path.keyPath.section(u'.', 0, 0);
        const int index = indexOf(m_owner, key);
        if (index < 0)
            failKey(m_owner, key, path.keyPath);
        return m_owner->property(index);
    }

    // The keys after the first, as far as the properties have classes. An object may have a derived
    // class with more keys. So a key that its class lacks is an error only if it is similar to one
    // of the class; values have no derived classes.
    void checkKeys(const NibPath &path) const
    {
        QMetaProperty property = ownerProperty(path);
        const QStringList keys = path.keyPath.split(u'.');
        for (qsizetype i = 1; i < keys.size() && property.isValid(); ++i) {
            const bool isObject = property.metaType().flags() & QMetaType::PointerToQObject;
            if (!isObject && !(property.metaType().flags() & QMetaType::IsGadget))
                return;
            const QMetaObject *const type = property.metaType().metaObject();
            const int index = indexOf(type, keys[i]);
            if (index < 0 && (!isObject || hasSimilarKey(type, keys[i])))
                failKey(type, keys[i], path.keyPath);
            property = type->property(index);
        }
    }

    static bool hasSimilarKey(const QMetaObject *type, const QString &key)
    {
        const qsizetype most = key.size() < 6 ? 1 : 2;
        for (int i = 0; i < type->propertyCount(); ++i) {
            if (editDistance(key, QString::fromUtf8(type->property(i).name())) <= most)
                return true;
        }
        return false;
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
