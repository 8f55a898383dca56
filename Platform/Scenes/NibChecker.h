// SPDX-License-Identifier: MIT
// Not API: finds errors that the loader of interface files ignores.
#pragma once

#include "Scenes/NibFile.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace Pellarvine::detail {

/// Checks a file. Every check throws NibError.
class NibChecker
{
public:
    explicit NibChecker(const NibFile &file);

    /// Before the file is loaded: checks the pictures, and the classes, which are registered or
    /// among these names. A container with one place contains one widget, and tables have the
    /// cells of their items.
    void checkClasses(const QStringList &widgets, const QStringList &layouts) const;
    void checkPlaces() const;
    void checkImages() const;

    /// Checks the .qrc files, which only have to exist where the form is edited and built.
    void checkResources() const;

    /// Checks that Qt Designer would save the form without a loss. It takes a plain QWidget with a
    /// layout for a mere layout, unless the QWidget is native or a page of a container.
    void checkEditing() const;

    /// After it is loaded: checks the names of other objects.
    void checkObjects(const QHash<QString, QObject *> &objects);

private:
    [[noreturn]] void fail(NS::NibError::Reason reason, const NibText &where, const QString &object,
                           const QString &name, const QString &message) const;

    // Null for an element without a name.
    QObject *object(const NibElement &element) const { return m_objects.value(element.name.text); }

    void checkCells() const;
    void checkNames() const;
    void checkConnections() const;

    const NibFile &m_file;
    QHash<QString, QObject *> m_objects;
};

} // namespace Pellarvine::detail
