// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QVariant>

QT_FORWARD_DECLARE_CLASS(QObject)

/// @file
/// Values of any type travel in a QVariant. An invalid one is no value; the null object stands for
/// no value where something must stand:
///
///     const QVariant nothing;
///     const bool isNull = NS::isEqual(nothing, NS::nullObject()); // false: that is an object
///     const bool isSameNumber = NS::isEqual(3, 3.0);              // true
///     const bool isText = NS::isEqual(3, u"3"_s);                 // false

namespace NS {

/// The null object: a QVariant that holds nullptr.
PELLARVINE_EXPORT QVariant nullObject();

/// No for an invalid value, and for a typed pointer that is null.
PELLARVINE_EXPORT bool isNullObject(const QVariant &value);

/// Whether two values are the same thing. Numbers and enumeration values are compared by what they
/// are worth, whatever their types, and NaN equals itself; objects, held plainly or by a shared
/// pointer, as objects are; all else by its type's own `==`, values of different types being
/// different. Two absent values are equal. Values of one type without an `==` never are.
PELLARVINE_EXPORT bool isEqual(const QVariant &first, const QVariant &second);

/// Whether `first` is `second`, or says that it equals it: a class that declares
/// `Q_INVOKABLE bool isEqual(QObject *other)` decides for itself. Null equals only null.
PELLARVINE_EXPORT bool isEqual(QObject *first, QObject *second);

} // namespace NS
