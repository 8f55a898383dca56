// SPDX-License-Identifier: MIT
#include "Scenes/NSNib.h"

#include "Base/MethodLookup.h"
#include "Scenes/NibChecker.h"
#include "Scenes/NibConnector.h"
#include "Scenes/NibEntry.h"
#include "Scenes/NibFile.h"
#include "Scenes/NibObjects.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QDockWidget>
#include <QFile>
#include <QFileInfo>
#include <QLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QPointer>
#include <QScopeGuard>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

using detail::NibChecker;
using detail::NibConnector;
using detail::NibElement;
using detail::NibFile;
using detail::NibObjects;
using detail::NibProperty;
using detail::NibText;

// The files of the library itself stand in this folder of the resources.
const QString libraryFolder = u":/pellarvine"_s;

// Marks objects whose awakeFromNib() was called.
constexpr char awakeProperty[] = "_q_pellarvine_awake";

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

// Makes the objects of a file once, and connects them.
class FormLoader
{
public:
    FormLoader(const NibFile &file, QObject *owner)
        : m_file(file)
        , m_owner(owner)
        , m_objects(file)
    { }

    QWidget *run(QWidget *parent)
    {
        std::unique_ptr<QWidget> root = load(parent);
        // An owner that has the tree as an outlet may delete it, when the outlet is emptied too.
        const QPointer<QWidget> tree = root.get();
        const auto end = qScopeGuard([&] {
            if (!tree)
                static_cast<void>(root.release());
        });
        // Connecting may delete objects.
        Awakening awakening = this->awakening();
        NibConnector connector(m_owner, m_objects.byName(), m_file.fileName, m_objects.texts());
        connectWith(connector);
        try {
            awakening.run(m_owner);
        } catch (...) {
            connector.undo();
            throw;
        }
        static_cast<void>(root.release());
        return tree;
    }

    std::unique_ptr<QWidget> check(const QMetaObject *ownerClass)
    {
        const NibChecker checker(m_file);
        checker.checkResources();
        checker.checkEditing();
        std::unique_ptr<QWidget> root = load(nullptr);
        NibConnector connector(nullptr, m_objects.byName(), m_file.fileName, m_objects.texts());
        connector.checkOwnerEntries(ownerClass);
        connectWith(connector);
        return root;
    }

private:
    std::unique_ptr<QWidget> load(QWidget *parent)
    {
        NibChecker checker(m_file);
        checker.checkClasses(m_objects.availableWidgets(), m_objects.availableLayouts());
        checker.checkPlaces();
        checker.checkImages();
        std::unique_ptr<QWidget> root = m_objects.make(parent);
        placeBars(root.get());
        checker.checkObjects(m_objects.byName());
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
        return m_objects.byName().value(element.name.text);
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
                const QList<NibText> texts = property.texts();
                for (const NibText &entries : texts)
                    connector.add(object, name, entries);
                // A tree that contains this one does not process it again.
                clearEntries(object, key);
            }
        }
        connector.connect();
    }

    Awakening awakening() const
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
        return awakening;
    }

    const NibFile &m_file;
    QPointer<QObject> m_owner;
    NibObjects m_objects;
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
