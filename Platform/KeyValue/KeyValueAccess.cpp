// SPDX-License-Identifier: MIT
#include "KeyValue/KeyValueAccess.h"

#include "Base/EditDistance.h"
#include "Base/MethodLookup.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/PlainProperty.h"
#include "KeyValue/WidgetAccess.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QObject>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// When the library is loaded: if two threads registered at once, Qt would print a warning.
[[maybe_unused]] const bool isSharedPointerRegistered =
        (NS::registerSharedPointer<QObject>(), true);

[[noreturn]] void fail(NS::KeyValueException::Reason reason, const char *className,
                       const QString &key, const KeyPath &path, const QString &detail = {})
{
    throw NS::KeyValueException(reason, className, path, key, detail);
}

QString suggestion(const QString &key, const QMetaObject *type, const QObject *object = nullptr)
{
    const QString similar = similarKey(key, type, object);
    return similar.isEmpty() ? QString() : u"did you mean \"%1\"?"_s.arg(similar);
}

const char *className(const QObject *object)
{
    return object ? object->metaObject()->className() : "nullptr";
}

bool isPointer(QMetaType type)
{
    return bool(type.flags() & QMetaType::IsPointer);
}

bool holdsObject(QMetaType type)
{
    if (type.flags() & QMetaType::PointerToQObject)
        return true;
    if (type.id() < QMetaType::User || isPointer(type))
        return false;
    return QMetaType::canConvert(type, QMetaType::fromType<QObject *>());
}

bool isPlain(QMetaType type)
{
    return type.isValid() && type.id() != QMetaType::QVariant && type.id() != QMetaType::Nullptr
           && !isPointer(type) && !holdsObject(type) && type.isEqualityComparable()
           && type.sizeOf() <= longestPlain
           && type.alignOf() <= qsizetype(alignof(std::max_align_t));
}

// A class that declares its own `visible` is read through its getter.
bool isExplicitState(const QObject *object, const QMetaProperty &property)
{
    const QByteArrayView name = property.name();
    return object->isWidgetType() && (name == "visible" || name == "enabled")
           && qstrcmp(property.enclosingMetaObject()->className(), "QWidget") == 0;
}

QVariant explicitState(const QObject *widget, const Access &access, const QString &key)
{
    const bool isEnabled = key == "enabled"_L1;
    if (const WidgetAccess *const installed = widgetAccess())
        return isEnabled ? installed->enabled(widget) : installed->visible(widget);
    // Without the widgets library, the state of some widgets only can be derived from the getters.
    if (widget->metaObject()->property(access.index).read(widget).toBool())
        return true;
    const QObject *const parent = widget->parent();
    if (isEnabled && (!parent || parent->property("enabled").toBool()))
        return false;
    return {};
}

bool isFloating(QMetaType type)
{
    return type.id() == QMetaType::Double || type.id() == QMetaType::Float;
}

bool isInteger(QMetaType type)
{
    switch (type.id()) {
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

// QVariant::convert() rounds 3.7 to 4, truncates large integers and turns any text into true.
bool keepsAll(const QVariant &value, const QVariant &converted)
{
    const QMetaType from = value.metaType();
    const QMetaType to = converted.metaType();
    if (isInteger(to) && (isInteger(from) || isFloating(from)))
        return NS::isEqual(value, converted);
    if (isFloating(to) && isFloating(from))
        return std::isinf(value.toDouble()) == std::isinf(converted.toDouble());
    if (to.id() == QMetaType::Bool && from.id() == QMetaType::QString) {
        const QString text = value.toString();
        return text == "0"_L1 || text == "1"_L1
               || text.compare(converted.toBool() ? "true"_L1 : "false"_L1, Qt::CaseInsensitive)
                          == 0;
    }
    // A pointer to an object of another class converts to null.
    const auto source = object(value);
    const auto target = object(converted);
    return !source || !*source || !target || *target;
}

// `value` converted to `type`. Nothing if it does not fit.
std::optional<QVariant> converted(const QVariant &value, QMetaType type)
{
    if (!type.isValid() || type.id() == QMetaType::QVariant || value.metaType() == type)
        return value;
    if (!value.isValid() || NS::isNullObject(value))
        return QVariant(type);
    QVariant result = value;
    if (!result.convert(type) || !keepsAll(value, result))
        return std::nullopt;
    return result;
}

// The text of the exception for a value that does not fit.
QString description(const QVariant &value, QMetaType type)
{
    QString text = value.toString();
    if (value.typeId() == QMetaType::QString)
        text = u"\"%1\""_s.arg(text);
    return u"%1%2 does not fit into %3"_s.arg(QString::fromUtf8(value.typeName()),
                                              text.isEmpty() ? text : u" "_s + text,
                                              QString::fromUtf8(type.name()));
}

void writeDynamic(QObject *object, const QString &key, const QVariant &value, const KeyPath &path)
{
    const QByteArray name = key.toUtf8();
    // setProperty() with an invalid value would remove the property.
    QVariant written = value.isValid() ? value : NS::nullObject();
    if (object->property("keepsPropertyTypes").toBool()) {
        const QMetaType type = object->property(name.constData()).metaType();
        const auto fitting = converted(value, type);
        if (!fitting)
            fail(NS::KeyValueException::notConvertible, className(object), key, path,
                 description(value, type));
        written = *fitting;
    }
    object->setProperty(name.constData(), written);
}

bool isEmpty(const QVariant &value)
{
    return !value.isValid() || NS::isNullObject(value);
}

// The property `key` of a gadget in a QVariant, or of a gadget that the QVariant points to.
struct GadgetProperty
{
    QMetaProperty property;
    const char *className = nullptr;
    bool isPointer = false;

    GadgetProperty(const QVariant &container, const QString &key, const KeyPath &path)
        : className(container.typeName())
    {
        const QMetaType type = container.metaType();
        isPointer = bool(type.flags() & QMetaType::PointerToGadget);
        const bool isGadget = isPointer || type.flags() & QMetaType::IsGadget;
        const QMetaObject *const metaObject = isGadget ? type.metaObject() : nullptr;
        if (metaObject) {
            className = metaObject->className();
            property = metaObject->property(metaObject->indexOfProperty(key.toUtf8().constData()));
        }
        if (!property.isValid())
            fail(NS::KeyValueException::undefinedKey, className, key, path,
                 suggestion(key, metaObject));
    }
    const void *data(const QVariant &value) const
    {
        return isPointer ? *static_cast<void *const *>(value.constData()) : value.constData();
    }
    void *data(QVariant &value) const
    {
        return isPointer ? *static_cast<void *const *>(value.constData()) : value.data();
    }
};

bool replaceInside(QVariant &container, const Keys &keys, qsizetype index, const QVariant &value,
                   const KeyPath &path);

// Writes `value` to keys[index...] of `inner`, an object or a container. True if `inner` has
// changed and must be written back. It is false for an object, which is changed in place, and if a
// value on the path is null, which changes nothing.
bool setInside(QVariant &inner, const Keys &keys, qsizetype index, const QVariant &value,
               const KeyPath &path)
{
    if (const auto next = object(inner)) {
        if (*next)
            setValue(*next, keys, index, value, path);
        return false;
    }
    return inner.isValid() && replaceInside(inner, keys, index, value, path);
}

bool replaceInside(QVariant &container, const Keys &keys, qsizetype index, const QVariant &value,
                   const KeyPath &path)
{
    const QString &key = keys.at(index);
    const bool isLast = index + 1 == keys.size();
    QVariant inner;
    if (!isLast) {
        inner = valueInside(container, key, path);
        if (!setInside(inner, keys, index + 1, value, path))
            return false;
    }
    if (container.typeId() == QMetaType::QVariantMap) {
        auto *const map = static_cast<QVariantMap *>(container.data());
        if (isLast && !value.isValid())
            map->remove(key);
        else
            map->insert(key, isLast ? value : inner);
        return true;
    }
    const GadgetProperty gadget(container, key, path);
    const QMetaProperty &property = gadget.property;
    if (!property.isWritable())
        fail(NS::KeyValueException::readOnly, gadget.className, key, path);
    void *const data = gadget.data(container);
    if (!data)
        return false;
    if (isLast && isEmpty(value) && property.isResettable()) {
        property.resetOnGadget(data);
        return !gadget.isPointer;
    }
    const auto fitting = converted(isLast ? value : inner, property.metaType());
    if (!fitting || !property.writeOnGadget(data, *fitting))
        fail(NS::KeyValueException::notConvertible, gadget.className, key, path,
             description(value, property.metaType()));
    return !gadget.isPointer;
}

} // namespace

QString similarKey(const QString &key, const QMetaObject *type, const QObject *object)
{
    QStringList names;
    for (int i = 0; type && i < type->propertyCount(); ++i)
        names.append(QString::fromUtf8(type->property(i).name()));
    const QList<QByteArray> dynamic = object ? object->dynamicPropertyNames() : QList<QByteArray>();
    for (const QByteArray &name : dynamic)
        names.append(QString::fromUtf8(name));
    qsizetype fewest = key.size() < 3 ? 0 : key.size() == 3 ? 1 : 2;
    QString similar;
    for (const QString &name : std::as_const(names)) {
        const qsizetype apart = editDistance(key, name);
        if (apart < fewest || (apart == fewest && similar.isEmpty())) {
            fewest = apart;
            similar = name;
        }
    }
    return similar;
}

Keys keys(const QObject *root, const KeyPath &path)
{
    Keys keys = path.split(u'.');
    if (keys.contains(QString()))
        fail(NS::KeyValueException::undefinedKey, className(root), {}, path);
    return keys;
}

Access findProperty(QObject *object, const QString &key, const KeyPath &path)
{
    if (!object)
        fail(NS::KeyValueException::undefinedKey, className(object), key, path);
    const QMetaObject *const metaObject = object->metaObject();
    Access access;
    access.index = metaObject->indexOfProperty(key.toUtf8().constData());
    if (access.index < 0) {
        if (!object->property(key.toUtf8().constData()).isValid())
            fail(NS::KeyValueException::undefinedKey, className(object), key, path,
                 suggestion(key, metaObject, object));
        return access;
    }
    const QMetaProperty property = metaObject->property(access.index);
    if (!property.isReadable())
        fail(NS::KeyValueException::undefinedKey, className(object), key, path,
             u"it can only be written"_s);
    access.type = property.metaType();
    access.isWritable = property.isWritable();
    // The getter of a D-Bus interface returns its value in a QVariant of its own.
    access.isExplicitState = isExplicitState(object, property);
    access.isPlain = isPlain(access.type) && !access.isExplicitState
                     && !object->inherits("QDBusAbstractInterface");
    return access;
}

QVariant readProperty(QObject *object, const Access &access, const QString &key)
{
    if (access.index < 0)
        return object->property(key.toUtf8().constData());
    if (access.isExplicitState)
        return explicitState(object, access, key);
    if (!access.isPlain)
        return object->metaObject()->property(access.index).read(object);
    QVariant value(access.type);
    PlainProperty { object, access.type, access.index }.read(value.data());
    return value;
}

void writeProperty(QObject *object, const Access &access, const QString &key, const QVariant &value,
                   const KeyPath &path)
{
    if (access.index < 0) {
        writeDynamic(object, key, value, path);
        return;
    }
    if (!access.isWritable)
        fail(NS::KeyValueException::readOnly, className(object), key, path);
    const QMetaProperty property = object->metaObject()->property(access.index);
    if (isEmpty(value) && property.isResettable()) {
        property.reset(object);
        return;
    }
    // QMetaProperty converts names of enumeration values; converted() cannot.
    const bool isName = property.isEnumType() && value.typeId() == QMetaType::QString;
    const auto fitting = isName ? value : converted(value, property.metaType());
    if (!fitting || !property.write(object, *fitting))
        fail(NS::KeyValueException::notConvertible, className(object), key, path,
             description(value, property.metaType()));
}

QVariant valueInside(const QVariant &container, const QString &key, const KeyPath &path)
{
    if (container.typeId() == QMetaType::QVariantMap)
        return static_cast<const QVariantMap *>(container.constData())->value(key);
    const GadgetProperty gadget(container, key, path);
    const void *const data = gadget.data(container);
    return data ? gadget.property.readOnGadget(data) : QVariant();
}

void setValue(QObject *object, const Keys &keys, qsizetype first, const QVariant &value,
              const KeyPath &path)
{
    const QString &key = keys.at(first);
    const Access access = findProperty(object, key, path);
    if (first + 1 == keys.size()) {
        writeProperty(object, access, key, value, path);
        return;
    }
    QVariant inner = readProperty(object, access, key);
    if (setInside(inner, keys, first + 1, value, path))
        writeProperty(object, access, key, inner, path);
}

bool isNumber(QMetaType type)
{
    return isInteger(type) || isFloating(type) || type.id() == QMetaType::Bool
           || type.flags() & QMetaType::IsEnumeration;
}

std::optional<QObject *> object(const QVariant &value)
{
    const QMetaType type = value.metaType();
    if (type.flags() & QMetaType::PointerToQObject)
        return *static_cast<QObject *const *>(value.constData());
    if (type.id() == QMetaType::Nullptr)
        return nullptr;
    if (holdsObject(type))
        return value.value<QObject *>();
    return std::nullopt;
}

QVariant withoutNull(const QVariant &value)
{
    if (isPointer(value.metaType()) && !*static_cast<void *const *>(value.constData()))
        return {};
    const auto held = object(value);
    return held && !*held ? QVariant() : value;
}

int isEqualMethod(const QObject *object)
{
    const QMetaMethod method = methodWithSignature(object, "isEqual(QObject*)");
    const bool answers = method.returnMetaType() == QMetaType::fromType<bool>();
    return answers ? method.methodIndex() : -1;
}

bool isEqual(QObject *first, QObject *second, int method)
{
    if (first == second || !first || !second || method < 0)
        return first == second;
    bool answer = false;
    void *arguments[] = { &answer, &second };
    QMetaObject::metacall(first, QMetaObject::InvokeMetaMethod, method, arguments);
    return answer;
}

} // namespace Pellarvine::detail
