// SPDX-License-Identifier: MIT
// Not API: names and values in interface files other than properties of classes.
#pragma once

#include <QMetaEnum>
#include <QMetaType>
#include <QString>
#include <QStringList>

#include <optional>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace Pellarvine::detail {

/// The possible values.
struct NibValueKinds
{
    QStringList kinds; ///< the elements that may hold it: "enum", "number"
    QMetaEnum keys; ///< of an "enum" or a "set"; invalid if there are none
};

/// @{
/// Empty for a name that is not known.
std::optional<NibValueKinds> spacerProperty(const QString &name);
std::optional<NibValueKinds> itemProperty(const QString &name);
/// In addition to the properties of the class of the layout.
std::optional<NibValueKinds> layoutProperty(const QString &name);
/// For an object in another; `parent` may be null.
std::optional<NibValueKinds> attributeOf(const QObject *object, const QObject *parent,
                                         const QString &name);
/// @}

/// The meta-object of one of Qt's layouts; null for another class.
const QMetaObject *layoutMetaObject(const QString &className);

/// The type that the loader gives a value in an element of that name. Invalid if it depends on the
/// property, or is not known.
QMetaType valueType(const QString &kind);

/// The value of "Qt::AlignRight|Qt::AlignTop". Empty if a key is not known. Scopes are ignored,
/// because a class in a namespace has several spellings.
std::optional<int> valueOfKeys(const QMetaEnum &keys, const QString &text);

} // namespace Pellarvine::detail
