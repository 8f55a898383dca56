// SPDX-License-Identifier: MIT
// Not API: a binding's pass between two properties of one type, which boxes nothing.
#pragma once

#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/PlainProperty.h"

#include <QMetaType>
#include <QString>

#include <cstddef>

namespace Pellarvine::detail {

// A value of any plain type, stored in the object itself.
class AnyPlainValue
{
public:
    explicit AnyPlainValue(QMetaType type)
        : m_type(type)
    {
        type.construct(data());
    }
    AnyPlainValue(const AnyPlainValue &) = delete;
    AnyPlainValue &operator=(const AnyPlainValue &) = delete;
    ~AnyPlainValue() { m_type.destruct(data()); }

    void *data() { return m_bytes; }

private:
    QMetaType m_type;
    alignas(std::max_align_t) std::byte m_bytes[longestPlain];
};

// Reads both properties and writes the second if they differ.
template <typename T>
void pass(const PlainProperty &source, const PlainProperty &target)
{
    T value {};
    T current {};
    source.read(&value);
    target.read(&current);
    if (!isSame(current, value))
        target.write(&value);
}

// The same for two properties of a type that is known at run time only. Common types first.
Q_NEVER_INLINE inline void passOfAnyType(const PlainProperty &source, const PlainProperty &target)
{
    switch (source.type.id()) {
    case QMetaType::Bool:
        return pass<bool>(source, target);
    case QMetaType::Double:
        return pass<double>(source, target);
    case QMetaType::Float:
        return pass<float>(source, target);
    case QMetaType::QString:
        return pass<QString>(source, target);
    default:
        break;
    }
    AnyPlainValue value(source.type);
    AnyPlainValue current(source.type);
    source.read(value.data());
    target.read(current.data());
    if (!source.type.equals(current.data(), value.data()))
        target.write(value.data());
}

} // namespace Pellarvine::detail
