// SPDX-License-Identifier: MIT
// Not API: what an interface file may say that is no property of a class.
#pragma once

#include <QMetaEnum>
#include <QMetaType>
#include <QString>
#include <QStringList>

#include <optional>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace Pellarvine::detail {

/// Which values are possible.
struct NibValueKinds
{
    QStringList kinds; ///< the elements that may hold it: "enum", "number"
    QMetaEnum keys; ///< of an "enum" or a "set"; invalid if there are none
};

/// @{
/// Empty for a name that is not known.
std::optional<NibValueKinds> spacerProperty(const QString &name);
std::optional<NibValueKinds> itemProperty(const QString &name);
/// Besides the properties of the layout's class.
std::optional<NibValueKinds> layoutProperty(const QString &name);
/// Of an object that stands in another; `parent` may be null.
std::optional<NibValueKinds> attributeOf(const QObject *object, const QObject *parent,
                                         const QString &name);
/// @}

/// Of one of Qt's layouts; null for another class.
const QMetaObject *layoutMetaObject(const QString &className);

/// What the loader makes of a value in an element of that name. Invalid if it depends on the
/// property, or is not known.
QMetaType valueType(const QString &kind);

/// The value of "Qt::AlignRight|Qt::AlignTop"; empty if a key is not known. Scopes are ignored,
/// since that of a class in a namespace is spelt in several ways.
std::optional<int> valueOfKeys(const QMetaEnum &keys, const QString &text);

} // namespace Pellarvine::detail
