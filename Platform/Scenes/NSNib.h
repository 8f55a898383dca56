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

/// A form of Qt Designer that is loaded at run time and connected to an owner:
///
///     QWidget *const form = NS::Nib(u"Preferences"_s).instantiate(controller, window);
///
/// Dynamic properties in the file define the connections. docs/interface-files.md has the whole
/// syntax:
///
///     outlets      owner.nameField                the owner's property nameField is this object
///     bindings     text = owner.account.name      a value binding, as NS::bind; options follow,
///                                                 `text = owner.port | commit | required`
///     actions      clicked -> owner.save          a signal to a slot
///     constraints  leading = superview.leading + 8
///
/// Widgets can be of Qt's classes and of all registered classes (`NS::registerClass`), with or
/// without an entry for custom widgets in the file. Texts are translated when the form is loaded
/// and when the language changes. Every entry is checked: an error is thrown, and nothing is left
/// out silently.
///
/// A plain value. Main thread only.
class PELLARVINE_EXPORT Nib
{
public:
    /// Reads the file that path() finds. Throws NibError if there is none or it is no interface
    /// file.
    explicit Nib(const QString &name);

    /// Reads the contents of a file. `fileName` is for messages and for finding its pictures.
    Nib(const QByteArray &contents, const QString &fileName);

    /// The path of the file.
    const QString &fileName() const;

    /// Creates the objects of the file and returns the outermost, which is hidden if it is a
    /// window. `parent` owns it; if that is null, the caller does. The steps are: objects with
    /// their properties, outlets, bindings, actions, constraints, and then awakeFromNib() of every
    /// object that declares it as Q_INVOKABLE or as a slot. Children come before parents, otherwise
    /// in the order of the file, and the owner last. A connection or a binding ends with either of
    /// its objects.
    ///
    /// `owner` may be null if the file does not name it. Throws NibError for anything that cannot
    /// be resolved, and the exceptions of awakeFromNib(). Then all objects are deleted, and the
    /// outlets are null. Returns null if an awakeFromNib() has deleted the outermost object.
    QWidget *instantiate(QObject *owner = nullptr, QWidget *parent = nullptr) const;

    /// Checks the file without an owner: creates the objects, as instantiate() does, and deletes
    /// them. Entries that begin with the owner are checked against the properties and methods of
    /// `ownerClass`, or skipped if that is null. awakeFromNib() is not called. Throws NibError.
    void check(const QMetaObject *ownerClass = nullptr) const;

    /// The path of the file of that name, with or without ".ui" and a folder. It is looked for in
    /// the resources at ":/", in all other folders of the resources, beside the executable, and
    /// among the library's own files. So a file of the program replaces that of the library of the
    /// same name. An absolute path is returned unchanged. Empty if there is no such file.
    static QString path(const QString &name);

    /// Connects a tree that compiled code of the form has made: call it after setupUi(). It
    /// processes the objects below `root` that have an object name. The entries of an object are
    /// processed once, and awakeFromNib() is called once. Throws as instantiate() does, without
    /// line numbers, and deletes nothing.
    static void awaken(QWidget *root, QObject *owner = nullptr);

private:
    friend class Storyboard;

    // The objects of check().
    std::unique_ptr<QWidget> checkedTree(const QMetaObject *ownerClass) const;

    std::shared_ptr<const detail::NibFile> m_file;
};

} // namespace NS
