// SPDX-License-Identifier: MIT
#include "Scenes/NSNib.h"

#include "Base/ClassRegistry.h"
#include "Base/MethodLookup.h"
#include "Scenes/NibConnector.h"
#include "Scenes/NibEntry.h"
#include "Scenes/NibFile.h"

#include <QAction>
#include <QActionGroup>
#include <QBuffer>
#include <QButtonGroup>
#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLayout>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QUiLoader>
#include <QWidget>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

using detail::NibConnector;
using detail::NibElement;
using detail::NibFile;
using detail::NibProperty;
using detail::NibText;

// The files of the library itself stand in this folder of the resources.
const QString libraryFolder = u":/pellarvine"_s;

// Marks what has been awakened.
constexpr char awakeProperty[] = "_q_pellarvine_awake";

// Takes a handled property away, and what would bring it back when the language changes.
void clearEntries(QObject *object, const QByteArray &property)
{
    object->setProperty(property.constData(), {});
    object->setProperty(("_q_notr_" + property).constData(), {});
}

void callAwakeFromNib(QObject *object)
{
    detail::methodWithSignature(object, "awakeFromNib()").invoke(object, Qt::DirectConnection);
}

// Calls awakeFromNib() of all that declare it, the owner last. It may destroy any of them.
void awaken(const QList<QPointer<QObject>> &objects, const QPointer<QObject> &owner)
{
    for (const QPointer<QObject> &object : objects) {
        if (object && !object->property(awakeProperty).isValid()) {
            object->setProperty(awakeProperty, true);
            callAwakeFromNib(object);
        }
    }
    if (owner && !objects.contains(owner))
        callAwakeFromNib(owner);
}

// Makes the objects, and remembers them by name.
class Loader : public QUiLoader
{
public:
    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override
    {
        const RegisteredClass *const known = registeredClass(className);
        if (!known)
            return added(QUiLoader::createWidget(className, parent, name), name);
        auto *const widget = static_cast<QWidget *>(known->make(parent));
        widget->setObjectName(name);
        return added(widget, name);
    }
    QLayout *createLayout(const QString &className, QObject *parent, const QString &name) override
    {
        return added(QUiLoader::createLayout(className, parent, name), name);
    }
    QAction *createAction(QObject *parent, const QString &name) override
    {
        return added(QUiLoader::createAction(parent, name), name);
    }
    QActionGroup *createActionGroup(QObject *parent, const QString &name) override
    {
        return added(QUiLoader::createActionGroup(parent, name), name);
    }

    QHash<QString, QObject *> objects;

private:
    template <typename T>
    T *added(T *object, const QString &name)
    {
        if (object && !name.isEmpty())
            objects.insert(name, object);
        return object;
    }
};

// One loading of a file.
class Loading
{
public:
    Loading(const NibFile &file, QObject *owner)
        : m_file(file)
        , m_owner(owner)
    { }

    QWidget *run(QWidget *parent)
    {
        checkClasses();
        checkImages();
        m_loader.setLanguageChangeEnabled(true);
        m_loader.setWorkingDirectory(QFileInfo(m_file.fileName).dir());
        QByteArray contents = m_file.contents;
        QBuffer buffer(&contents);
        buffer.open(QIODevice::ReadOnly);
        std::unique_ptr<QWidget> root(m_loader.load(&buffer, parent));
        if (!root)
            throw m_file.error(NibError::malformed, {}, {}, {}, m_loader.errorString());
        findButtonGroups(root.get());
        for (const NibElement &element : m_file.elements)
            checkProperties(element);
        checkNames();
        addPages();

        NibConnector connector(m_owner, m_loader.objects, m_file.fileName);
        connectWith(connector);
        try {
            awaken();
        } catch (...) {
            connector.undo();
            throw;
        }
        return root.release();
    }

private:
    [[noreturn]] void fail(NibError::Reason reason, const NibText &where, const QString &object,
                           const QString &name, const QString &message) const
    {
        throw m_file.error(reason, where.place, object, name, message);
    }

    // Null for a layout without a name.
    QObject *object(const NibElement &element) const
    {
        return m_loader.objects.value(element.name.text);
    }

    void checkClasses() const
    {
        const QStringList widgets = m_loader.availableWidgets();
        const QStringList layouts = m_loader.availableLayouts();
        for (const NibElement &element : m_file.elements) {
            const QString &name = element.className;
            if (element.kind == NibElement::widget) {
                const RegisteredClass *const known = registeredClass(name);
                if (known && !known->isWidget())
                    fail(NibError::unknownClass, element.name, element.name.text, name,
                         u"the class \"%1\" is no widget"_s.arg(name));
                // A line is a frame that Designer has a name of its own for.
                if (!known && !widgets.contains(name) && name != "Line"_L1)
                    fail(NibError::unknownClass, element.name, element.name.text, name,
                         u"there is no class \"%1\"; NS::registerClass makes it known"_s.arg(name));
            } else if (element.kind == NibElement::layout && !layouts.contains(name)) {
                fail(NibError::unknownClass, element.name, element.name.text, name,
                     u"there is no layout class \"%1\""_s.arg(name));
            }
        }
    }

    void checkImages() const
    {
        const QDir folder = QFileInfo(m_file.fileName).dir();
        for (const NibText &image : m_file.images) {
            if (!image.text.isEmpty() && !QFileInfo::exists(folder.absoluteFilePath(image.text)))
                fail(NibError::unknownImage, image, {}, image.text,
                     u"there is no picture \"%1\""_s.arg(image.text));
        }
    }

    void findButtonGroups(const QWidget *root)
    {
        for (const NibElement &element : m_file.elements) {
            if (element.kind != NibElement::buttonGroup)
                continue;
            if (auto *const group = root->findChild<QButtonGroup *>(element.name.text))
                m_loader.objects.insert(element.name.text, group);
        }
    }

    // Finds what the loader has left out without a word.
    void checkProperties(const NibElement &element) const
    {
        QObject *const object = this->object(element);
        // The properties of layouts are the loader's own, such as the four margins.
        if (!object || element.kind == NibElement::layout)
            return;
        for (const NibProperty &property : element.properties) {
            const QString &name = property.name.text;
            const int index = object->metaObject()->indexOfProperty(name.toUtf8().constData());
            if (index >= 0) {
                checkProperty(object, object->metaObject()->property(index), property);
            } else if (name == "buddy"_L1 && !property.values.isEmpty()) {
                const QString buddy = property.values.constFirst().text;
                if (!m_loader.objects.contains(buddy))
                    fail(NibError::unknownObject, property.name, element.name.text, buddy,
                         u"there is no object \"%1\" to be the buddy"_s.arg(buddy));
            } else if (!property.isDynamic && !isPseudoProperty(element, name)) {
                fail(NibError::unknownProperty, property.name, element.name.text, name,
                     u"%1 has no property \"%2\""_s.arg(element.className, name));
            }
        }
    }

    // Properties that the loader has and the class has not.
    static bool isPseudoProperty(const NibElement &element, const QString &name)
    {
        return (element.className == "Line"_L1 && name == "orientation"_L1)
               || (element.className == "QToolBox"_L1 && name == "tabSpacing"_L1);
    }

    void checkProperty(QObject *object, const QMetaProperty &declared,
                       const NibProperty &property) const
    {
        if (property.values.isEmpty())
            return;
        const QString &text = property.values.constFirst().text;
        const QString &kind = property.kind;
        bool isTaken = declared.isWritable();
        if (kind == "enum"_L1 || kind == "set"_L1) {
            if (declared.isEnumType())
                isTaken = isTaken && writeKeys(object, declared, text);
        } else if (kind == "number"_L1 || kind == "double"_L1 || kind == "bool"_L1
                   || kind == "string"_L1 || kind == "cstring"_L1) {
            QVariant value = text;
            if (kind == "number"_L1)
                value = text.toLongLong();
            else if (kind == "double"_L1)
                value = text.toDouble();
            else if (kind == "bool"_L1)
                value = text == "true"_L1;
            isTaken = isTaken
                      && (declared.isEnumType() || declared.typeId() == QMetaType::QVariant
                          || value.convert(declared.metaType()));
        }
        if (!isTaken)
            fail(NibError::unknownProperty, property.name, object->objectName(), property.name.text,
                 u"the property \"%1\" of %2 cannot be \"%3\""_s.arg(
                         property.name.text, QString::fromUtf8(object->metaObject()->className()),
                         text));
    }

    // "Qt::AlignRight|Qt::AlignTop". The scopes are left to the property, since that of a class in
    // a namespace is spelt in several ways.
    static bool writeKeys(QObject *object, const QMetaProperty &property, const QString &text)
    {
        QStringList keys = text.split(u'|', Qt::SkipEmptyParts);
        for (QString &key : keys)
            key = key.section(u"::"_s, -1).trimmed();
        bool isValid = true;
        const int value =
                property.enumerator().keysToValue(keys.join(u'|').toUtf8().constData(), &isValid);
        if (!isValid && !keys.isEmpty())
            return false;
        return property.read(object).toInt() == value || property.write(object, value);
    }

    void checkNames() const
    {
        for (const NibText &name : m_file.tabStops) {
            if (!m_loader.objects.contains(name.text))
                fail(NibError::unknownObject, name, {}, name.text,
                     u"there is no object \"%1\" to be a tab stop"_s.arg(name.text));
        }
        // The loader has connected these by now, those that it could.
        for (const detail::NibConnection &connection : m_file.connections) {
            for (const NibText &name : { connection.sender, connection.receiver }) {
                if (!m_loader.objects.contains(name.text))
                    fail(NibError::unknownObject, name, {}, name.text,
                         u"there is no object \"%1\" to connect"_s.arg(name.text));
            }
            try {
                detail::signalAndSlot(
                        m_loader.objects.value(connection.sender.text), connection.signal.text,
                        m_loader.objects.value(connection.receiver.text), connection.slot.text);
            } catch (const detail::NibFault &fault) {
                fail(fault.reason, connection.signal, connection.sender.text, fault.name,
                     fault.message);
            }
        }
    }

    // Hands the children of custom containers to the method that the file names for that. The
    // loader has done so where the file spells the class as the class itself does.
    void addPages() const
    {
        for (const NibElement &element : m_file.elements) {
            if (element.kind != NibElement::widget || element.parent < 0)
                continue;
            const NibElement &parent = m_file.elements[element.parent];
            const QString method = m_file.addPageMethods.value(parent.className);
            auto *const container = qobject_cast<QWidget *>(object(parent));
            auto *const page = qobject_cast<QWidget *>(object(element));
            // Qt's own containers have taken theirs already.
            if (method.isEmpty() || !container || page->parentWidget() != container)
                continue;
            const QByteArray signature = method.section(u'(', 0, 0).toUtf8() + "(QWidget*)";
            const QMetaMethod adds = detail::methodWithSignature(container, signature.constData());
            if (!adds.isValid())
                fail(NibError::unknownMethod, parent.name, parent.name.text, method,
                     u"%1 has no method \"%2\" that adds a widget"_s.arg(parent.className, method));
            if (parent.className == QString::fromUtf8(container->metaObject()->className()))
                continue;
            adds.invoke(container, Qt::DirectConnection, Q_ARG(QWidget *, page));
        }
    }

    void connectWith(NibConnector &connector) const
    {
        for (const NibElement &element : m_file.elements) {
            QObject *const object = this->object(element);
            for (const NibProperty &property : element.properties) {
                const QString &name = property.name.text;
                if (!detail::holdsNibEntries(name))
                    continue;
                const QByteArray key = name.toUtf8();
                if (!object || object->metaObject()->indexOfProperty(key.constData()) >= 0)
                    continue;
                for (const NibText &entries : property.values)
                    connector.add(object, name, entries);
                // Not to be handled again by whoever awakens a tree that this one is part of.
                clearEntries(object, key);
            }
        }
        connector.connect();
    }

    void awaken() const
    {
        QList<QPointer<QObject>> sleepers;
        QList<int> open;
        const auto close = [&](int parent) {
            while (!open.isEmpty() && open.constLast() != parent)
                sleepers.append(object(m_file.elements[open.takeLast()]));
        };
        for (int i = 0; i < m_file.elements.size(); ++i) {
            close(m_file.elements[i].parent);
            open.append(i);
        }
        close(-1);
        NS::awaken(sleepers, m_owner);
    }

    const NibFile &m_file;
    QPointer<QObject> m_owner;
    Loader m_loader;
};

// Below `object` first, in the order in which the objects were made.
void collect(QObject *object, QList<QPointer<QObject>> &found)
{
    for (QObject *const child : object->children())
        collect(child, found);
    if (!object->objectName().isEmpty())
        found.append(object);
}

QString found(const QString &path)
{
    return QFileInfo(path).isFile() ? path : QString();
}

QString foundInResources(const QString &name)
{
    if (QString path = found(u":/"_s + name); !path.isEmpty())
        return path;
    QStringList paths;
    QDirIterator folders(u":/"_s, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (folders.hasNext()) {
        const QString folder = folders.next();
        // Neither Qt's own nor the library's.
        const bool isOthers = folder.startsWith(":/qt-project.org"_L1) || folder == libraryFolder
                              || folder.startsWith(libraryFolder + u'/');
        if (isOthers)
            continue;
        if (QString path = found(folder + u'/' + name); !path.isEmpty())
            paths.append(path);
    }
    // Of several, always the same one.
    const auto first = std::min_element(paths.cbegin(), paths.cend());
    return first == paths.cend() ? QString() : *first;
}

QByteArray contentsOf(const QString &name, const QString &path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        throw NibError(NibError::fileNotFound, path.isEmpty() ? name : path, 0, 0, {}, name,
                       path.isEmpty() ? u"there is no interface file of this name"_s
                                      : file.errorString());
    return file.readAll();
}

} // namespace

Nib::Nib(const QString &name)
    : Nib(contentsOf(name, path(name)), path(name))
{ }

Nib::Nib(const QByteArray &contents, const QString &fileName)
    : m_file(std::make_shared<const NibFile>(contents, fileName))
{ }

const QString &Nib::fileName() const
{
    return m_file->fileName;
}

QWidget *Nib::instantiate(QObject *owner, QWidget *parent) const
{
    return Loading(*m_file, owner).run(parent);
}

QString Nib::path(const QString &name)
{
    if (name.isEmpty())
        return {};
    const QString file = name.endsWith(".ui"_L1) ? name : name + u".ui"_s;
    if (QDir::isAbsolutePath(file))
        return found(file);
    QString path = foundInResources(file);
    if (path.isEmpty())
        path = found(QCoreApplication::applicationDirPath() + u'/' + file);
    if (path.isEmpty())
        path = found(libraryFolder + u'/' + file);
    return path;
}

void Nib::awaken(QWidget *root, QObject *owner)
{
    QList<QPointer<QObject>> objects;
    collect(root, objects);
    QHash<QString, QObject *> byName;
    for (const QPointer<QObject> &object : std::as_const(objects))
        byName.insert(object->objectName(), object);
    NibConnector connector(owner, byName, {});
    for (const QPointer<QObject> &object : std::as_const(objects)) {
        for (const QByteArray &property : object->dynamicPropertyNames()) {
            const QString name = QString::fromUtf8(property);
            if (!detail::holdsNibEntries(name))
                continue;
            const QStringList values = object->property(property.constData()).toStringList();
            for (const QString &entries : values)
                connector.add(object, name, { entries, {} });
            clearEntries(object, property);
        }
    }
    connector.connect();
    NS::awaken(objects, owner);
}

} // namespace NS
