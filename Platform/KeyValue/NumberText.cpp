// SPDX-License-Identifier: MIT
#include "KeyValue/NumberText.h"

#include "KeyValue/KeyValueEquality.h"

#include <QMetaProperty>
#include <QObject>

#include <array>
#include <charconv>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// A float as the double with the same shortest text: 0.1, not 0.10000000149011612.
double widened(float value)
{
    std::array<char, 32> text {};
    const char *const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return QByteArrayView(text.data(), end).toDouble();
}

bool isFloatingPoint(QMetaType type)
{
    return type.id() == QMetaType::Double || type.id() == QMetaType::Float;
}

QVariant parsed(const QString &text, QMetaType type, const QLocale &locale)
{
    bool isNumber = false;
    QVariant number;
    if (isFloatingPoint(type))
        number = locale.toDouble(text, &isNumber);
    else if (type.id() == QMetaType::ULongLong || type.id() == QMetaType::ULong)
        number = locale.toULongLong(text, &isNumber);
    else
        number = locale.toLongLong(text, &isNumber);
    return isNumber ? number : QVariant();
}

// Qt does not read the sign that QLocale writes in Arabic, Persian and Urdu: it has marks of
// direction. Nor does it read "-" where the locale has U+2212.
QVariant parsedWithSign(QString text, QMetaType type, const QLocale &locale)
{
    text.removeIf([](QChar c) { return c == u'\u200e' || c == u'\u200f' || c == u'\u061c'; });
    text = text.trimmed();
    const auto isSign = [](QChar c) {
        return c == u'-' || c == u'\u2212' || c == u'+';
    };
    if (text.size() < 2 || !isSign(text.at(0)) || isSign(text.at(1)))
        return {};
    const bool isFloating = isFloatingPoint(type);
    QVariant number =
            parsed(text.sliced(1), isFloating ? type : QMetaType::fromType<qlonglong>(), locale);
    if (!number.isValid() || text.at(0) == u'+')
        return number;
    return isFloating ? QVariant(-number.toDouble()) : QVariant(-number.toLongLong());
}

} // namespace

bool showsNumbersAsText(const QObject *control, const QString &key)
{
    const QMetaObject *const metaObject = control->metaObject();
    const int index = metaObject->indexOfProperty(key.toUtf8().constData());
    if (index < 0 || metaObject->property(index).typeId() != QMetaType::QString)
        return false;
    return key != "currentText"_L1 || !control->inherits("QComboBox")
           || control->property("editable").toBool();
}

QLocale controlLocale(const QObject *control)
{
    return control->isWidgetType() ? control->property("locale").toLocale() : QLocale::c();
}

bool isWrittenAsNumber(QMetaType type)
{
    switch (type.id()) {
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return isFloatingPoint(type);
    }
}

QString numberText(const QVariant &number, const QLocale &locale)
{
    QLocale plain = locale;
    plain.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    const QMetaType type = number.metaType();
    if (!isFloatingPoint(type))
        return type.id() == QMetaType::ULongLong || type.id() == QMetaType::ULong
                       ? plain.toString(number.toULongLong())
                       : plain.toString(number.toLongLong());
    const double value =
            type.id() == QMetaType::Float ? widened(number.toFloat()) : number.toDouble();
    const QString text = plain.toString(value, 'g', QLocale::FloatingPointShortest);
    // Qt does not read the exponents of some locales, such as "×10^7".
    return NS::isEqual(numberFromText(text, QMetaType::fromType<double>(), locale), value)
                   ? text
                   : plain.toString(value, 'f', QLocale::FloatingPointShortest);
}

QVariant numberFromText(const QString &text, QMetaType type, const QLocale &locale)
{
    QVariant number = parsed(text, type, locale);
    if (!number.isValid())
        number = parsedWithSign(text, type, locale);
    QVariant fitting = number;
    return !isFloatingPoint(type) && fitting.convert(type) && NS::isEqual(fitting, number) ? fitting
                                                                                           : number;
}

} // namespace Pellarvine::detail
