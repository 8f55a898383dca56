// SPDX-License-Identifier: MIT
#include "Scenes/NibProperties.h"

#include "Scenes/NibEntry.h"
#include "Scenes/NibTexts.h"
#include "Scenes/NibVocabulary.h"

#include <QButtonGroup>
#include <QKeySequence>
#include <QSizePolicy>
#include <QVariant>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

using NS::NibError;

// The name in messages.
QString description(const NibElement &element)
{
    if (element.kind == NibElement::item)
        return u"an item"_s;
    return element.kind == NibElement::spacer ? u"a spacer"_s : element.className;
}

// Properties of the loader that the class does not have.
bool isPseudoProperty(const NibElement &element, const QString &name)
{
    return (element.className == "Line"_L1 && name == "orientation"_L1)
           || (element.className == "QToolBox"_L1 && name == "tabSpacing"_L1);
}

bool hasKeys(const NibProperty &property)
{
    return property.kind == "enum"_L1 || property.kind == "set"_L1;
}

bool isPlain(const QString &kind)
{
    return kind == "string"_L1 || kind == "number"_L1 || kind == "bool"_L1 || kind == "double"_L1
           || kind == "cstring"_L1;
}

QVariant plainValue(const QString &kind, const QString &text)
{
    if (kind == "number"_L1)
        return text.toInt();
    if (kind == "double"_L1)
        return text.toDouble();
    return kind == "bool"_L1 ? QVariant(text == "true"_L1) : QVariant(text);
}

// The keys in a value that is no enumeration as a whole.
bool areKeysKnown(const NibProperty &property)
{
    if (property.kind == "cursorShape"_L1)
        return valueOfKeys(QMetaEnum::fromType<Qt::CursorShape>(), property.value.text).has_value();
    if (property.kind != "sizepolicy"_L1)
        return true;
    const QMetaEnum policies = QMetaEnum::fromType<QSizePolicy::Policy>();
    return std::all_of(property.parts.cbegin(), property.parts.cend(),
                       [&](const NibText &key) { return valueOfKeys(policies, key.text); });
}

// "Ctrl+K, Ctrl+S"
bool isShortcut(const QString &text)
{
    const QKeySequence keys(text);
    for (int i = 0; i < keys.count(); ++i) {
        if (keys[i].key() == Qt::Key_unknown)
            return false;
    }
    return keys.count() > 0 || text.isEmpty();
}

// The value of an enumeration, a number, a Boolean or a text for the property. Empty if it does not
// fit.
std::optional<QVariant> valueFor(const QMetaProperty &declared, const NibProperty &property)
{
    const QString text = property.value.text;
    const QMetaType type = declared.metaType();
    if (declared.isEnumType() && (hasKeys(property) || property.kind == "string"_L1)) {
        const std::optional<int> value = valueOfKeys(declared.enumerator(), text);
        return value ? std::optional<QVariant>(*value) : std::nullopt;
    }
    QVariant value = plainValue(property.kind, text);
    if (declared.isEnumType() || type.id() == QMetaType::QVariant || type == value.metaType())
        return value;
    const bool fits = !hasKeys(property)
                      && (type.id() != QMetaType::QKeySequence || isShortcut(text))
                      && value.convert(type);
    return fits ? std::optional(value) : std::nullopt;
}

// Whether the loader can set the value. Sets the keys of an enumeration if it has not: it ignores
// those of classes that it does not know.
bool fits(QObject *object, const QMetaProperty &declared, const NibProperty &property)
{
    if (!declared.isWritable() || !areKeysKnown(property))
        return false;
    if (isPlain(property.kind) || hasKeys(property)) {
        const std::optional<QVariant> value = valueFor(declared, property);
        return value
               && (!object || !declared.isEnumType()
                   || declared.read(object).toInt() == value->toInt()
                   || declared.write(object, *value));
    }
    const QMetaType type = declared.metaType();
    const QMetaType held = valueType(property.kind);
    return type.id() == QMetaType::QVariant
           || (!declared.isEnumType()
               && (!held.isValid() || held == type || QMetaType::canConvert(held, type)));
}

} // namespace

NibProperties::NibProperties(const NibFile &file, const QHash<QString, QObject *> &objects,
                             NibTexts &texts)
    : m_file(file)
    , m_objects(objects)
    , m_texts(texts)
{ }

void NibProperties::fail(const NibElement &element, const NibProperty &property,
                         const QString &message) const
{
    throw m_file.error(NibError::unknownProperty, property.name.place, element.name.text,
                       property.name.text, message);
}

void NibProperties::failObject(const NibElement &element, const NibProperty &property,
                               const QString &name, const QString &message) const
{
    throw m_file.error(NibError::unknownObject, property.name.place, element.name.text, name,
                       message);
}

void NibProperties::failValue(const NibElement &element, const NibProperty &property) const
{
    fail(element, property,
         u"the property \"%1\" of %2 cannot be \"%3\""_s.arg(property.name.text, element.className,
                                                             property.value.text));
}

void NibProperties::setPlain(QObject *object, const NibElement &element) const
{
    const QMetaObject *const type = object->metaObject();
    for (qsizetype i = 0; i < element.plainCount; ++i) {
        const NibProperty &property = element.properties[i];
        const QByteArray name = property.name.text.toUtf8();
        const int index = type->indexOfProperty(name.constData());
        if (index < 0) {
            checkUndeclared(element, property);
            if (holdsNibEntries(property.name.text))
                continue;
        }
        const QMetaProperty declared = type->property(index);
        std::optional<QVariant> value = index < 0 ? plainValue(property.kind, property.value.text)
                                                  : valueFor(declared, property);
        if (property.translatable && value && !declared.isEnumType())
            value = m_texts.add(object, name, *property.translatable);
        if (index < 0)
            object->setProperty(name.constData(), *value);
        else if (!value || !declared.write(object, *value))
            failValue(element, property);
    }
}

void NibProperties::checkOthers(const NibElement &element) const
{
    for (qsizetype i = element.plainCount; i < element.properties.size(); ++i)
        checkProperty(element, element.properties[i]);
    for (const NibProperty &attribute : element.attributes)
        checkAttribute(element, attribute);
}

void NibProperties::checkProperty(const NibElement &element, const NibProperty &property) const
{
    const QString &name = property.name.text;
    QObject *const object = this->object(element);
    const QMetaObject *type = object ? object->metaObject() : nullptr;
    std::optional<NibValueKinds> known;
    if (element.kind == NibElement::item) {
        known = itemProperty(name);
    } else if (element.kind == NibElement::spacer) {
        known = spacerProperty(name);
    } else if (element.kind == NibElement::layout) {
        known = layoutProperty(name);
        type = layoutMetaObject(element.className);
    }
    if (known)
        return checkKnown(element, property, *known);
    const int index = type ? type->indexOfProperty(name.toUtf8().constData()) : -1;
    if (index < 0)
        return checkUndeclared(element, property);
    checkProblem(element, property);
    if (!fits(object, type->property(index), property))
        failValue(element, property);
    // The loader does not translate lists.
    if (object && property.translatable && !property.parts.isEmpty()) {
        QList<NibTranslatable> texts;
        for (const NibText &part : property.parts)
            texts.append({ part.text.toUtf8(), property.translatable->qualifier });
        object->setProperty(name.toUtf8().constData(), m_texts.add(object, name.toUtf8(), texts));
    }
}

void NibProperties::checkUndeclared(const NibElement &element, const NibProperty &property) const
{
    const QString &name = property.name.text;
    const bool isWithoutObject = element.kind == NibElement::item
                                 || element.kind == NibElement::spacer
                                 || element.name.text.isEmpty();
    if (isWithoutObject && holdsNibEntries(name))
        failObject(element, property, name,
                   u"%1 has no object that could have \"%2\"; only named widgets, layouts, actions "
                   "and groups do"_s.arg(description(element), name));
    if (name == "buddy"_L1 && element.kind == NibElement::widget) {
        if (!m_objects.contains(property.value.text))
            failObject(element, property, property.value.text,
                       u"there is no object \"%1\" to be the buddy"_s.arg(property.value.text));
        return;
    }
    // The keys of an enumeration are known from the property.
    const bool isDynamic = property.isDynamic && !isWithoutObject && !hasKeys(property);
    if (!isDynamic && !isPseudoProperty(element, name))
        fail(element, property, u"%1 has no property \"%2\""_s.arg(description(element), name));
    checkProblem(element, property);
    const QString meant = misspeltNibProperty(name, property.texts());
    if (!meant.isEmpty())
        fail(element, property,
             u"\"%1\" has the entries of \"%2\": is the name misspelt?"_s.arg(name, meant));
}

void NibProperties::checkProblem(const NibElement &element, const NibProperty &property) const
{
    if (!property.problem.isEmpty())
        fail(element, property,
             u"%1 (property \"%2\")"_s.arg(property.problem, property.name.text));
}

void NibProperties::checkKnown(const NibElement &element, const NibProperty &property,
                               const NibValueKinds &known) const
{
    checkProblem(element, property);
    const bool isTaken = known.kinds.contains(property.kind)
                         && (!hasKeys(property) || valueOfKeys(known.keys, property.value.text));
    if (!isTaken)
        fail(element, property,
             u"\"%1\" of %2 cannot be \"%3\""_s.arg(property.name.text, description(element),
                                                    property.value.text));
}

void NibProperties::checkAttribute(const NibElement &element, const NibProperty &attribute) const
{
    const QString &name = attribute.name.text;
    const QObject *const parent =
            element.parent < 0 ? nullptr : object(m_file.elements[element.parent]);
    const std::optional<NibValueKinds> known = attributeOf(object(element), parent, name);
    if (!known)
        fail(element, attribute,
             u"%1 has no attribute \"%2\" here"_s.arg(description(element), name));
    checkKnown(element, attribute, *known);
    const QString value = attribute.value.text;
    if (name == "buttonGroup"_L1 && !qobject_cast<QButtonGroup *>(m_objects.value(value)))
        failObject(element, attribute, value, u"there is no button group \"%1\""_s.arg(value));
}

} // namespace Pellarvine::detail
