// SPDX-License-Identifier: MIT
// Not API: part of what the template TransformableBinding is made of.
#pragma once

#include <QMetaType>
#include <QObject>

#include <cmath>
#include <type_traits>

namespace Pellarvine::detail {

/// A property that can be read into storage of its type, and written from there, without a
/// QVariant.
struct PlainProperty
{
    QObject *object = nullptr; ///< null if there is no such property
    QMetaType type;
    int index = -1; ///< in the object's meta-object

    bool isA(QMetaType other) const { return object && type == other; }

    // `value` is a live value of the property's type. The further arguments are those that
    // generated meta-object code expects.
    void read(void *value) const
    {
        int status = -1;
        void *arguments[] = { value, nullptr, &status };
        call(QMetaObject::ReadProperty, arguments);
    }
    void write(void *value) const
    {
        int status = -1;
        int flags = 0;
        void *arguments[] = { value, nullptr, &status, &flags };
        call(QMetaObject::WriteProperty, arguments);
    }

    void call(QMetaObject::Call what, void **arguments) const
    {
        // A property of a C++ class is answered here, by a negative number; one that was added to
        // this object at run time takes the longer way.
        if (Q_UNLIKELY(object->qt_metacall(what, index, arguments) >= 0))
            QMetaObject::metacall(object, what, index, arguments);
    }
};

/// The `==` of the type, but NaN equals itself, or a binding would carry it to and fro.
template <typename T>
bool isSame(const T &first, const T &second)
{
    if constexpr (std::is_floating_point_v<T>)
        return first == second || (std::isnan(first) && std::isnan(second));
    else
        return first == second;
}

} // namespace Pellarvine::detail
