// SPDX-License-Identifier: MIT
// Not API: the contents of an interface file, with places.
#pragma once

#include "Base/XmlReader.h"
#include "Scenes/NibError.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace Pellarvine::detail {

/// A piece of text and its place.
struct NibText
{
    QString text;
    XmlPlace place;
};

/// An error without file and place, which the catcher adds.
struct NibFault
{
    NS::NibError::Reason reason;
    QString name; ///< as NibError::name()
    QString message;
};

/// A text in the language of the source code.
struct NibTranslatable
{
    QByteArray source;
    QByteArray qualifier; ///< the comment that distinguishes equal texts, or the ID of the text
};

struct NibProperty
{
    NibText name;
    QString kind; ///< the element that holds the value: "string", "set"
    NibText value; ///< its text, or "<rect>" for one in several elements
    QList<NibText> parts; ///< the strings of a list, and the keys of a size policy
    /// The value, if it is a text to be translated. The qualifier of a list to be translated.
    std::optional<NibTranslatable> translatable;
    bool isDynamic = false;
    QString problem; ///< of a value that does not fit its kind: "\"abc\" is no whole number"

    /// Those of a list of strings, else the value.
    QList<NibText> texts() const
    {
        return kind == QLatin1StringView("stringlist") ? parts : QList<NibText> { value };
    }
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
    int parent = -1; ///< the index of the parent element
    bool isNative = false; ///< a QWidget that Qt Designer does not take for a mere layout
    bool isCell = false; ///< an item that is no head of a column or row
    int row = -1; ///< of a cell, if the file says it
    int column = -1;
    int rowHeads = 0; ///< of a table
    int columnHeads = 0;
    QList<NibProperty> properties;
    qsizetype plainCount = 0; ///< the number of first properties that loaderContents lacks
    QList<NibProperty> attributes; ///< relation to the parent element
};

/// The name of an object in an element.
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
    QByteArray loaderContents; ///< for QUiLoader, without the plain properties and the indentation
    QString fileName;
    QByteArray className; ///< of the form, which is the context of translations
    bool hasTextIds = false; ///< whether the texts are translated by their IDs
    QList<NibElement> elements; ///< in the order of the file, parents before children
    QList<NibConnection> connections;
    QList<NibText> tabStops;
    QList<NibReference> actions; ///< that are added to a widget
    QList<NibReference> zOrder;
    QList<NibText> alignments; ///< in layouts
    QList<NibText> images;
    QList<NibText> resources; ///< the .qrc files
    QHash<QString, QString> addPageMethods; ///< of the custom classes that have one

    /// The element of that name, or null.
    const NibElement *element(const QString &name) const;

    /// An error at that place. `name` cannot be resolved.
    NS::NibError error(NS::NibError::Reason reason, XmlPlace place, const QString &object,
                       const QString &name, const QString &message) const;

    /// Where the tag begins that ends at a place; the place itself if there is none.
    XmlPlace tagBefore(XmlPlace end) const;

private:
    class Reader;

    QHash<QString, int> m_indexes; // of the elements that have names
};

} // namespace Pellarvine::detail

Q_DECLARE_TYPEINFO(Pellarvine::detail::NibText, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(Pellarvine::detail::NibProperty, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(Pellarvine::detail::NibElement, Q_RELOCATABLE_TYPE);
