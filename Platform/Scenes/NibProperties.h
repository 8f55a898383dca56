// SPDX-License-Identifier: MIT
// Not API: the properties of the objects in an interface file.
#pragma once

#include "Scenes/NibFile.h"

#include <QHash>
#include <QMetaProperty>
#include <QString>

namespace Pellarvine::detail {

class NibTexts;
struct NibValueKinds;

/// Sets the plain properties, and checks the others, which QUiLoader sets. So the loader has less
/// to read, and no property is looked up twice. Every function throws NibError.
class NibProperties
{
public:
    /// `objects` are the objects of the file by name. Translated texts are added to `texts`.
    NibProperties(const NibFile &file, const QHash<QString, QObject *> &objects, NibTexts &texts);

    /// Sets the plain properties of an object that has just been made.
    void setPlain(QObject *object, const NibElement &element) const;

    /// Checks the other properties, and the attributes. All objects have been made.
    void checkOthers(const NibElement &element) const;

private:
    [[noreturn]] void fail(const NibElement &element, const NibProperty &property,
                           const QString &message) const;
    [[noreturn]] void failObject(const NibElement &element, const NibProperty &property,
                                 const QString &name, const QString &message) const;
    [[noreturn]] void failValue(const NibElement &element, const NibProperty &property) const;

    // Null for an element without a name.
    QObject *object(const NibElement &element) const { return m_objects.value(element.name.text); }

    void checkProperty(const NibElement &element, const NibProperty &property) const;
    void checkUndeclared(const NibElement &element, const NibProperty &property) const;
    void checkKnown(const NibElement &element, const NibProperty &property,
                    const NibValueKinds &known) const;
    void checkAttribute(const NibElement &element, const NibProperty &attribute) const;
    void checkProblem(const NibElement &element, const NibProperty &property) const;

    const NibFile &m_file;
    const QHash<QString, QObject *> &m_objects;
    NibTexts &m_texts;
};

} // namespace Pellarvine::detail
