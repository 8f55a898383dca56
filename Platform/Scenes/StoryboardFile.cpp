// SPDX-License-Identifier: MIT
#include "Scenes/StoryboardFile.h"

#include "Base/ClassRegistry.h"
#include "Scenes/NSNib.h"
#include "Scenes/NSStoryboardSegue.h"
#include "Scenes/NSViewController.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cstddef>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// Far more than a window can show. All of them are loaded with the outermost view.
constexpr int mostEmbedded = 1000;

// Storyboards name controllers; widgets are for interface files.
QStringList sceneClassNames()
{
    QStringList names = NS::registeredClassNames();
    names.removeIf([](const QString &name) { return NS::registeredClass(name)->isWidget(); });
    return names;
}

} // namespace

class StoryboardFile::Reader
{
public:
    Reader(StoryboardFile &into, const QByteArray &contents)
        : m_file(into)
        , m_xml(contents)
    { }

    void read()
    {
        readRoot();
        check();
    }

private:
    // Goes to the next element in the current one; false at its end.
    bool readChild()
    {
        const bool isThere = m_xml.readChild();
        if (m_xml.hasError())
            fail(m_xml.errorString());
        return isThere;
    }

    // Checks that the element has the required attributes, and no others but the optional ones.
    void checkAttributes(const QStringList &required, const QStringList &optional = {}) const
    {
        const QXmlStreamAttributes attributes = m_xml.attributes();
        for (const QXmlStreamAttribute &attribute : attributes) {
            const QString name = attribute.qualifiedName().toString();
            if (!required.contains(name) && !optional.contains(name)) {
                fail(u"<%1> has no attribute \"%2\" (%3)"_s.arg(
                        m_xml.qualifiedName().toString(), name,
                        (required + optional).join(u", "_s)));
            }
            if (attribute.value().isEmpty())
                fail(u"the attribute \"%1\" is empty"_s.arg(name));
        }
        for (const QString &name : required) {
            if (!attributes.hasAttribute(name)) {
                fail(u"<%1> lacks the attribute \"%2\""_s.arg(m_xml.qualifiedName().toString(),
                                                              name));
            }
        }
    }

    QString attribute(QLatin1StringView name) const
    {
        return m_xml.attributes().value(name).toString();
    }

    void expectEnd()
    {
        const QString parent = m_xml.qualifiedName().toString();
        if (readChild())
            failAtElement(parent);
    }

    [[noreturn]] void failAtElement(const QString &parent) const
    {
        fail(u"<%1> does not belong in <%2>"_s.arg(m_xml.qualifiedName().toString(), parent));
    }

    void readRoot()
    {
        readChild();
        if (m_xml.qualifiedName() != "storyboard"_L1)
            fail(u"the outermost element is not <storyboard>"_s);
        checkAttributes({}, { u"initialScene"_s });
        m_root = m_xml.place();
        m_file.initialScene = attribute("initialScene"_L1);
        while (readChild()) {
            if (m_xml.qualifiedName() == "scene"_L1)
                readScene();
            else if (m_xml.qualifiedName() == "segue"_L1)
                readSegue();
            else if (m_xml.qualifiedName() == "embed"_L1)
                readEmbed();
            else
                failAtElement(u"storyboard"_s);
        }
        readChild(); // fails if anything follows the root
    }

    void readScene()
    {
        checkAttributes({ u"identifier"_s, u"class"_s }, { u"interface"_s });
        SceneElement scene {
            attribute("identifier"_L1), attribute("class"_L1), {}, {}, m_xml.place()
        };
        const NS::RegisteredClass *const type = NS::registeredClass(scene.className);
        if (!type) {
            fail(u"there is no class \"%1\" (%2)"_s.arg(scene.className,
                                                        sceneClassNames().join(u", "_s)));
        }
        if (m_file.scene(scene.identifier))
            fail(u"there is a scene \"%1\" already"_s.arg(scene.identifier));
        const QString interface = attribute("interface"_L1);
        if (!interface.isEmpty()) {
            scene.interface = QFileInfo(m_file.fileName).absoluteDir().filePath(interface);
            if (!QFileInfo(scene.interface).isFile())
                scene.interface = NS::Nib::path(interface);
            if (!type->metaObject->inherits(&NS::ViewController::staticMetaObject)) {
                fail(u"\"%1\" is no view controller and takes no interface"_s.arg(scene.className));
            }
            if (scene.interface.isEmpty())
                fail(u"there is no interface file \"%1\""_s.arg(interface));
        }
        while (readChild()) {
            if (m_xml.qualifiedName() != "outlet"_L1)
                failAtElement(u"scene"_s);
            checkAttributes({ u"property"_s, u"object"_s });
            scene.outlets.push_back(
                    { attribute("property"_L1), attribute("object"_L1), m_xml.place() });
            expectEnd();
        }
        m_file.m_scenesByIdentifier.insert(scene.identifier, m_file.scenes.size());
        m_file.scenes.push_back(std::move(scene));
    }

    void readSegue()
    {
        checkAttributes({ u"class"_s, u"source"_s, u"destination"_s },
                        { u"identifier"_s, u"object"_s, u"signal"_s });
        SegueElement segue { false,
                             attribute("identifier"_L1),
                             attribute("class"_L1),
                             attribute("source"_L1),
                             attribute("destination"_L1),
                             attribute("object"_L1),
                             attribute("signal"_L1),
                             m_xml.place() };
        if (!NS::StoryboardSegue::factory(segue.className)) {
            fail(u"there is no segue class \"%1\" (%2)"_s.arg(
                    segue.className, NS::StoryboardSegue::registeredClasses().join(u", "_s)));
        }
        if (!segue.object.isEmpty() && segue.signal.isEmpty())
            fail(u"<segue> has an object but no signal"_s);
        if (segue.signal.isEmpty() && segue.identifier.isEmpty())
            fail(u"<segue> has neither an identifier nor a signal to begin at"_s);
        add(segue);
    }

    void readEmbed()
    {
        checkAttributes({ u"source"_s, u"destination"_s, u"container"_s }, { u"identifier"_s });
        const auto container = std::make_pair(attribute("source"_L1), attribute("container"_L1));
        if (m_containers.contains(container)) {
            fail(u"there is a scene in \"%1\" of the scene \"%2\" already"_s.arg(container.second,
                                                                                 container.first));
        }
        m_containers.insert(container);
        add({ true,
              attribute("identifier"_L1),
              {},
              attribute("source"_L1),
              attribute("destination"_L1),
              attribute("container"_L1),
              {},
              m_xml.place() });
    }

    void add(const SegueElement &added)
    {
        const auto name = std::make_pair(added.source, added.identifier);
        if (!added.identifier.isEmpty() && m_segueNames.contains(name)) {
            failAt(added.place, u"the scene \"%1\" has a segue \"%2\" already"_s.arg(
                                        added.source, added.identifier));
        }
        m_segueNames.insert(name);
        m_file.m_seguesBySource[added.source].push_back(m_file.segues.size());
        m_file.segues.push_back(added);
        expectEnd();
    }

    // These checks need the whole file.
    void check()
    {
        if (!m_file.initialScene.isEmpty())
            checkScene(m_file.initialScene, m_root);
        for (const SegueElement &segue : m_file.segues) {
            checkScene(segue.source, segue.place);
            checkScene(segue.destination, segue.place);
            checkIsViewController(segue.source, segue.place);
            if (segue.isEmbedded)
                checkIsViewController(segue.destination, segue.place);
        }
        for (const SceneElement &scene : m_file.scenes)
            checkEmbedded(scene);
    }

    void checkScene(const QString &identifier, XmlPlace where) const
    {
        if (m_file.scene(identifier))
            return;
        failAt(where, u"there is no scene \"%1\" (%2)"_s.arg(identifier,
                                                             m_file.identifiers().join(u", "_s)));
    }

    void checkIsViewController(const QString &identifier, XmlPlace where) const
    {
        const QString &name = m_file.scene(identifier)->className;
        if (!NS::registeredClass(name)->metaObject->inherits(
                    &NS::ViewController::staticMetaObject)) {
            failAt(where, u"the scene \"%1\" is a \"%2\", which is no view controller"_s.arg(
                                  identifier, name));
        }
    }

    // A scene within itself would be loaded forever. Scenes that embed the next one twice would
    // take exponential time. Each scene is visited once, depth first and without recursion.
    void checkEmbedded(const SceneElement &outermost)
    {
        struct Visit
        {
            const SceneElement *scene;
            std::vector<const SegueElement *> segues;
            std::size_t next = 0;
            int count = 0; // of the scenes in it
        };
        const auto visit = [this](const SceneElement *scene) {
            m_isOpen.insert(scene);
            return Visit { scene, m_file.seguesFrom(scene->identifier) };
        };
        if (m_embeddedCounts.contains(&outermost))
            return;
        std::vector<Visit> open { visit(&outermost) };
        while (!open.empty()) {
            Visit &current = open.back();
            if (current.next == current.segues.size()) {
                m_embeddedCounts.insert(current.scene, current.count);
                m_isOpen.remove(current.scene);
                open.pop_back();
                continue;
            }
            const SegueElement &segue = *current.segues[current.next];
            const SceneElement *const inner = m_file.scene(segue.destination);
            const auto count = m_embeddedCounts.constFind(inner);
            if (!segue.isEmbedded) {
                ++current.next;
            } else if (m_isOpen.contains(inner)) {
                failAt(segue.place,
                       u"the scene \"%1\" is embedded in itself"_s.arg(inner->identifier));
            } else if (count == m_embeddedCounts.cend()) {
                open.push_back(visit(inner));
            } else {
                ++current.next;
                current.count += 1 + *count;
                if (current.count > mostEmbedded) {
                    failAt(current.scene->place,
                           u"more than %1 scenes lie within the scene \"%2\""_s.arg(mostEmbedded)
                                   .arg(current.scene->identifier));
                }
            }
        }
    }

    [[noreturn]] void failAt(XmlPlace place, const QString &problem) const
    {
        throw m_file.error(place, problem);
    }
    [[noreturn]] void fail(const QString &problem) const { failAt(m_xml.place(), problem); }

    StoryboardFile &m_file;
    XmlReader m_xml;
    XmlPlace m_root; // where the outermost element begins
    QSet<std::pair<QString, QString>> m_segueNames; // each with its source
    QSet<std::pair<QString, QString>> m_containers; // of embedded scenes, each with its source
    QSet<const SceneElement *> m_isOpen; // being visited by checkEmbedded()
    QHash<const SceneElement *, int> m_embeddedCounts; // of the scenes that have been visited
};

StoryboardFile::StoryboardFile(QString path)
    : fileName(std::move(path))
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw error({}, u"cannot be read: %1"_s.arg(file.errorString()));
    Reader(*this, file.readAll()).read();
}

const SceneElement *StoryboardFile::scene(const QString &identifier) const
{
    const auto found = m_scenesByIdentifier.constFind(identifier);
    return found == m_scenesByIdentifier.cend() ? nullptr : &scenes[*found];
}

std::vector<const SegueElement *> StoryboardFile::seguesFrom(const QString &scene) const
{
    std::vector<const SegueElement *> result;
    for (const std::size_t index : m_seguesBySource.value(scene))
        result.push_back(&segues[index]);
    return result;
}

QStringList StoryboardFile::identifiers() const
{
    QStringList identifiers;
    for (const SceneElement &scene : scenes)
        identifiers.append(scene.identifier);
    return identifiers;
}

NS::StoryboardError StoryboardFile::error(XmlPlace place, const QString &problem) const
{
    return { fileName, place.line, place.column, problem };
}

} // namespace Pellarvine::detail
