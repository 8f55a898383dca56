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
    QString problem; ///< of a value that is none of its kind: "\"abc\" is no whole number"
};

struct NibElement
{
    enum Kind {
        widget,
        layout,
        action,
        actionGroup,
        buttonGroup,
        spacer,
        item, ///< of a list, a tree or a table, or the head of a column or row
    };

    Kind kind = widget;
    QString className;
    NibText name; ///< empty for an item, and perhaps for a layout or a spacer
    int parent = -1; ///< the index of the element that it stands in
    QList<NibProperty> properties;
    QList<NibProperty> attributes; ///< what it is to the element that it stands in
};

/// An object's name that stands in an element.
struct NibReference
{
    NibText name;
    int element = -1;
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
    QList<NibReference> actions; ///< that are added to a widget
    QList<NibReference> zOrder;
    QList<NibText> alignments; ///< in layouts
    QList<NibText> images;
    QHash<QString, QString> addPageMethods; ///< of the custom classes that have one

    /// An error at that place. `name` is what is not there.
    NS::NibError error(NS::NibError::Reason reason, XmlPlace place, const QString &object,
                       const QString &name, const QString &message) const;

private:
    class Reader;
};

} // namespace Pellarvine::detail
