// SPDX-License-Identifier: MIT
// Not API: makes the objects of an interface file.
#pragma once

#include "Base/ClassRegistry.h"
#include "Scenes/NibFile.h"
#include "Scenes/NibProperties.h"
#include "Scenes/NibTexts.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <exception>
#include <memory>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

class ObjectLoader;

/// Makes the objects of one file with their properties, and remembers them by name. Main thread
/// only.
class NibObjects
{
public:
    /// `file` has to outlive it.
    explicit NibObjects(const NibFile &file);
    ~NibObjects();
    Q_DISABLE_COPY_MOVE(NibObjects)

    /// The classes that QUiLoader can make.
    QStringList availableWidgets() const;
    QStringList availableLayouts() const;

    /// Makes all objects, once. Throws NibError, and the exceptions of constructors and of the
    /// setters of properties.
    std::unique_ptr<QWidget> make(QWidget *parent);

    const QHash<QString, QObject *> &byName() const { return m_objects; }

    /// The texts that follow the language, which belong to the widget that make() returned. Null if
    /// there are none.
    NibTexts *texts() const { return m_followingTexts; }

    /// Called by the loader: makes a widget of a registered class. Null for other classes.
    QWidget *makeRegistered(const QString &className, QWidget *parent);

    /// Called by the loader: `object` has been made, or is null.
    void add(QObject *object, const QString &name);

private:
    void keepException();
    void addButtonGroups(const QWidget *root);
    [[noreturn]] void fail() const;

    const NibFile &m_file;
    QHash<QString, QObject *> m_objects;
    QHash<QString, NS::ObjectMaker> m_makers; // by class
    std::unique_ptr<NibTexts> m_texts; // until make() has returned
    NibTexts *m_followingTexts = nullptr;
    NibProperties m_properties;
    std::exception_ptr m_exception;
    std::unique_ptr<ObjectLoader> m_loader;
};

/// The tree itself or the object of that name in it, or null. If the tree is that of an interface
/// file, objects of the file come before those that its widgets have made for themselves.
QObject *objectNamed(QObject *root, const QString &name);

} // namespace Pellarvine::detail
