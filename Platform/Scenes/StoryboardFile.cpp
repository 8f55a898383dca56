// SPDX-License-Identifier: MIT
#include "Scenes/StoryboardFile.h"

#include "Base/ClassRegistry.h"
#include "Scenes/NSNib.h"
#include "Scenes/NSStoryboardSegue.h"
#include "Scenes/NSViewController.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstddef>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

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
    // To the next element in the current one; false at its end.
    bool readChild()
    {
        const bool isThere = m_xml.readChild();
        if (m_xml.hasError())
            fail(m_xml.errorString());
        return isThere;
    }

    // The element's attributes, which have to be of those names.
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
        readChild(); // what follows the root has to be nothing
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
                                                        NS::registeredClassNames().join(u", "_s)));
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
        m_file.scenes.push_back(scene);
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
            fail(u"<segue> names an object and no signal of it"_s);
        if (segue.signal.isEmpty() && segue.identifier.isEmpty())
            fail(u"<segue> has neither an identifier nor a signal to begin at"_s);
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
              m_xml.place() });
    }

    void add(const SegueElement &added)
    {
        for (const SegueElement &segue : m_file.segues) {
            if (!added.identifier.isEmpty() && segue.source == added.source
                && segue.identifier == added.identifier) {
                failAt(added.place, u"the scene \"%1\" has a segue \"%2\" already"_s.arg(
                                            added.source, added.identifier));
            }
        }
        m_file.segues.push_back(added);
        expectEnd();
    }

    // What can be told only with the whole file read.
    void check() const
    {
        if (!m_file.initialScene.isEmpty())
            checkScene(m_file.initialScene, m_root);
        for (const SegueElement &segue : m_file.segues) {
            checkScene(segue.source, segue.place);
            checkScene(segue.destination, segue.place);
            checkIsViewController(segue.source, segue.place);
            if (segue.isEmbedded) {
                checkIsViewController(segue.destination, segue.place);
                checkEndsSomewhere(segue, segue.source);
            }
        }
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

    // A scene within itself would be loaded for ever.
    void checkEndsSomewhere(const SegueElement &embedded, const QString &outermost) const
    {
        std::vector<const SegueElement *> within { &embedded };
        for (std::size_t i = 0; i < within.size(); ++i) {
            const SegueElement &outer = *within[i];
            if (outer.destination == outermost)
                failAt(outer.place, u"the scene \"%1\" lies within itself"_s.arg(outermost));
            for (const SegueElement &inner : m_file.segues) {
                // Each once: there may be another circle, which is found from where it begins.
                const bool isNext = inner.isEmbedded && inner.source == outer.destination;
                if (isNext && std::find(within.begin(), within.end(), &inner) == within.end())
                    within.push_back(&inner);
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
    const auto found = std::find_if(scenes.begin(), scenes.end(), [&](const SceneElement &scene) {
        return scene.identifier == identifier;
    });
    return found == scenes.end() ? nullptr : &*found;
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
