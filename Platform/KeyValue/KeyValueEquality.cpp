// SPDX-License-Identifier: MIT
#include "KeyValue/KeyValueEquality.h"

#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/PlainProperty.h"

#include <QObject>

#include <cmath>
#include <optional>
#include <utility>

namespace NS {

namespace {

struct Number
{
    enum Kind {
        signedInteger,
        unsignedInteger,
        floating,
    };
    Kind kind;
    qlonglong asSigned = 0;
    qulonglong asUnsigned = 0;
    double asDouble = 0;
};

std::optional<Number> number(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return Number { Number::signedInteger, value.toLongLong() };
    case QMetaType::UChar:
    case QMetaType::UShort:
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return Number { Number::unsignedInteger, 0, value.toULongLong() };
    case QMetaType::Float:
    case QMetaType::Double:
        return Number { Number::floating, 0, 0, value.toDouble() };
    default:
        if (value.metaType().flags() & QMetaType::IsEnumeration)
            return Number { Number::signedInteger, value.toLongLong() };
        return std::nullopt;
    }
}

bool isEqual(double value, const Number &integer)
{
    // Conversion of the integer to double would round above 2^53.
    if (value != std::trunc(value))
        return false;
    constexpr double past = 9223372036854775808.0; // 2^63
    if (value >= -past && value < past) {
        const auto whole = static_cast<qlonglong>(value);
        return integer.kind == Number::signedInteger ? whole == integer.asSigned
                                                     : std::cmp_equal(whole, integer.asUnsigned);
    }
    return integer.kind == Number::unsignedInteger && value >= past && value < 2 * past
           && static_cast<qulonglong>(value) == integer.asUnsigned;
}

bool isEqual(const Number &first, const Number &second)
{
    if (first.kind == Number::floating) {
        if (second.kind != Number::floating)
            return isEqual(first.asDouble, second);
        return detail::isSame(first.asDouble, second.asDouble);
    }
    if (second.kind == Number::floating)
        return isEqual(second.asDouble, first);
    if (first.kind == Number::signedInteger)
        return second.kind == Number::signedInteger
                       ? first.asSigned == second.asSigned
                       : std::cmp_equal(first.asSigned, second.asUnsigned);
    return second.kind == Number::signedInteger ? std::cmp_equal(first.asUnsigned, second.asSigned)
                                                : first.asUnsigned == second.asUnsigned;
}

} // namespace

QVariant nullObject()
{
    return QVariant::fromValue(nullptr);
}

bool isNullObject(const QVariant &value)
{
    return value.typeId() == QMetaType::Nullptr;
}

bool isEqual(const QVariant &first, const QVariant &second)
{
    if (!first.isValid() || !second.isValid())
        return first.isValid() == second.isValid();
    if (const auto one = number(first)) {
        const auto other = number(second);
        return other && isEqual(*one, *other);
    }
    if (const auto one = detail::object(first)) {
        const auto other = detail::object(second);
        return other && isEqual(*one, *other);
    }
    return first.metaType() == second.metaType() && first == second;
}

bool isEqual(QObject *first, QObject *second)
{
    if (first == second || !first || !second)
        return first == second;
    return detail::isEqual(first, second, detail::isEqualMethod(first));
}

} // namespace NS
