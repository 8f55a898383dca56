// SPDX-License-Identifier: MIT
// Not API: what an interface file says, with the places where it says so.
#pragma once

#include "Base/XmlReader.h"
#include "Scenes/NibError.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

namespace Pellarvine::detail {

/// A piece of text and where it starts.
struct NibText
{
    QString text;
    XmlPlace place;
};

/// What is wrong with something in a file, for whoever knows the file and the place.
struct NibFault
{
    NS::NibError::Reason reason;
    QString name; ///< as NibError::name()
    QString message;
};

struct NibProperty
{
    NibText name;
    QString kind; ///< the element that holds the value: "string", "set"
    QList<NibText> values; ///< one, but for a list of strings
    bool isDynamic = false;
};

struct NibElement
{
    enum Kind {
        widget,
        layout,
        action,
        actionGroup,
        buttonGroup,
    };

    Kind kind = widget;
    QString className;
    NibText name;
    int parent = -1; ///< the index of the element that it stands in
    QList<NibProperty> properties;
};

struct NibConnection
{
    NibText sender;
    NibText signal;
    NibText receiver;
    NibText slot;
};

class NibFile
{
public:
    /// Throws NibError (malformed).
    NibFile(QByteArray contents, QString fileName);

    QByteArray contents;
    QString fileName;
    QList<NibElement> elements; ///< in the order of the file, parents before children
    QList<NibConnection> connections;
    QList<NibText> tabStops;
    QList<NibText> images;
    QHash<QString, QString> addPageMethods; ///< of the custom classes that have one

    /// An error at that place. `name` is what is not there.
    NS::NibError error(NS::NibError::Reason reason, XmlPlace place, const QString &object,
                       const QString &name, const QString &message) const;

private:
    class Reader;
};

} // namespace Pellarvine::detail
