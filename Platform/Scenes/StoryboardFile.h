// SPDX-License-Identifier: MIT
// Not API: the contents of a storyboard file, with places.
#pragma once

#include "Base/XmlReader.h"
#include "Scenes/StoryboardError.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <vector>

namespace Pellarvine::detail {

struct OutletElement
{
    QString property;
    QString object;
    XmlPlace place;
};

struct SceneElement
{
    QString identifier;
    QString className;
    QString interface; ///< the path of the interface file; empty if there is none
    std::vector<OutletElement> outlets;
    XmlPlace place;
};

/// A segue, or a scene that is embedded in another.
struct SegueElement
{
    bool isEmbedded = false;
    QString identifier;
    QString className;
    QString source;
    QString destination;
    QString object; ///< the name of the trigger, or of the container of an embedded scene
    QString signal;
    XmlPlace place;
};

/// Names of scenes and classes are resolved. Objects, properties and signals are checked when a
/// scene is loaded.
class StoryboardFile
{
public:
    /// Throws StoryboardError for the first error.
    explicit StoryboardFile(QString path);

    QString fileName;
    QString initialScene; ///< empty if there is none
    std::vector<SceneElement> scenes;
    std::vector<SegueElement> segues;

    /// Null if there is none.
    const SceneElement *scene(const QString &identifier) const;
    /// The segues from the scene, in the order of the file.
    std::vector<const SegueElement *> seguesFrom(const QString &scene) const;
    QStringList identifiers() const;

    NS::StoryboardError error(XmlPlace place, const QString &problem) const;

private:
    class Reader;

    QHash<QString, std::size_t> m_scenesByIdentifier;
    QHash<QString, std::vector<std::size_t>> m_seguesBySource;
};

} // namespace Pellarvine::detail
