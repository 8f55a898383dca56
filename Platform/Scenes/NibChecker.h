// SPDX-License-Identifier: MIT
// Not API: finds what the loader of interface files leaves out in silence.
#pragma once

#include "Scenes/NibFile.h"

#include <QHash>
#include <QMetaProperty>
#include <QString>
#include <QStringList>

namespace Pellarvine::detail {

struct NibValueKinds;

/// Compares a file with what there is. Every check throws NibError.
class NibChecker
{
public:
    explicit NibChecker(const NibFile &file);

    /// Before the file is loaded: the classes, which may be those registered or of these names, and
    /// the pictures.
    void checkClasses(const QStringList &widgets, const QStringList &layouts) const;
    void checkImages() const;

    /// Once it is loaded: properties, attributes, and the names of other objects.
    void checkObjects(const QHash<QString, QObject *> &objects);

private:
    [[noreturn]] void fail(NS::NibError::Reason reason, const NibText &where, const QString &object,
                           const QString &name, const QString &message) const;
    [[noreturn]] void failProperty(const NibElement &element, const NibProperty &property,
                                   const QString &message) const;

    // Null for what has no name.
    QObject *object(const NibElement &element) const { return m_objects.value(element.name.text); }

    void checkProperty(const NibElement &element, const NibProperty &property) const;
    void checkDeclared(const NibElement &element, const NibProperty &property,
                       const QMetaProperty &declared) const;
    void checkKnown(const NibElement &element, const NibProperty &property,
                    const NibValueKinds &known) const;
    void checkAttribute(const NibElement &element, const NibProperty &attribute) const;
    void checkNames() const;
    void checkConnections() const;

    const NibFile &m_file;
    QHash<QString, QObject *> m_objects;
};

} // namespace Pellarvine::detail
