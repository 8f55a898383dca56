// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QVariant>

QT_FORWARD_DECLARE_CLASS(QObject)

/// @file
/// Equality of values in QVariants, and the null object. The null object is a valid QVariant that
/// stands for "no value" where an invalid QVariant cannot be stored or passed on:
///
///     const QVariant nothing;
///     const bool isNull = NS::isEqual(nothing, NS::nullObject()); // false: that is an object
///     const bool isSameNumber = NS::isEqual(3, 3.0);              // true
///     const bool isText = NS::isEqual(3, u"3"_s);                 // false
///
/// The functions may be called from any thread. They call the `==` of the values' types and the
/// isEqual() of their objects on that thread.

namespace NS {

/// The null object: a QVariant that holds nullptr.
PELLARVINE_EXPORT QVariant nullObject();

/// Whether `value` is the null object. False for an invalid QVariant and for a null pointer to a
/// type.
PELLARVINE_EXPORT bool isNullObject(const QVariant &value);

/// Whether two values are equal:
///
/// - Numbers and enumeration values are compared by their numeric value; their types do not matter.
///   NaN equals NaN.
/// - Pointers and shared pointers to objects are compared by the function below.
/// - Other values are compared by the `==` of their type. Values of different types are not equal,
///   and neither are values of a type without `==`.
/// - Two invalid QVariants are equal.
PELLARVINE_EXPORT bool isEqual(const QVariant &first, const QVariant &second);

/// Whether both are the same object or `first` has a method `Q_INVOKABLE bool isEqual(QObject *)`
/// that returns true for `second`. Null equals only null.
PELLARVINE_EXPORT bool isEqual(QObject *first, QObject *second);

} // namespace NS
