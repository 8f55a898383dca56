// SPDX-License-Identifier: MIT
#include "KeyValue/BindingValue.h"

#include "Base/Failure.h"
#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/NSKeyValueBinding.h"

#include <QCoreApplication>
#include <QMetaProperty>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

void requireOneThread([[maybe_unused]] const QObject *object, [[maybe_unused]] const QObject *model,
                      [[maybe_unused]] const QString &keyPath)
{
#ifndef QT_NO_DEBUG
    if (object && model && object->thread() != model->thread())
        fatalError("Error: the objects of the binding of "
                   + std::string(object->metaObject()->className()) + " to "
                   + model->metaObject()->className() + ".\"" + keyPath.toStdString()
                   + "\" live in two threads");
#endif
}

bool isWritable(QObject *root, const QString &keyPath)
{
    const qsizetype dot = keyPath.lastIndexOf(u'.');
    QObject *holder = root;
    if (dot >= 0) {
        const auto held = object(NS::valueForKeyPath(root, keyPath.first(dot)));
        if (!held || !*held)
            return true;
        holder = *held;
    }
    return findProperty(holder, keyPath.sliced(dot + 1), keyPath).isWritable;
}

QString boundProperty(const QObject *object, const QString &binding)
{
    const QMetaObject *const metaObject = object->metaObject();
    if (binding != NS::NSValueBinding || metaObject->indexOfProperty("value") >= 0
        || object->property("value").isValid())
        return binding;
    const QMetaProperty user = metaObject->userProperty();
    if (user.isValid())
        return QString::fromUtf8(user.name());
    // These have no USER property.
    if (object->inherits("QCalendarWidget"))
        return u"selectedDate"_s;
    return object->inherits("QAction") ? u"checked"_s : binding;
}

QVariant remembered(const QVariant &value)
{
    const auto held = object(value);
    return held ? QVariant::fromValue(quintptr(*held)) : value;
}

bool holdsAlready(const QVariant &current, const QVariant &value)
{
    if (!current.isValid() || !value.isValid())
        return current.isValid() == value.isValid();
    // Conversion of -1 to an unsigned number would give the greatest one, and back.
    const bool areNumbers = isNumber(current.metaType()) && isNumber(value.metaType());
    if (areNumbers || current.metaType() == value.metaType())
        return NS::isEqual(current, value);
    return NS::isEqual(current, value) || (isAs(value, current) && isAs(current, value));
}

bool isAs(const QVariant &value, const QVariant &other)
{
    QVariant converted = value;
    return NS::isEqual(value, other)
           || (converted.convert(other.metaType()) && NS::isEqual(converted, other));
}

QVariant nearest(const QVariant &value, QMetaType type)
{
    bool isFinite = isNumber(type);
    double number = isFinite ? value.toDouble(&isFinite) : 0;
    isFinite = isFinite && !std::isnan(number);
    if (isFinite && type.id() == QMetaType::Int) {
        using Limits = std::numeric_limits<int>;
        number = std::clamp(std::round(number), double(Limits::min()), double(Limits::max()));
        return int(number);
    }
    QVariant result = isFinite ? QVariant(number) : value;
    return result.convert(type) ? result : QVariant();
}

bool isSelection(const QString &key)
{
    return key == "currentIndex"_L1 || key == "currentRow"_L1 || key == "selectedSegment"_L1;
}

bool isBlank(const QVariant &value)
{
    return !value.isValid() || NS::isNullObject(value)
           || (value.typeId() == QMetaType::QString && value.toString().trimmed().isEmpty());
}

QString conversionMessage(QMetaType type)
{
    if (type.id() == QMetaType::Double || type.id() == QMetaType::Float)
        return QCoreApplication::translate("NS::Binding", "Enter a number.");
    if (isNumber(type) && type.id() != QMetaType::Bool)
        return QCoreApplication::translate("NS::Binding", "Enter a whole number.");
    return QCoreApplication::translate("NS::Binding", "This value does not fit here.");
}

} // namespace Pellarvine::detail
