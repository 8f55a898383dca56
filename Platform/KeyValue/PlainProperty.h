// SPDX-License-Identifier: MIT
// Not API: part of what the template TransformableBinding is made of.
#pragma once

#include <QMetaType>
#include <QObject>

#include <cmath>
#include <type_traits>

namespace Pellarvine::detail {

/// A property that is read and written as its own type, without a QVariant.
struct PlainProperty
{
    QObject *object = nullptr; ///< null if there is no property to access
    QMetaType type;
    int index = -1; ///< in the object's meta-object

    bool isA(QMetaType other) const { return object && type == other; }

    // `value` points to an initialised value of the property's type. The further arguments are
    // those that moc's code expects.
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
        // A negative result means that the C++ class has handled the call. Properties that were
        // added to the object at run time, as D-Bus interfaces do, need metacall().
        if (Q_UNLIKELY(object->qt_metacall(what, index, arguments) >= 0))
            QMetaObject::metacall(object, what, index, arguments);
    }
};

/// The `==` of the type. NaN equals NaN; otherwise two sides of a binding would write it to each
/// other without end.
template <typename T>
bool isSame(const T &first, const T &second)
{
    if constexpr (std::is_floating_point_v<T>)
        return first == second || (std::isnan(first) && std::isnan(second));
    else
        return first == second;
}

} // namespace Pellarvine::detail
