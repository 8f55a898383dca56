// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/StoryboardError.h>

#include <QString>
#include <QStringList>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace Pellarvine::detail {
class StoryboardFile;
struct SceneElement;
struct SegueElement;
} // namespace Pellarvine::detail

namespace NS {

class ViewController;

/// A file with the screens of a program, each a controller with its interface file, and the
/// transitions (segues) between them. docs/storyboards.md describes it, docs/storyboard.rng is its
/// schema.
///
///     <storyboard initialScene="list">
///       <scene identifier="list" class="ListController" interface="List.ui"/>
///       <scene identifier="note" class="NoteController" interface="Note.ui"/>
///       <segue class="Pellarvine::PushSegue" source="list" destination="note"
///              object="openButton" signal="clicked"/>
///     </storyboard>
///
/// Before the file is read, register the classes of controllers with `NS::registerClass` and those
/// of segues with `NS::StoryboardSegue::registerClass`. A storyboard lives as long as its
/// controllers. Main thread only.
class PELLARVINE_EXPORT Storyboard final : public std::enable_shared_from_this<Storyboard>
{
public:
    /// Reads NAME.storyboard from the program's resources, or from the folder of the executable.
    /// Throws `StoryboardError`.
    static std::shared_ptr<Storyboard> storyboardWithName(const QString &name);
    /// Reads a file on the disk or, if the path begins with ":/", in the resources. Throws
    /// `StoryboardError`.
    static std::shared_ptr<Storyboard> storyboardWithContentsOfFile(const QString &path);

    Storyboard(const Storyboard &) = delete;
    Storyboard &operator=(const Storyboard &) = delete;
    ~Storyboard();

    const QString &fileName() const; ///< the path that it was read from
    /// The identifiers of the scenes, in the order of the file.
    QStringList identifiers() const;

    /// Checks everything that is otherwise checked when a view is loaded, without making a
    /// controller: interface files (with the class of the scene as owner), outlets, triggers and
    /// containers. Views that a controller makes in code are not checked. Throws `NibError` and
    /// `StoryboardError`.
    void check() const;

    /// Makes the controller of the initial scene, which the caller owns. Null if the file names
    /// none. The view is loaded when it is first requested, with outlets, triggers and embedded
    /// scenes. Throws `StoryboardError` then for those that the interface file or the class of the
    /// controller lacks.
    QObject *instantiateInitialController();
    /// The same for any scene. Throws `UnknownIdentifierError`.
    QObject *instantiateControllerWithIdentifier(const QString &identifier);

private:
    friend class ViewController;
    friend class SegueTrigger;
    struct Embedded;

    explicit Storyboard(const QString &path);

    void checkScene(const detail::SceneElement &scene) const;
    void viewDidLoad(ViewController *controller, const QString &scene);
    void performSegue(ViewController *source, const QString &scene, const QString &identifier,
                      QObject *sender);
    void perform(const detail::SegueElement &segue, ViewController *source, QObject *sender);
    Embedded embedded(const detail::SegueElement &segue, ViewController *source);

    std::unique_ptr<const detail::StoryboardFile> m_file;
};

} // namespace NS
