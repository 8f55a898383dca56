// SPDX-License-Identifier: MIT
#include "Scenes/NibObjects.h"

#include <QAction>
#include <QActionGroup>
#include <QBuffer>
#include <QButtonGroup>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLayout>
#include <QPointer>
#include <QRegularExpression>
#include <QUiLoader>
#include <QWidget>

#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

// Asks `client` for the objects of registered classes, and tells it of all. QUiLoader looks for
// plugins in each folder when it is made, which takes longer than a form of ten widgets. So one is
// kept for the next form.
class ObjectLoader : public QUiLoader
{
public:
    // The kept one, or another: the constructor of a widget may load a form too.
    static std::unique_ptr<ObjectLoader> take(NibObjects *client)
    {
        std::unique_ptr<ObjectLoader> loader(kept());
        kept() = nullptr;
        if (!loader || loader->m_libraryPaths != QCoreApplication::libraryPaths())
            loader = std::make_unique<ObjectLoader>();
        loader->setParent(nullptr);
        loader->m_client = client;
        return loader;
    }

    // Keeps it until the application ends.
    static void keep(std::unique_ptr<ObjectLoader> loader)
    {
        if (kept())
            return;
        loader->m_client = nullptr;
        loader->setParent(QCoreApplication::instance());
        kept() = loader.release();
    }

    ObjectLoader() { setLanguageChangeEnabled(true); }

    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override
    {
        QWidget *const widget = m_client->makeRegistered(className, parent);
        if (!widget)
            return added(QUiLoader::createWidget(className, parent, name), name);
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

private:
    static QPointer<ObjectLoader> &kept()
    {
        static QPointer<ObjectLoader> loader;
        return loader;
    }

    template <typename T>
    T *added(T *object, const QString &name)
    {
        m_client->add(object, name);
        return object;
    }

    NibObjects *m_client = nullptr;
    const QStringList m_libraryPaths = QCoreApplication::libraryPaths();
};

namespace {

// The message of Qt's loader for what it cannot read.
constexpr char loaderMessage[] =
        "An error has occurred while reading the UI file at line %1, column %2: %3";

// The objects of a file by name, kept by its outermost widget. Some may have been deleted.
using ObjectsByName = QHash<QString, QObject *>;
constexpr char objectsProperty[] = "_q_pellarvine_objects";

} // namespace

NibObjects::NibObjects(const NibFile &file)
    : m_file(file)
    , m_texts(std::make_unique<NibTexts>(file.className, file.hasTextIds))
    , m_properties(file, m_objects, *m_texts)
    , m_loader(ObjectLoader::take(this))
{
    m_objects.reserve(file.elements.size());
}

NibObjects::~NibObjects()
{
    ObjectLoader::keep(std::move(m_loader));
}

QStringList NibObjects::availableWidgets() const
{
    return m_loader->availableWidgets();
}

QStringList NibObjects::availableLayouts() const
{
    return m_loader->availableLayouts();
}

std::unique_ptr<QWidget> NibObjects::make(QWidget *parent)
{
    QByteArray contents = m_file.loaderContents;
    QBuffer buffer(&contents);
    buffer.open(QIODevice::ReadOnly);
    m_loader->setWorkingDirectory(QFileInfo(m_file.fileName).dir());
    std::unique_ptr<QWidget> root(m_loader->load(&buffer, parent));
    if (m_exception)
        std::rethrow_exception(m_exception);
    if (!root)
        fail();
    addButtonGroups(root.get());
    for (const NibElement &element : m_file.elements)
        m_properties.checkOthers(element);
    root->setProperty(objectsProperty, QVariant::fromValue(m_objects));
    if (m_texts->isEmpty())
        return root;
    m_followingTexts = m_texts.release();
    m_followingTexts->follow(root.get());
    return root;
}

QWidget *NibObjects::makeRegistered(const QString &className, QWidget *parent)
{
    auto make = m_makers.constFind(className);
    if (make == m_makers.cend()) {
        const NS::RegisteredClass *const known = NS::registeredClass(className);
        make = m_makers.insert(className, known ? known->make : NS::ObjectMaker());
    }
    if (!*make)
        return nullptr;
    try {
        return static_cast<QWidget *>((*make)(parent));
    } catch (...) {
        keepException();
        return new QWidget(parent); // until make() deletes all
    }
}

void NibObjects::add(QObject *object, const QString &name)
{
    if (!object || name.isEmpty())
        return;
    m_objects.insert(name, object);
    try {
        if (const NibElement *const element = m_file.element(name))
            m_properties.setPlain(object, *element);
    } catch (...) {
        keepException();
    }
}

// No exception may leave a function that the loader calls.
void NibObjects::keepException()
{
    if (!m_exception)
        m_exception = std::current_exception();
}

void NibObjects::addButtonGroups(const QWidget *root)
{
    for (const NibElement &element : m_file.elements) {
        if (element.kind != NibElement::buttonGroup)
            continue;
        if (auto *const group = root->findChild<QButtonGroup *>(element.name.text))
            m_objects.insert(element.name.text, group);
    }
}

// The message of the loader contains the place where the tag of an unknown element or attribute
// ends. The whole file is read again for the place in that.
void NibObjects::fail() const
{
    QByteArray contents = m_file.contents;
    QBuffer buffer(&contents);
    buffer.open(QIODevice::ReadOnly);
    QUiLoader loader;
    const std::unique_ptr<QWidget> root(loader.load(&buffer));
    const QString message = root ? m_loader->errorString() : loader.errorString();
    QString pattern = QRegularExpression::escape(
            QCoreApplication::translate("QAbstractFormBuilder", loaderMessage));
    pattern.replace(u"\\%1"_s, u"(?<line>[0-9]+)"_s)
            .replace(u"\\%2"_s, u"(?<column>[0-9]+)"_s)
            .replace(u"\\%3"_s, u"(?<problem>.+)"_s);
    const auto match = QRegularExpression(pattern).match(message);
    if (!match.hasMatch())
        throw m_file.error(NS::NibError::malformed, {}, {}, {}, message);
    const XmlPlace end { match.captured(u"line"_s).toInt(),
                         match.captured(u"column"_s).toInt() + 1 };
    throw m_file.error(NS::NibError::malformed, m_file.tagBefore(end), {}, {},
                       match.captured(u"problem"_s));
}

QObject *objectNamed(QObject *root, const QString &name)
{
    if (root->objectName() == name)
        return root;
    QObject *const own = root->property(objectsProperty).value<ObjectsByName>().value(name);
    return own && root->findChildren<QObject *>(name).contains(own)
                   ? own
                   : root->findChild<QObject *>(name);
}

} // namespace Pellarvine::detail
