// SPDX-License-Identifier: MIT
#include "Scenes/NibChecker.h"

#include "Base/ClassRegistry.h"
#include "Scenes/NibConnector.h"
#include "Scenes/NibVocabulary.h"

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSet>

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

using NS::NibError;

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

// The number of rows or columns of a table, which has as many as heads of them, if any. Subclasses
// may set another number, which the file does not say.
int cellCount(const NibElement &table, int heads, QLatin1StringView property)
{
    if (heads > 0)
        return heads;
    const auto found = std::find_if(
            table.properties.cbegin(), table.properties.cend(),
            [property](const NibProperty &candidate) { return candidate.name.text == property; });
    if (found != table.properties.cend())
        return found->value.text.toInt();
    return table.className == "QTableWidget"_L1 ? 0 : std::numeric_limits<int>::max();
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

void NibChecker::checkClasses(const QStringList &widgets, const QStringList &layouts) const
{
    QSet<std::pair<int, QString>> checked; // each class once
    for (const NibElement &element : m_file.elements) {
        const QString &name = element.className;
        const qsizetype before = checked.size();
        checked.insert({ element.kind, name });
        if (checked.size() == before)
            continue;
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
    checkCells();
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

void NibChecker::checkEditing() const
{
    const auto hasPages = [this](const QString &className) {
        const auto containers = { "QMainWindow", "QDockWidget", "QTabWidget", "QStackedWidget",
                                  "QToolBox",    "QScrollArea", "QMdiArea",   "QWizard" };
        return m_file.addPageMethods.contains(className)
               || std::any_of(containers.begin(), containers.end(), [&](const char *container) {
                      return isOfClass(className, container);
                  });
    };
    for (const NibElement &layout : m_file.elements) {
        if (layout.kind != NibElement::layout || layout.parent < 0)
            continue;
        const NibElement &widget = m_file.elements[layout.parent];
        int container = widget.parent;
        while (container >= 0 && m_file.elements[container].kind != NibElement::widget)
            container = m_file.elements[container].parent;
        if (widget.className == "QWidget"_L1 && !widget.isNative && !widget.properties.isEmpty()
            && container >= 0 && !hasPages(m_file.elements[container].className))
            fail(NibError::malformed, widget.name, widget.name.text, u"native"_s,
                 u"Qt Designer would save nothing of this QWidget but its layout: it needs the "
                 "attribute native=\"true\""_s);
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
        const bool isMade =
                element.kind == NibElement::widget || element.kind == NibElement::action;
        if (isMade && !object(element))
            fail(NibError::malformed, element.name, element.name.text, element.className,
                 u"there is no place for this object here"_s);
    }
    checkNames();
    checkConnections();
}

// The loader would leak an item that the table has no cell for.
void NibChecker::checkCells() const
{
    for (const NibElement &element : m_file.elements) {
        if (!element.isCell || element.parent < 0)
            continue;
        const NibElement &parent = m_file.elements[element.parent];
        if (parent.className != "QTableWidget"_L1 && parent.rowHeads == 0)
            continue; // an item of a list or a tree
        const bool isInside =
                element.row >= 0 && element.row < cellCount(parent, parent.rowHeads, "rowCount"_L1)
                && element.column >= 0
                && element.column < cellCount(parent, parent.columnHeads, "columnCount"_L1);
        if (!isInside)
            fail(NibError::malformed, element.name, parent.name.text, parent.className,
                 u"the table has no cell in row %1, column %2"_s.arg(element.row)
                         .arg(element.column));
    }
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
