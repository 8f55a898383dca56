// SPDX-License-Identifier: MIT
#include "Scenes/NSStoryboard.h"

#include "Base/ClassRegistry.h"
#include "Base/Failure.h"
#include "Base/MethodLookup.h"
#include "KeyValue/KeyValueCoding.h"
#include "Layout/NSLayoutAnchor.h"
#include "Layout/NSLayoutConstraint.h"
#include "Scenes/NSNib.h"
#include "Scenes/NSStoryboardSegue.h"
#include "Scenes/NSViewControllerPrivate.h"
#include "Scenes/NibObjects.h"
#include "Scenes/NibOwnerCheck.h"
#include "Scenes/StoryboardFile.h"
#include "View/NSView.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QList>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPointer>
#include <QScopeGuard>
#include <QWidget>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

using detail::objectNamed;
using detail::OutletElement;
using detail::SceneElement;
using detail::SegueElement;

using Widgets = QList<QPointer<QWidget>>;

// The widgets of the tree, in the order of the Tab key.
Widgets focusChain(QWidget *root)
{
    Widgets chain { root };
    for (QWidget *next = root->nextInFocusChain(); next != root; next = next->nextInFocusChain()) {
        if (root->isAncestorOf(next))
            chain.append(next);
    }
    return chain;
}

// The widgets of the tree and of views that are to be embedded in it: each after its container.
Widgets focusChain(QWidget *root, const QHash<QWidget *, QWidget *> &embedded)
{
    Widgets chain;
    const Widgets outer = focusChain(root);
    for (const QPointer<QWidget> &widget : outer) {
        chain.append(widget);
        if (QWidget *const inner = embedded.value(widget))
            chain.append(focusChain(inner));
    }
    return chain;
}

// A part of a control is none, because it goes with the control.
bool isTabStop(const QWidget *widget)
{
    const auto isStop = [](const QWidget *one) {
        return one->focusPolicy() & Qt::TabFocus;
    };
    if (!isStop(widget) || (widget->focusProxy() && widget->focusProxy()->isAncestorOf(widget)))
        return false;
    while ((widget = widget->parentWidget())) {
        if (isStop(widget) && widget->isAncestorOf(widget->focusProxy()))
            return false;
    }
    return true;
}

void setTabOrder(const Widgets &chain)
{
    QWidget *previous = nullptr;
    for (const QPointer<QWidget> &widget : chain) {
        if (!widget || !isTabStop(widget))
            continue;
        if (previous && previous->window() == widget->window())
            QWidget::setTabOrder(previous, widget);
        previous = widget;
    }
}

void fill(const QPointer<QWidget> &container, const QPointer<QWidget> &view)
{
    if (!container || !view)
        return;
    setTranslatesAutoresizingMaskIntoConstraints(view, false);
    addSubview(container, view);
    // A callback may have removed it.
    if (!container || !view || view->parentWidget() != container)
        return;
    LayoutConstraint::activateConstraints({
            leadingAnchor(container).constraintEqualToAnchor(leadingAnchor(view)),
            trailingAnchor(container).constraintEqualToAnchor(trailingAnchor(view)),
            topAnchor(container).constraintEqualToAnchor(topAnchor(view)),
            bottomAnchor(container).constraintEqualToAnchor(bottomAnchor(view)),
    });
}

} // namespace

/// A loaded scene that is to be embedded in another.
struct Storyboard::Embedded
{
    QPointer<QWidget> container;
    std::unique_ptr<ViewController> controller;
};

/// Waits for the signal that triggers a segue, until its controller is destroyed or has another
/// view.
class SegueTrigger : public QObject
{
    Q_OBJECT

public:
    SegueTrigger(ViewController *source, const SegueElement &segue)
        : QObject(source)
        , m_source(source)
        , m_segue(segue)
    {
        const QWidget *const view = source->view();
        connect(source, &ViewController::viewChanged, this, [this, view](const QWidget *changed) {
            if (changed != view)
                end();
        });
    }

public Q_SLOTS:
    void fire()
    {
        if (m_hasEnded)
            return;
        // The code of the program may delete the source, and this object with it.
        const QPointer<ViewController> source = m_source;
        const QPointer<QObject> from = sender();
        const std::shared_ptr<Storyboard> storyboard = m_source->storyboard();
        const SegueElement &segue = m_segue;
        // Called by Qt's event loop, which no exception may leave.
        try {
            if (m_source->shouldPerformSegue(segue.identifier, from) && source)
                storyboard->perform(segue, source, from);
        } catch (const std::exception &error) {
            detail::printWarning(error);
        }
    }

private:
    // Deleted later: this may be called by its own signal.
    void end()
    {
        m_hasEnded = true;
        deleteLater();
    }

    ViewController *m_source;
    const SegueElement &m_segue; // the source keeps the storyboard
    bool m_hasEnded = false;
};

Storyboard::Storyboard(const QString &path)
    : m_file(std::make_unique<const detail::StoryboardFile>(path))
{ }

Storyboard::~Storyboard() = default;

std::shared_ptr<Storyboard> Storyboard::storyboardWithName(const QString &name)
{
    // Without either file, the error names the resource, which most programs have.
    const QString resource = u":/%1.storyboard"_s.arg(name);
    const QDir folder(QCoreApplication::applicationDirPath());
    const QString file = folder.filePath(name + u".storyboard"_s);
    const bool isFile = !QFile::exists(resource) && QFile::exists(file);
    return storyboardWithContentsOfFile(isFile ? file : resource);
}

std::shared_ptr<Storyboard> Storyboard::storyboardWithContentsOfFile(const QString &path)
{
    return std::shared_ptr<Storyboard>(new Storyboard(path));
}

const QString &Storyboard::fileName() const
{
    return m_file->fileName;
}

QStringList Storyboard::identifiers() const
{
    return m_file->identifiers();
}

void Storyboard::check() const
{
    for (const SceneElement &scene : m_file->scenes)
        checkScene(scene);
}

void Storyboard::checkScene(const SceneElement &scene) const
{
    const QMetaObject *const type = registeredClass(scene.className)->metaObject;
    const std::unique_ptr<QWidget> view =
            scene.interface.isEmpty() ? nullptr : Nib(scene.interface).checkedTree(type);
    const auto find = [&](const QString &name, const detail::XmlPlace &place) {
        QObject *const object = view ? objectNamed(view.get(), name) : nullptr;
        if (view && !object)
            throw m_file->error(
                    place, u"the scene \"%1\" has no object \"%2\""_s.arg(scene.identifier, name));
        return object;
    };
    for (const OutletElement &outlet : scene.outlets) {
        const QObject *const object = find(outlet.object, outlet.place);
        const int index = type->indexOfProperty(outlet.property.toUtf8().constData());
        const QMetaProperty property = type->property(index);
        const bool fits = object ? detail::canBeOutlet(property, object) : property.isWritable();
        if (!fits)
            throw m_file->error(outlet.place,
                                u"%1 has no property \"%2\" that can be \"%3\""_s.arg(
                                        scene.className, outlet.property, outlet.object));
    }
    for (const SegueElement *const segue : m_file->seguesFrom(scene.identifier)) {
        const QObject *const object =
                segue->object.isEmpty() ? nullptr : find(segue->object, segue->place);
        if (segue->isEmbedded && object && !object->isWidgetType())
            throw m_file->error(segue->place, u"the scene \"%1\" has no widget \"%2\""_s.arg(
                                                      scene.identifier, segue->object));
        const bool isKnown = object || segue->object.isEmpty();
        const QMetaObject *const sender = object ? object->metaObject() : type;
        if (isKnown && !segue->signal.isEmpty()
            && detail::signalsMatching(sender, segue->signal).isEmpty())
            throw m_file->error(segue->place,
                                u"%1 has no signal \"%2\""_s.arg(
                                        QString::fromUtf8(sender->className()), segue->signal));
    }
}

QObject *Storyboard::instantiateInitialController()
{
    return m_file->initialScene.isEmpty()
                   ? nullptr
                   : instantiateControllerWithIdentifier(m_file->initialScene);
}

QObject *Storyboard::instantiateControllerWithIdentifier(const QString &identifier)
{
    const SceneElement *const scene = m_file->scene(identifier);
    if (!scene)
        throw UnknownIdentifierError(u"scene"_s, identifier, m_file->fileName, identifiers());
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
    for (const OutletElement &outlet : m_file->scene(identifier)->outlets) {
        QObject *const object = objectNamed(view, outlet.object);
        if (!object)
            throw m_file->error(outlet.place, u"the scene \"%1\" has no object \"%2\""_s.arg(
                                                      identifier, outlet.object));
        try {
            setValueForKeyPath(controller, outlet.property, QVariant::fromValue(object));
        } catch (const KeyValueException &error) {
            throw m_file->error(outlet.place, QString::fromUtf8(error.what()));
        }
    }
    const std::vector<const SegueElement *> segues = m_file->seguesFrom(identifier);
    for (const SegueElement *const begun : segues) {
        const SegueElement &segue = *begun;
        if (segue.signal.isEmpty())
            continue;
        QObject *const object =
                segue.object.isEmpty() ? controller : objectNamed(view, segue.object);
        if (!object)
            throw m_file->error(segue.place, u"the scene \"%1\" has no object \"%2\""_s.arg(
                                                     identifier, segue.object));
        const QMetaMethod signal = detail::signalsMatching(object, segue.signal).value(0);
        if (!signal.isValid()) {
            throw m_file->error(
                    segue.place,
                    u"%1 has no signal \"%2\""_s.arg(
                            QString::fromUtf8(object->metaObject()->className()), segue.signal));
        }
        auto *const trigger = new SegueTrigger(controller, segue);
        const QMetaObject &type = SegueTrigger::staticMetaObject;
        QObject::connect(object, signal, trigger, type.method(type.indexOfSlot("fire()")));
    }
    // Last, so that names in embedded scenes are not mistaken for names in this one. All scenes are
    // loaded before the first is embedded.
    std::vector<Embedded> all;
    QHash<QWidget *, QWidget *> views; // by container
    for (const SegueElement *const segue : segues) {
        if (!segue->isEmbedded)
            continue;
        all.push_back(embedded(*segue, controller));
        views.insert(all.back().container, all.back().controller->view());
    }
    if (all.empty())
        return;
    // Qt appends a tree that gets a parent to the end.
    const Widgets chain = focusChain(view, views);
    for (auto &[container, embedded] : all) {
        QWidget *const inner = embedded->view();
        controller->addChildViewController(embedded.release());
        fill(container, inner);
    }
    setTabOrder(chain);
}

void Storyboard::performSegue(ViewController *source, const QString &scene,
                              const QString &identifier, QObject *sender)
{
    QStringList known;
    for (const SegueElement *const segue : m_file->seguesFrom(scene)) {
        if (segue->identifier.isEmpty() || segue->isEmbedded)
            continue;
        if (segue->identifier == identifier)
            return perform(*segue, source, sender);
        known.append(segue->identifier);
    }
    throw UnknownIdentifierError(u"segue"_s, identifier,
                                 u"the scene \"%1\" of %2"_s.arg(scene, m_file->fileName), known);
}

void Storyboard::perform(const SegueElement &segue, ViewController *source, QObject *sender)
{
    const StoryboardSegue::Finder find = StoryboardSegue::finder(segue.className);
    const QPointer<QObject> destination =
            find ? find(source, segue.destination)
                 : instantiateControllerWithIdentifier(segue.destination);
    if (!destination) {
        throw UnknownIdentifierError(
                u"scene to go back to"_s, segue.destination,
                u"the scene \"%1\" of %2"_s.arg(segue.source, m_file->fileName), {});
    }
    const auto end = qScopeGuard([&] {
        if (!find && destination && !destination->parent())
            destination->deleteLater(); // nobody has taken it
    });
    const auto made =
            StoryboardSegue::factory(segue.className)(segue.identifier, source, destination);
    source->prepareForSegue(made.get(), sender);
    // Loaded first: if that fails, nothing has changed.
    if (auto *const controller = qobject_cast<ViewController *>(destination))
        controller->view();
    made->perform();
}

Storyboard::Embedded Storyboard::embedded(const SegueElement &segue, ViewController *source)
{
    auto *const container = qobject_cast<QWidget *>(objectNamed(source->view(), segue.object));
    if (!container)
        throw m_file->error(segue.place, u"the scene \"%1\" has no widget \"%2\""_s.arg(
                                                 segue.source, segue.object));
    std::unique_ptr<ViewController> controller(
            static_cast<ViewController *>(instantiateControllerWithIdentifier(segue.destination)));
    StoryboardSegue made(segue.identifier, source, controller.get());
    source->prepareForSegue(&made, nullptr);
    controller->view();
    return { container, std::move(controller) };
}

} // namespace NS

#include "NSStoryboard.moc"
