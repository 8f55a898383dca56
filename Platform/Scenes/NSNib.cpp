// SPDX-License-Identifier: MIT
#include "Scenes/NSNib.h"

#include "Base/ClassRegistry.h"
#include "Base/MethodLookup.h"
#include "Scenes/NibChecker.h"
#include "Scenes/NibConnector.h"
#include "Scenes/NibEntry.h"
#include "Scenes/NibFile.h"
#include "Scenes/NibProperties.h"
#include "Scenes/NibTexts.h"

#include <QAction>
#include <QActionGroup>
#include <QBuffer>
#include <QButtonGroup>
#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QDockWidget>
#include <QFile>
#include <QFileInfo>
#include <QLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QRegularExpression>
#include <QStatusBar>
#include <QToolBar>
#include <QUiLoader>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>
#include <exception>
#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

using detail::NibChecker;
using detail::NibConnector;
using detail::NibElement;
using detail::NibFile;
using detail::NibProperties;
using detail::NibProperty;
using detail::NibText;
using detail::NibTexts;
using detail::XmlPlace;

// The files of the library itself stand in this folder of the resources.
const QString libraryFolder = u":/pellarvine"_s;

// Marks objects whose awakeFromNib() was called.
constexpr char awakeProperty[] = "_q_pellarvine_awake";

// The message of Qt's loader for what it cannot read.
constexpr char loaderMessage[] =
        "An error has occurred while reading the UI file at line %1, column %2: %3";

// Removes a processed property, and the text that would set it again when the language changes.
void clearEntries(QObject *object, const QByteArray &property)
{
    object->setProperty(property.constData(), {});
    object->setProperty(("_q_notr_" + property).constData(), {});
}

// Calls awakeFromNib() of the objects that declare it.
class Awakening
{
public:
    // In the order of the calls.
    void add(QObject *object)
    {
        if (object && method(object).isValid())
            m_objects.append(object);
    }

    // Calls the owner last, which may be null. A call may delete any object.
    void run(const QPointer<QObject> &owner)
    {
        const bool isOwnerIn = m_objects.contains(owner);
        for (const QPointer<QObject> &object : std::as_const(m_objects)) {
            if (object && !object->property(awakeProperty).isValid()) {
                object->setProperty(awakeProperty, true);
                call(object);
            }
        }
        if (owner && !isOwnerIn)
            call(owner);
    }

private:
    // Looked up once for each class.
    QMetaMethod method(const QObject *object)
    {
        const auto found = m_methods.constFind(object->metaObject());
        if (found != m_methods.cend())
            return *found;
        return *m_methods.insert(object->metaObject(),
                                 detail::methodWithSignature(object, "awakeFromNib()"));
    }

    void call(QObject *object) { method(object).invoke(object, Qt::DirectConnection); }

    QList<QPointer<QObject>> m_objects;
    QHash<const QMetaObject *, QMetaMethod> m_methods;
};

// Makes the objects of a file with their properties, and remembers them by name.
class ObjectLoader : public QUiLoader
{
public:
    explicit ObjectLoader(const NibFile &file)
        : m_file(file)
        , m_texts(std::make_unique<NibTexts>(file.className, file.hasTextIds))
        , m_properties(file, objects, *m_texts)
    {
        setLanguageChangeEnabled(true);
        setWorkingDirectory(QFileInfo(file.fileName).dir());
    }

    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override
    {
        auto make = m_makers.constFind(className);
        if (make == m_makers.cend()) {
            const RegisteredClass *const known = registeredClass(className);
            make = m_makers.insert(className, known ? known->make : ObjectMaker());
        }
        if (!*make)
            return added(QUiLoader::createWidget(className, parent, name), name);
        auto *const widget = static_cast<QWidget *>((*make)(parent));
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

    // Throws NibError, and the exceptions of the setters of properties.
    std::unique_ptr<QWidget> make(QWidget *parent)
    {
        QByteArray contents = m_file.loaderContents;
        QBuffer buffer(&contents);
        buffer.open(QIODevice::ReadOnly);
        std::unique_ptr<QWidget> root(load(&buffer, parent));
        if (m_exception)
            std::rethrow_exception(m_exception);
        if (!root)
            fail();
        addButtonGroups(root.get());
        for (const NibElement &element : m_file.elements)
            m_properties.checkOthers(element);
        if (m_texts->isEmpty())
            return root;
        texts = m_texts.release();
        texts->follow(root.get());
        return root;
    }

    QHash<QString, QObject *> objects;
    NibTexts *texts = nullptr; // of the form, if it has any

private:
    template <typename T>
    T *added(T *object, const QString &name)
    {
        if (!object || name.isEmpty())
            return object;
        objects.insert(name, object);
        // No exception may leave a function that the loader calls.
        try {
            if (const NibElement *const element = m_file.element(name))
                m_properties.setPlain(object, *element);
        } catch (...) {
            if (!m_exception)
                m_exception = std::current_exception();
        }
        return object;
    }

    void addButtonGroups(const QWidget *root)
    {
        for (const NibElement &element : m_file.elements) {
            if (element.kind != NibElement::buttonGroup)
                continue;
            if (auto *const group = root->findChild<QButtonGroup *>(element.name.text))
                objects.insert(element.name.text, group);
        }
    }

    // The message of the loader contains the place where the tag of an unknown element or attribute
    // ends. The whole file is read again for the place in that.
    [[noreturn]] void fail() const
    {
        QByteArray contents = m_file.contents;
        QBuffer buffer(&contents);
        buffer.open(QIODevice::ReadOnly);
        QUiLoader loader;
        const std::unique_ptr<QWidget> root(loader.load(&buffer));
        const QString message = root ? errorString() : loader.errorString();
        QString pattern = QRegularExpression::escape(
                QCoreApplication::translate("QAbstractFormBuilder", loaderMessage));
        pattern.replace(u"\\%1"_s, u"(?<line>[0-9]+)"_s)
                .replace(u"\\%2"_s, u"(?<column>[0-9]+)"_s)
                .replace(u"\\%3"_s, u"(?<problem>.+)"_s);
        const auto match = QRegularExpression(pattern).match(message);
        if (!match.hasMatch())
            throw m_file.error(NibError::malformed, {}, {}, {}, message);
        const XmlPlace end { match.captured(u"line"_s).toInt(),
                             match.captured(u"column"_s).toInt() + 1 };
        throw m_file.error(NibError::malformed, m_file.tagBefore(end), {}, {},
                           match.captured(u"problem"_s));
    }

    const NibFile &m_file;
    QHash<QString, ObjectMaker> m_makers; // by class; empty if the loader makes the objects
    std::unique_ptr<NibTexts> m_texts;
    NibProperties m_properties;
    std::exception_ptr m_exception;
};

// Makes the objects of a file once, and connects them.
class FormLoader
{
public:
    FormLoader(const NibFile &file, QObject *owner)
        : m_file(file)
        , m_owner(owner)
        , m_loader(file)
    { }

    QWidget *run(QWidget *parent)
    {
        std::unique_ptr<QWidget> root = load(parent);
        NibConnector connector(m_owner, m_loader.objects, m_file.fileName, m_loader.texts);
        connectWith(connector);
        try {
            awaken();
        } catch (...) {
            connector.undo();
            throw;
        }
        return root.release();
    }

    std::unique_ptr<QWidget> check(const QMetaObject *ownerClass)
    {
        NibChecker(m_file).checkResources();
        std::unique_ptr<QWidget> root = load(nullptr);
        NibConnector connector(nullptr, m_loader.objects, m_file.fileName, m_loader.texts);
        connector.checkOwnerEntries(ownerClass);
        connectWith(connector);
        return root;
    }

private:
    std::unique_ptr<QWidget> load(QWidget *parent)
    {
        NibChecker checker(m_file);
        checker.checkClasses(m_loader.availableWidgets(), m_loader.availableLayouts());
        checker.checkPlaces();
        checker.checkImages();
        std::unique_ptr<QWidget> root = m_loader.make(parent);
        placeBars(root.get());
        checker.checkObjects(m_loader.objects);
        addPages();
        return root;
    }

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

    // Only a QMainWindow places these. In another window they would be hidden below its contents,
    // at the upper left.
    void placeBars(QWidget *root) const
    {
        if (qobject_cast<QMainWindow *>(root))
            return;
        for (const NibElement &element : m_file.elements) {
            auto *const bar = qobject_cast<QWidget *>(object(element));
            if (!bar || bar->parentWidget() != root || element.parent < 0)
                continue;
            const NibElement &parent = m_file.elements[element.parent];
            if (parent.kind == NibElement::layout || hasProperty(element, u"constraints"_s))
                continue;
            if (auto *const menuBar = qobject_cast<QMenuBar *>(bar)) {
                QLayout *const layout = root->layout() ? root->layout() : emptyLayout(root);
                if (layout->menuBar())
                    fail(NibError::malformed, element.name, element.name.text, element.className,
                         u"the window has a menu bar already"_s);
                layout->setMenuBar(menuBar);
            } else if (isBar(bar) && !hasProperty(element, u"geometry"_s)) {
                fail(NibError::malformed, element.name, element.name.text, element.className,
                     u"a %1 has no place in a %2: put it into a layout, or use a QMainWindow"_s.arg(
                             element.className, parent.className));
            }
        }
    }

    static QLayout *emptyLayout(QWidget *root)
    {
        auto *const layout = new QVBoxLayout(root);
        layout->setContentsMargins(0, 0, 0, 0);
        return layout;
    }

    static bool isBar(const QWidget *widget)
    {
        return qobject_cast<const QToolBar *>(widget) || qobject_cast<const QStatusBar *>(widget)
               || qobject_cast<const QDockWidget *>(widget);
    }

    static bool hasProperty(const NibElement &element, const QString &name)
    {
        return std::any_of(element.properties.cbegin(), element.properties.cend(),
                           [&](const NibProperty &property) { return property.name.text == name; });
    }

    // Passes the children of custom containers to the method that the file names. The loader does
    // this only if the file spells the class as the class itself does.
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
                // A tree that contains this one does not process it again.
                clearEntries(object, key);
            }
        }
        connector.connect();
    }

    void awaken() const
    {
        Awakening awakening;
        QList<int> open;
        const auto close = [&](int parent) {
            while (!open.isEmpty() && open.constLast() != parent)
                awakening.add(object(m_file.elements[open.takeLast()]));
        };
        for (int i = 0; i < m_file.elements.size(); ++i) {
            close(m_file.elements[i].parent);
            open.append(i);
        }
        close(-1);
        awakening.run(m_owner);
    }

    const NibFile &m_file;
    QPointer<QObject> m_owner;
    ObjectLoader m_loader;
};

// Objects below `object` first, in the order in which they were made.
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
        // Excludes the folders of Qt and of the library.
        const bool isOthers = folder.startsWith(":/qt-project.org"_L1) || folder == libraryFolder
                              || folder.startsWith(libraryFolder + u'/');
        if (isOthers)
            continue;
        if (QString path = found(folder + u'/' + name); !path.isEmpty())
            paths.append(path);
    }
    // If there are several, always the same one.
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
    return FormLoader(*m_file, owner).run(parent);
}

void Nib::check(const QMetaObject *ownerClass) const
{
    checkedTree(ownerClass);
}

std::unique_ptr<QWidget> Nib::checkedTree(const QMetaObject *ownerClass) const
{
    return FormLoader(*m_file, nullptr).check(ownerClass);
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
    NibConnector connector(owner, byName, {}, nullptr);
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
    Awakening awakening;
    for (const QPointer<QObject> &object : std::as_const(objects))
        awakening.add(object);
    awakening.run(owner);
}

} // namespace NS
