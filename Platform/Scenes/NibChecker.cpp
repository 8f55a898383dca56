// SPDX-License-Identifier: MIT
#include "Scenes/NibChecker.h"

#include "Base/ClassRegistry.h"
#include "Scenes/NibConnector.h"
#include "Scenes/NibEntry.h"
#include "Scenes/NibVocabulary.h"

#include <QAction>
#include <QActionGroup>
#include <QButtonGroup>
#include <QDir>
#include <QFileInfo>
#include <QKeySequence>
#include <QMenu>
#include <QSet>
#include <QSizePolicy>
#include <QTableWidget>

#include <optional>
#include <utility>

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

QString valueText(const NibProperty &property)
{
    return property.values.isEmpty() ? u"<%1>"_s.arg(property.kind)
                                     : property.values.constFirst().text;
}

// The value in the text of the element, for a property of that type.
QVariant plainValue(const QString &kind, const QString &text)
{
    if (kind == "number"_L1)
        return text.toInt();
    if (kind == "double"_L1)
        return text.toDouble();
    return kind == "bool"_L1 ? QVariant(text == "true"_L1) : QVariant(text);
}

bool isPlain(const QString &kind)
{
    static const QStringList plain { u"number"_s, u"double"_s, u"bool"_s, u"string"_s,
                                     u"cstring"_s };
    return plain.contains(kind);
}

// Sets the value too: the loader drops flags of classes that it does not know.
bool takesKeys(QObject *object, const QMetaProperty &declared, const QString &text)
{
    const std::optional<int> value = valueOfKeys(declared.enumerator(), text);
    return value
           && (!object || declared.read(object).toInt() == *value
               || declared.write(object, *value));
}

// The keys in a value that is no enumeration as a whole.
bool areKeysKnown(const NibProperty &property)
{
    if (property.kind == "cursorShape"_L1)
        return valueOfKeys(QMetaEnum::fromType<Qt::CursorShape>(), valueText(property)).has_value();
    if (property.kind != "sizepolicy"_L1)
        return true;
    const QMetaEnum policies = QMetaEnum::fromType<QSizePolicy::Policy>();
    return std::all_of(property.values.cbegin() + 1, property.values.cend(),
                       [&](const NibText &key) { return valueOfKeys(policies, key.text); });
}

// "Ctrl+K, Ctrl+S"
bool areKeysOfKeyboard(const QString &text)
{
    const QKeySequence keys(text);
    for (int i = 0; i < keys.count(); ++i) {
        if (keys[i].key() == Qt::Key_unknown)
            return false;
    }
    return keys.count() > 0 || text.isEmpty();
}

bool takes(QObject *object, const QMetaProperty &declared, const NibProperty &property)
{
    const QString text = valueText(property);
    const QMetaType type = declared.metaType();
    if (!declared.isWritable() || !areKeysKnown(property))
        return false;
    if (type.id() == QMetaType::QVariant)
        return true;
    if (type.id() == QMetaType::QKeySequence && !areKeysOfKeyboard(text))
        return false;
    if (declared.isEnumType()) {
        const bool isKey = hasKeys(property) || property.kind == "string"_L1;
        return isKey ? takesKeys(object, declared, text) : isPlain(property.kind);
    }
    if (hasKeys(property))
        return false;
    if (isPlain(property.kind))
        return plainValue(property.kind, text).convert(type);
    const QMetaType held = valueType(property.kind);
    return !held.isValid() || held == type || QMetaType::canConvert(held, type);
}

bool isOfClass(const QString &className, const char *base)
{
    const NS::RegisteredClass *const known = NS::registeredClass(className);
    if (!known)
        return className == QLatin1StringView(base);
    const QMetaObject *type = known->metaObject;
    while (type && qstrcmp(type->className(), base) != 0)
        type = type->superClass();
    return type;
}

// The place that a child takes in a container that has one of it. A second child would replace the
// first or lie hidden below it. Empty if there may be several.
QString singlePlace(const QString &container, const QString &child)
{
    if (isOfClass(container, "QScrollArea") || isOfClass(container, "QDockWidget"))
        return u"widget"_s;
    if (!isOfClass(container, "QMainWindow"))
        return {};
    if (isOfClass(child, "QMenuBar"))
        return u"menu bar"_s;
    if (isOfClass(child, "QStatusBar"))
        return u"status bar"_s;
    for (const char *const several : { "QToolBar", "QDockWidget", "QMenu" }) {
        if (isOfClass(child, several))
            return {};
    }
    return u"central widget"_s;
}

} // namespace

NibChecker::NibChecker(const NibFile &file)
    : m_file(file)
{ }

void NibChecker::fail(NibError::Reason reason, const NibText &where, const QString &object,
                      const QString &name, const QString &message) const
{
    throw m_file.error(reason, where.place, object, name, message);
}

void NibChecker::failProperty(const NibElement &element, const NibProperty &property,
                              const QString &message) const
{
    fail(NibError::unknownProperty, property.name, element.name.text, property.name.text, message);
}

void NibChecker::checkClasses(const QStringList &widgets, const QStringList &layouts) const
{
    for (const NibElement &element : m_file.elements) {
        const QString &name = element.className;
        if (element.kind == NibElement::widget) {
            const NS::RegisteredClass *const known = NS::registeredClass(name);
            if (known && !known->isWidget())
                fail(NibError::unknownClass, element.name, element.name.text, name,
                     u"the class \"%1\" is no widget"_s.arg(name));
            // Designer has a name of its own for a frame that is a line.
            if (!known && !widgets.contains(name) && name != "Line"_L1)
                fail(NibError::unknownClass, element.name, element.name.text, name,
                     u"there is no class \"%1\"; NS::registerClass makes it known"_s.arg(name));
        } else if (element.kind == NibElement::layout && !layouts.contains(name)) {
            fail(NibError::unknownClass, element.name, element.name.text, name,
                 u"there is no layout class \"%1\""_s.arg(name));
        }
    }
}

void NibChecker::checkPlaces() const
{
    QSet<std::pair<int, QString>> taken;
    for (const NibElement &element : m_file.elements) {
        if (element.kind != NibElement::widget || element.parent < 0
            || m_file.elements[element.parent].kind != NibElement::widget)
            continue;
        const NibElement &container = m_file.elements[element.parent];
        const QString place = singlePlace(container.className, element.className);
        const qsizetype before = taken.size();
        if (!place.isEmpty())
            taken.insert({ element.parent, place });
        if (!place.isEmpty() && taken.size() == before)
            fail(NibError::malformed, element.name, element.name.text, element.className,
                 u"the %1 \"%2\" has a %3 already"_s.arg(container.className, container.name.text,
                                                         place));
    }
}

void NibChecker::checkResources() const
{
    // A form in the resources of a program is loaded without the files that were compiled.
    if (m_file.fileName.startsWith(u':'))
        return;
    const QDir folder = QFileInfo(m_file.fileName).dir();
    for (const NibText &resource : m_file.resources) {
        if (!QFileInfo::exists(folder.absoluteFilePath(resource.text)))
            fail(NibError::unknownImage, resource, {}, resource.text,
                 u"there is no resource file \"%1\""_s.arg(resource.text));
    }
}

void NibChecker::checkImages() const
{
    const QDir folder = QFileInfo(m_file.fileName).dir();
    for (const NibText &image : m_file.images) {
        if (!image.text.isEmpty() && !QFileInfo::exists(folder.absoluteFilePath(image.text)))
            fail(NibError::unknownImage, image, {}, image.text,
                 u"there is no picture \"%1\""_s.arg(image.text));
    }
}

void NibChecker::checkObjects(const QHash<QString, QObject *> &objects)
{
    m_objects = objects;
    for (const NibElement &element : m_file.elements) {
        for (const NibProperty &property : element.properties)
            checkProperty(element, property);
        for (const NibProperty &attribute : element.attributes)
            checkAttribute(element, attribute);
        checkCell(element);
    }
    checkNames();
    checkConnections();
}

void NibChecker::checkProperty(const NibElement &element, const NibProperty &property) const
{
    const QString &name = property.name.text;
    const bool isWithoutObject = element.kind == NibElement::item
                                 || element.kind == NibElement::spacer
                                 || element.name.text.isEmpty();
    if (isWithoutObject && holdsNibEntries(name))
        fail(NibError::unknownObject, property.name, element.name.text, name,
             u"%1 has no object that could have \"%2\"; only named widgets, layouts, actions and "
             "groups do"_s.arg(description(element), name));

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
    if (index >= 0)
        return checkDeclared(element, property, type->property(index));
    if (name == "buddy"_L1 && element.kind == NibElement::widget) {
        if (!m_objects.contains(valueText(property)))
            fail(NibError::unknownObject, property.name, element.name.text, valueText(property),
                 u"there is no object \"%1\" to be the buddy"_s.arg(valueText(property)));
        return;
    }
    // The keys of an enumeration are known from the property.
    const bool isDynamic = property.isDynamic && !isWithoutObject && !hasKeys(property);
    if (!isDynamic && !isPseudoProperty(element, name))
        failProperty(element, property,
                     u"%1 has no property \"%2\""_s.arg(description(element), name));
    if (!property.problem.isEmpty())
        failProperty(element, property, u"%1 (property \"%2\")"_s.arg(property.problem, name));
    const QString meant = misspeltNibProperty(name, property.values);
    if (!meant.isEmpty())
        failProperty(element, property,
                     u"\"%1\" has the entries of \"%2\": is the name misspelt?"_s.arg(name, meant));
}

void NibChecker::checkDeclared(const NibElement &element, const NibProperty &property,
                               const QMetaProperty &declared) const
{
    const QString &name = property.name.text;
    if (!property.problem.isEmpty())
        failProperty(element, property, u"%1 (property \"%2\")"_s.arg(property.problem, name));
    if (!takes(object(element), declared, property))
        failProperty(element, property,
                     u"the property \"%1\" of %2 cannot be \"%3\""_s.arg(name, element.className,
                                                                         valueText(property)));
}

void NibChecker::checkKnown(const NibElement &element, const NibProperty &property,
                            const NibValueKinds &known) const
{
    const QString &name = property.name.text;
    if (!property.problem.isEmpty())
        failProperty(element, property, u"%1 (property \"%2\")"_s.arg(property.problem, name));
    const bool isTaken = known.kinds.contains(property.kind)
                         && (!hasKeys(property) || valueOfKeys(known.keys, valueText(property)));
    if (!isTaken)
        failProperty(element, property,
                     u"\"%1\" of %2 cannot be \"%3\""_s.arg(name, description(element),
                                                            valueText(property)));
}

void NibChecker::checkAttribute(const NibElement &element, const NibProperty &attribute) const
{
    const QString &name = attribute.name.text;
    const QObject *const parent =
            element.parent < 0 ? nullptr : object(m_file.elements[element.parent]);
    const std::optional<NibValueKinds> known = attributeOf(object(element), parent, name);
    if (!known)
        failProperty(element, attribute,
                     u"%1 has no attribute \"%2\" here"_s.arg(description(element), name));
    checkKnown(element, attribute, *known);
    const QString value = valueText(attribute);
    if (name == "buttonGroup"_L1 && !qobject_cast<QButtonGroup *>(m_objects.value(value)))
        fail(NibError::unknownObject, attribute.name, element.name.text, value,
             u"there is no button group \"%1\""_s.arg(value));
}

void NibChecker::checkCell(const NibElement &element) const
{
    if (!element.isCell || element.parent < 0)
        return;
    const NibElement &parent = m_file.elements[element.parent];
    const auto *const table = qobject_cast<const QTableWidget *>(object(parent));
    if (!table)
        return;
    const bool isInside = element.row >= 0 && element.row < table->rowCount() && element.column >= 0
                          && element.column < table->columnCount();
    if (!isInside)
        fail(NibError::malformed, element.name, parent.name.text, parent.className,
             u"the table has no cell in row %1, column %2"_s.arg(element.row).arg(element.column));
}

void NibChecker::checkNames() const
{
    const auto objectOf = [this](const NibReference &reference) {
        return reference.element < 0 ? QString() : m_file.elements[reference.element].name.text;
    };
    for (const NibText &name : m_file.tabStops) {
        if (!m_objects.contains(name.text))
            fail(NibError::unknownObject, name, {}, name.text,
                 u"there is no object \"%1\" to be a tab stop"_s.arg(name.text));
    }
    for (const NibReference &added : m_file.actions) {
        const QString &name = added.name.text;
        const QObject *const action = m_objects.value(name);
        const bool isAction = qobject_cast<const QAction *>(action)
                              || qobject_cast<const QActionGroup *>(action)
                              || qobject_cast<const QMenu *>(action);
        if (!isAction && name != "separator"_L1)
            fail(NibError::unknownObject, added.name, objectOf(added), name,
                 u"there is no action or menu \"%1\" to add"_s.arg(name));
    }
    for (const NibReference &placed : m_file.zOrder) {
        const QString &name = placed.name.text;
        const QObject *const widget = m_objects.value(name);
        if (!widget || !widget->isWidgetType())
            fail(NibError::unknownObject, placed.name, objectOf(placed), name,
                 u"there is no widget \"%1\" to be raised"_s.arg(name));
    }
    for (const NibText &keys : m_file.alignments) {
        if (!keys.text.isEmpty() && !valueOfKeys(QMetaEnum::fromType<Qt::Alignment>(), keys.text))
            fail(NibError::unknownProperty, keys, {}, keys.text,
                 u"the alignment cannot be \"%1\""_s.arg(keys.text));
    }
}

// The loader has connected these already, as far as it could.
void NibChecker::checkConnections() const
{
    for (const NibConnection &connection : m_file.connections) {
        for (const NibText &name : { connection.sender, connection.receiver }) {
            if (!m_objects.contains(name.text))
                fail(NibError::unknownObject, name, {}, name.text,
                     u"there is no object \"%1\" to connect"_s.arg(name.text));
        }
        try {
            signalAndSlot(
                    m_objects.value(connection.sender.text)->metaObject(), connection.signal.text,
                    m_objects.value(connection.receiver.text)->metaObject(), connection.slot.text);
        } catch (const NibFault &fault) {
            fail(fault.reason, connection.signal, connection.sender.text, fault.name,
                 fault.message);
        }
    }
}

} // namespace Pellarvine::detail
