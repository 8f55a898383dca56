// SPDX-License-Identifier: MIT
#include "Scenes/NSStoryboard.h"

#include "Base/ClassRegistry.h"
#include "Base/Failure.h"
#include "KeyValue/KeyValueCoding.h"
#include "Layout/NSLayoutAnchor.h"
#include "Layout/NSLayoutConstraint.h"
#include "Scenes/NSNib.h"
#include "Scenes/NSStoryboardSegue.h"
#include "Scenes/NSViewControllerPrivate.h"
#include "View/NSView.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMetaMethod>
#include <QPointer>
#include <QScopeGuard>
#include <QStringDecoder>
#include <QWidget>
#include <QXmlStreamReader>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

struct Position
{
    qint64 line = 0;
    qint64 column = 0;
};

struct Outlet
{
    QString property;
    QString object;
    Position position;
};

// The object itself, or what is in it.
QObject *objectNamed(QObject *root, const QString &name)
{
    return root->objectName() == name ? root : root->findChild<QObject *>(name);
}

// By its name, or by its whole signature where a name would not tell overloads apart.
QMetaMethod signalNamed(const QObject *object, const QString &name)
{
    const QMetaObject *const type = object->metaObject();
    const QByteArray wanted = QMetaObject::normalizedSignature(name.toUtf8().constData());
    for (int i = 0; i < type->methodCount(); ++i) {
        const QMetaMethod method = type->method(i);
        if (method.methodType() == QMetaMethod::Signal
            && (method.name() == wanted || method.methodSignature() == wanted))
            return method;
    }
    return {};
}

void fill(QWidget *container, QWidget *view)
{
    setTranslatesAutoresizingMaskIntoConstraints(view, false);
    addSubview(container, view);
    LayoutConstraint::activateConstraints({
            leadingAnchor(container).constraintEqualToAnchor(leadingAnchor(view)),
            trailingAnchor(container).constraintEqualToAnchor(trailingAnchor(view)),
            topAnchor(container).constraintEqualToAnchor(topAnchor(view)),
            bottomAnchor(container).constraintEqualToAnchor(bottomAnchor(view)),
    });
}

} // namespace

struct Storyboard::Scene
{
    QString identifier;
    QString className;
    QString interface; ///< its whole path; empty if there is none
    std::vector<Outlet> outlets;
    Position position;
};

struct Storyboard::Segue
{
    bool isEmbedded = false;
    QString identifier;
    QString className;
    QString source;
    QString destination;
    QString object; ///< the trigger's; the container's of an embedded scene
    QString signal;
    Position position;
};

/// A scene that has been loaded and is to be placed in another.
struct Storyboard::Embedded
{
    QWidget *container;
    std::unique_ptr<ViewController> controller;
};

struct Storyboard::Private
{
    QString fileName;
    QString initialScene;
    std::vector<Scene> scenes;
    std::vector<Segue> segues;

    const Scene *scene(const QString &identifier) const
    {
        const auto found = std::find_if(scenes.begin(), scenes.end(), [&](const Scene &scene) {
            return scene.identifier == identifier;
        });
        return found == scenes.end() ? nullptr : &*found;
    }

    [[noreturn]] void fail(Position position, const QString &problem) const
    {
        throw StoryboardError(fileName, position.line, position.column, problem);
    }
};

/// Reads a file into a storyboard, and throws at the first thing that is wrong in it.
struct Storyboard::Reader
{
    Private &d;
    QString text {};
    QXmlStreamReader xml {};
    Position position {}; ///< where the element begins that is being read
    Position rootPosition {};

    void read()
    {
        QFile file(d.fileName);
        if (!file.open(QIODevice::ReadOnly))
            d.fail({}, u"cannot be read: %1"_s.arg(file.errorString()));
        QStringDecoder decoder(QStringDecoder::Utf8);
        text = decoder(file.readAll());
        if (decoder.hasError())
            d.fail({}, u"is not UTF-8"_s);
        xml.addData(text);
        readRoot();
        check();
    }

    // Where the tag or text begins that has been read: no "<" stands within a tag.
    Position start() const
    {
        const qsizetype end = xml.characterOffset() - 1;
        const qsizetype start = text.lastIndexOf(u'<', end);
        const qsizetype line = text.lastIndexOf(u'\n', start);
        return { text.left(start).count(u'\n') + 1, start - line };
    }

    // The next element within the one that is being read; false at its end.
    bool readElement()
    {
        while (true) {
            const Position before { xml.lineNumber(), xml.columnNumber() + 1 };
            switch (xml.readNext()) {
            case QXmlStreamReader::StartElement:
                position = start();
                return true;
            case QXmlStreamReader::Characters:
                if (!xml.isWhitespace())
                    d.fail(before, u"there is text between the elements"_s);
                break;
            case QXmlStreamReader::Invalid:
                d.fail({ xml.lineNumber(), xml.columnNumber() + 1 }, xml.errorString());
            case QXmlStreamReader::EndElement:
            case QXmlStreamReader::EndDocument:
                return false;
            default:
                break;
            }
        }
    }

    // The element's attributes, which have to be of those names.
    void checkAttributes(const QStringList &required, const QStringList &optional = {}) const
    {
        const QXmlStreamAttributes attributes = xml.attributes();
        for (const QXmlStreamAttribute &attribute : attributes) {
            const QString name = attribute.qualifiedName().toString();
            if (!required.contains(name) && !optional.contains(name)) {
                d.fail(position, u"<%1> has no attribute \"%2\" (%3)"_s.arg(
                                         xml.qualifiedName().toString(), name,
                                         (required + optional).join(u", "_s)));
            }
            if (attribute.value().isEmpty())
                d.fail(position, u"the attribute \"%1\" is empty"_s.arg(name));
        }
        for (const QString &name : required) {
            if (!attributes.hasAttribute(name)) {
                d.fail(position, u"<%1> lacks the attribute \"%2\""_s.arg(
                                         xml.qualifiedName().toString(), name));
            }
        }
    }

    QString attribute(QLatin1StringView name) const
    {
        return xml.attributes().value(name).toString();
    }

    void expectEnd()
    {
        const QString parent = xml.qualifiedName().toString();
        if (readElement())
            failAtElement(parent);
    }

    [[noreturn]] void failAtElement(const QString &parent) const
    {
        d.fail(position,
               u"<%1> does not belong in <%2>"_s.arg(xml.qualifiedName().toString(), parent));
    }

    void readRoot()
    {
        readElement();
        if (xml.qualifiedName() != "storyboard"_L1)
            d.fail(position, u"the outermost element is not <storyboard>"_s);
        checkAttributes({}, { u"initialScene"_s });
        rootPosition = position;
        d.initialScene = attribute("initialScene"_L1);
        while (readElement()) {
            if (xml.qualifiedName() == "scene"_L1)
                readScene();
            else if (xml.qualifiedName() == "segue"_L1)
                readSegue();
            else if (xml.qualifiedName() == "embed"_L1)
                readEmbed();
            else
                failAtElement(u"storyboard"_s);
        }
        readElement(); // what follows the root has to be nothing
    }

    void readScene()
    {
        checkAttributes({ u"identifier"_s, u"class"_s }, { u"interface"_s });
        Scene scene { attribute("identifier"_L1), attribute("class"_L1), {}, {}, position };
        const RegisteredClass *const type = registeredClass(scene.className);
        if (!type) {
            d.fail(position, u"there is no class \"%1\" (%2)"_s.arg(
                                     scene.className, registeredClassNames().join(u", "_s)));
        }
        if (d.scene(scene.identifier))
            d.fail(position, u"there is a scene \"%1\" already"_s.arg(scene.identifier));
        const QString interface = attribute("interface"_L1);
        if (!interface.isEmpty()) {
            scene.interface = QFileInfo(d.fileName).absoluteDir().filePath(interface);
            if (!QFileInfo(scene.interface).isFile())
                scene.interface = Nib::path(interface);
            if (!type->metaObject->inherits(&ViewController::staticMetaObject)) {
                d.fail(position, u"\"%1\" is no view controller and takes no interface"_s.arg(
                                         scene.className));
            }
            if (scene.interface.isEmpty())
                d.fail(position, u"there is no interface file \"%1\""_s.arg(interface));
        }
        while (readElement()) {
            if (xml.qualifiedName() != "outlet"_L1)
                failAtElement(u"scene"_s);
            checkAttributes({ u"property"_s, u"object"_s });
            scene.outlets.push_back({ attribute("property"_L1), attribute("object"_L1), position });
            expectEnd();
        }
        d.scenes.push_back(scene);
    }

    void readSegue()
    {
        checkAttributes({ u"class"_s, u"source"_s, u"destination"_s },
                        { u"identifier"_s, u"object"_s, u"signal"_s });
        Segue segue { false,
                      attribute("identifier"_L1),
                      attribute("class"_L1),
                      attribute("source"_L1),
                      attribute("destination"_L1),
                      attribute("object"_L1),
                      attribute("signal"_L1),
                      position };
        if (!StoryboardSegue::factory(segue.className)) {
            d.fail(position,
                   u"there is no segue class \"%1\" (%2)"_s.arg(
                           segue.className, StoryboardSegue::registeredClasses().join(u", "_s)));
        }
        if (!segue.object.isEmpty() && segue.signal.isEmpty())
            d.fail(position, u"<segue> names an object and no signal of it"_s);
        if (segue.signal.isEmpty() && segue.identifier.isEmpty())
            d.fail(position, u"<segue> has neither an identifier nor a signal to begin at"_s);
        add(segue);
    }

    void readEmbed()
    {
        checkAttributes({ u"source"_s, u"destination"_s, u"container"_s }, { u"identifier"_s });
        add({ true,
              attribute("identifier"_L1),
              {},
              attribute("source"_L1),
              attribute("destination"_L1),
              attribute("container"_L1),
              {},
              position });
    }

    void add(const Segue &added)
    {
        for (const Segue &segue : d.segues) {
            if (!added.identifier.isEmpty() && segue.source == added.source
                && segue.identifier == added.identifier) {
                d.fail(added.position, u"the scene \"%1\" has a segue \"%2\" already"_s.arg(
                                               added.source, added.identifier));
            }
        }
        d.segues.push_back(added);
        expectEnd();
    }

    // What can be told only with the whole file read.
    void check() const
    {
        if (!d.initialScene.isEmpty())
            checkScene(d.initialScene, rootPosition);
        for (const Segue &segue : d.segues) {
            checkScene(segue.source, segue.position);
            checkScene(segue.destination, segue.position);
            checkIsViewController(segue.source, segue.position);
            if (segue.isEmbedded) {
                checkIsViewController(segue.destination, segue.position);
                checkEndsSomewhere(segue, segue.source);
            }
        }
    }

    void checkScene(const QString &identifier, Position where) const
    {
        if (d.scene(identifier))
            return;
        QStringList known;
        for (const Scene &scene : d.scenes)
            known.append(scene.identifier);
        d.fail(where, u"there is no scene \"%1\" (%2)"_s.arg(identifier, known.join(u", "_s)));
    }

    void checkIsViewController(const QString &identifier, Position where) const
    {
        const QString &name = d.scene(identifier)->className;
        if (!registeredClass(name)->metaObject->inherits(&ViewController::staticMetaObject)) {
            d.fail(where, u"the scene \"%1\" is a \"%2\", which is no view controller"_s.arg(
                                  identifier, name));
        }
    }

    // A scene within itself would be loaded for ever.
    void checkEndsSomewhere(const Segue &embedded, const QString &outermost) const
    {
        if (embedded.destination == outermost) {
            d.fail(embedded.position, u"the scene \"%1\" lies within itself"_s.arg(outermost));
        }
        for (const Segue &inner : d.segues) {
            // Another circle, which does not lead here, is found from where it begins.
            if (inner.isEmbedded && inner.source == embedded.destination
                && inner.source != inner.destination && &inner != &embedded)
                checkEndsSomewhere(inner, outermost);
        }
    }
};

/// Waits in a view for the signal that a segue begins at.
class SegueTrigger : public QObject
{
    Q_OBJECT

public:
    SegueTrigger(ViewController *source, const Storyboard::Segue &segue)
        : QObject(source->view())
        , m_source(source)
        , m_segue(segue)
    { }

public Q_SLOTS:
    void fire()
    {
        // Called by Qt's events, which no exception may cross.
        QObject *const from = sender();
        const std::shared_ptr<Storyboard> storyboard = m_source->storyboard();
        try {
            if (m_source->shouldPerformSegue(m_segue.identifier, from))
                storyboard->perform(m_segue, m_source, from);
        } catch (const std::exception &error) {
            detail::printWarning(std::string("Warning: ") + error.what());
        }
    }

private:
    ViewController *m_source;
    const Storyboard::Segue &m_segue; // the source keeps the storyboard
};

Storyboard::Storyboard(const QString &path)
    : d(std::make_unique<Private>())
{
    d->fileName = path;
    Reader { *d }.read();
}

Storyboard::~Storyboard() = default;

std::shared_ptr<Storyboard> Storyboard::storyboardWithName(const QString &name)
{
    const QString resource = u":/%1.storyboard"_s.arg(name);
    if (QFile::exists(resource))
        return storyboardWithContentsOfFile(resource);
    const QDir folder(QCoreApplication::applicationDirPath());
    return storyboardWithContentsOfFile(folder.filePath(name + u".storyboard"_s));
}

std::shared_ptr<Storyboard> Storyboard::storyboardWithContentsOfFile(const QString &path)
{
    return std::shared_ptr<Storyboard>(new Storyboard(path));
}

const QString &Storyboard::fileName() const
{
    return d->fileName;
}

QStringList Storyboard::identifiers() const
{
    QStringList identifiers;
    for (const Scene &scene : d->scenes)
        identifiers.append(scene.identifier);
    return identifiers;
}

QObject *Storyboard::instantiateInitialController()
{
    return d->initialScene.isEmpty() ? nullptr
                                     : instantiateControllerWithIdentifier(d->initialScene);
}

QObject *Storyboard::instantiateControllerWithIdentifier(const QString &identifier)
{
    const Scene *const scene = d->scene(identifier);
    if (!scene)
        throw UnknownIdentifierError(u"scene"_s, identifier, d->fileName, identifiers());
    QObject *const made = makeObject(scene->className);
    auto *const controller = qobject_cast<ViewController *>(made);
    if (!controller)
        return made;
    controller->d->storyboard = shared_from_this();
    controller->d->scene = identifier;
    if (!scene->interface.isEmpty())
        controller->d->nibName = scene->interface;
    return controller;
}

void Storyboard::viewDidLoad(ViewController *controller, const QString &identifier)
{
    QWidget *const view = controller->view();
    for (const Outlet &outlet : d->scene(identifier)->outlets) {
        QObject *const object = objectNamed(view, outlet.object);
        if (!object)
            d->fail(outlet.position, u"the scene has no object \"%1\""_s.arg(outlet.object));
        try {
            setValueForKeyPath(controller, outlet.property, QVariant::fromValue(object));
        } catch (const KeyValueException &error) {
            d->fail(outlet.position, QString::fromUtf8(error.what()));
        }
    }
    for (const Segue &segue : d->segues) {
        if (segue.source != identifier || segue.signal.isEmpty())
            continue;
        QObject *const object =
                segue.object.isEmpty() ? controller : objectNamed(view, segue.object);
        if (!object)
            d->fail(segue.position, u"the scene has no object \"%1\""_s.arg(segue.object));
        const QMetaMethod signal = signalNamed(object, segue.signal);
        if (!signal.isValid()) {
            d->fail(segue.position,
                    u"%1 has no signal \"%2\""_s.arg(
                            QString::fromUtf8(object->metaObject()->className()), segue.signal));
        }
        auto *const trigger = new SegueTrigger(controller, segue);
        const QMetaObject &type = SegueTrigger::staticMetaObject;
        QObject::connect(object, signal, trigger, type.method(type.indexOfSlot("fire()")));
    }
    // Last, so that the names of embedded scenes are not taken for this one's; and all of them are
    // there before the first is placed.
    std::vector<Embedded> all;
    for (const Segue &segue : d->segues) {
        if (segue.source == identifier && segue.isEmbedded)
            all.push_back(embedded(segue, controller));
    }
    for (auto &[container, embedded] : all) {
        QWidget *const inner = embedded->view();
        controller->addChildViewController(embedded.release());
        fill(container, inner);
    }
}

void Storyboard::performSegue(ViewController *source, const QString &scene,
                              const QString &identifier, QObject *sender)
{
    QStringList known;
    for (const Segue &segue : d->segues) {
        if (segue.source != scene || segue.identifier.isEmpty() || segue.isEmbedded)
            continue;
        if (segue.identifier == identifier)
            return perform(segue, source, sender);
        known.append(segue.identifier);
    }
    throw UnknownIdentifierError(u"segue"_s, identifier,
                                 u"the scene \"%1\" of %2"_s.arg(scene, d->fileName), known);
}

void Storyboard::perform(const Segue &segue, ViewController *source, QObject *sender)
{
    const QPointer<QObject> destination = instantiateControllerWithIdentifier(segue.destination);
    const auto end = qScopeGuard([&] {
        if (destination && !destination->parent())
            destination->deleteLater(); // nobody has taken it
    });
    const auto made =
            StoryboardSegue::factory(segue.className)(segue.identifier, source, destination);
    source->prepareForSegue(made.get(), sender);
    // Now, so that a view that cannot be loaded leaves everything as it was.
    if (auto *const controller = qobject_cast<ViewController *>(destination))
        controller->view();
    made->perform();
}

Storyboard::Embedded Storyboard::embedded(const Segue &segue, ViewController *source)
{
    auto *const container = qobject_cast<QWidget *>(objectNamed(source->view(), segue.object));
    if (!container)
        d->fail(segue.position, u"the scene has no widget \"%1\""_s.arg(segue.object));
    std::unique_ptr<ViewController> controller(
            static_cast<ViewController *>(instantiateControllerWithIdentifier(segue.destination)));
    StoryboardSegue made(segue.identifier, source, controller.get());
    source->prepareForSegue(&made, nullptr);
    controller->view();
    return { container, std::move(controller) };
}

} // namespace NS

#include "NSStoryboard.moc"
