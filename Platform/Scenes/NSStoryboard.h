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

/// A file that lists the screens of a program, each a controller with its interface file, and the
/// segues between them. docs/storyboards.md describes it, docs/storyboard.rng is its schema.
///
///     <storyboard initialScene="list">
///       <scene identifier="list" class="ListController" interface="List.ui"/>
///       <scene identifier="note" class="NoteController" interface="Note.ui"/>
///       <segue class="Pellarvine::PushSegue" source="list" destination="note"
///              object="openButton" signal="clicked"/>
///     </storyboard>
///
/// Controllers' classes are registered with `NS::registerClass`, those of segues with
/// `NS::StoryboardSegue::registerClass`, before the file is read. The controllers that come from a
/// storyboard keep it alive. Main thread only.
class PELLARVINE_EXPORT Storyboard final : public std::enable_shared_from_this<Storyboard>
{
public:
    /// Reads NAME.storyboard from the program's resources or, if that is not there, from the folder
    /// of the executable. Throws `StoryboardError`.
    static std::shared_ptr<Storyboard> storyboardWithName(const QString &name);
    /// Reads a file on the disk or, if the path begins with ":/", in the resources. Throws
    /// `StoryboardError`.
    static std::shared_ptr<Storyboard> storyboardWithContentsOfFile(const QString &path);

    Storyboard(const Storyboard &) = delete;
    Storyboard &operator=(const Storyboard &) = delete;
    ~Storyboard();

    const QString &fileName() const; ///< the path that it was read from
    /// Of the scenes, in the order of the file.
    QStringList identifiers() const;

    /// Checks what is otherwise checked when a scene's view is loaded, without making a controller:
    /// interface files, with the scene's class for their owner, outlets, triggers and containers.
    /// Objects of a view that its controller makes by itself are not known. Throws `NibError` and
    /// `StoryboardError`.
    void check() const;

    /// Makes the controller of the initial scene; null if the file names none. The controller
    /// belongs to the caller. Its view is loaded when it is first asked for, together with the
    /// scene's outlets, triggers and embedded scenes, and that throws `StoryboardError` for
    /// those that the interface file or the controller's class does not have.
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
