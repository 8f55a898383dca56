// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NibError.h>

#include <QString>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QByteArray)
QT_FORWARD_DECLARE_CLASS(QObject)
QT_FORWARD_DECLARE_CLASS(QWidget)
QT_FORWARD_DECLARE_STRUCT(QMetaObject)

namespace Pellarvine::detail {
class NibFile;
}

namespace NS {

/// A Qt Designer file that is loaded while the program runs, with its objects connected to an
/// owner:
///
///     QWidget *const form = NS::Nib(u"Preferences"_s).instantiate(controller, window);
///
/// Dynamic properties in the file say how (docs/interface-files.md has the whole syntax):
///
///     outlets      owner.nameField                the owner's property nameField is this object
///     bindings     text = owner.account.name      a value binding, as NS::bind; options follow,
///                                                 `text = owner.port | commit | required`
///     actions      clicked -> owner.save          a signal to a slot
///     constraints  leading = superview.leading + 8
///
/// Widgets are of Qt's classes and of those in the class registry (`NS::registerClass`), whether or
/// not the file lists them as custom. Texts are translated, and again when the language changes.
/// Everything is checked while it is loaded: nothing is left out in silence.
///
/// A plain value, and main thread only.
class PELLARVINE_EXPORT Nib
{
public:
    /// Reads the file that path() finds. Throws NibError if there is none or it is no interface
    /// file.
    explicit Nib(const QString &name);

    /// A file's contents. `fileName` is for messages, and for the folder of its pictures.
    Nib(const QByteArray &contents, const QString &fileName);

    /// Where the file was found.
    const QString &fileName() const;

    /// Makes the objects of the file anew and returns the outermost, hidden if it is a window. It
    /// belongs to `parent`, or to the caller if that is null. In order: the objects with their
    /// properties, outlets, bindings, actions, constraints, and awakeFromNib() of every object that
    /// declares it as Q_INVOKABLE or as a slot: children before parents, else in the order of the
    /// file, the owner last. Connections and bindings end with either of their objects.
    ///
    /// `owner` may be null if the file names none. Throws NibError for whatever the file asks for
    /// and cannot have; then no object is left, and the outlets that were set are null. What
    /// awakeFromNib() throws is passed on likewise.
    QWidget *instantiate(QObject *owner = nullptr, QWidget *parent = nullptr) const;

    /// Checks the file without an owner: makes the objects, as instantiate() does, and deletes
    /// them. Entries that begin at the owner are compared with `ownerClass`, as far as its own
    /// properties and methods go; not at all if that is null. Nothing is awakened. Throws NibError.
    void check(const QMetaObject *ownerClass = nullptr) const;

    /// The file of that name, with or without ".ui" and perhaps a folder: in the resources at ":/",
    /// then in any folder of the resources, then beside the executable, and last the library's own.
    /// So a host's file stands in for the library's of the same name. An absolute path is taken as
    /// it is. Empty if there is none.
    static QString path(const QString &name);

    /// The same for a tree that code made of the file: call it after setupUi(). Handles what lies
    /// below `root` and has an object name. No object's entries are handled twice, and none is
    /// awakened twice. Throws as instantiate() does, without line numbers, and deletes nothing.
    static void awaken(QWidget *root, QObject *owner = nullptr);

private:
    friend class Storyboard;

    // The objects of check().
    std::unique_ptr<QWidget> checkedTree(const QMetaObject *ownerClass) const;

    std::shared_ptr<const detail::NibFile> m_file;
};

} // namespace NS
