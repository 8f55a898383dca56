// SPDX-License-Identifier: MIT
#include "KeyValue/BindingFormat.h"

#include "KeyValue/NumberText.h"

#include <QRegularExpression>

#include <cstring>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

QString undoubled(QString text)
{
    return text.replace("%%"_L1, "%"_L1);
}

// A number that printf wrote, as the locale writes it.
QString localized(const QString &number, bool groupsDigits, const QLocale &locale)
{
    static const QRegularExpression wholePart(uR"(^\D*([1-9]\d*))"_s);
    const auto whole = groupsDigits ? wholePart.match(number) : QRegularExpressionMatch();
    bool isGrouped = false;
    const QString grouped = locale.toString(whole.captured(1).toULongLong(&isGrouped));
    QString text;
    for (qsizetype i = 0; i < number.size(); ++i) {
        const QChar c = number.at(i);
        if (isGrouped && i == whole.capturedStart(1)) {
            text += grouped;
            i = whole.capturedEnd(1) - 1;
        } else if (c >= u'0' && c <= u'9') {
            QString digit = locale.zeroDigit(); // may be a surrogate pair
            digit.back() = QChar(digit.back().unicode() + c.digitValue());
            text += digit;
        } else if (c == u'.') {
            text += locale.decimalPoint();
        } else if (c == u'-') {
            text += locale.negativeSign();
        } else if (c == u'+') {
            text += locale.positiveSign();
        } else {
            text += c;
        }
    }
    return text;
}

// The digits of a number that the conversion of a long long cannot write; else an empty text.
QString longNumber(const QVariant &value, char conversion)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float: {
        constexpr double limit = 9223372036854775808.0; // 2 to the power of 63
        const double number = value.toDouble();
        return number >= -limit && number < limit ? QString() : QString::asprintf("%.0f", number);
    }
    case QMetaType::ULong:
    case QMetaType::ULongLong: {
        const qulonglong number = value.toULongLong();
        const bool isSigned = conversion == 'd' || conversion == 'i';
        return isSigned && qlonglong(number) < 0 ? QString::number(number) : QString();
    }
    default:
        return {};
    }
}

} // namespace

std::optional<BindingFormat> BindingFormat::parsed(const QString &text)
{
    // Width and precision have at most two digits, so a file cannot demand gigabytes of spaces.
    static const QRegularExpression sentence(
            uR"(^((?:[^%]|%%)*)%([-+ #0']*\d{0,2}(?:\.\d{0,2})?)([dixXoeEfFgGs])((?:[^%]|%%)*)$)"_s,
            QRegularExpression::DotMatchesEverythingOption);
    const auto match = sentence.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    BindingFormat format;
    format.m_type = match.captured(3).at(0).toLatin1();
    format.m_before = undoubled(match.captured(1));
    format.m_after = undoubled(match.captured(4));
    const char *const length = std::strchr("dixXo", format.m_type) ? "ll"
                               : format.m_type == 's'              ? "l" // in UTF-16
                                                                   : "";
    QByteArray flags = match.captured(2).toLatin1();
    format.m_groupsDigits = flags.contains('\'');
    format.m_conversion = '%' + flags.replace("'", "") + length + format.m_type;
    return format;
}

QString BindingFormat::apply(const QVariant &value, const QLocale &locale) const
{
    if (!value.isValid())
        return {};
    const char *const conversion = m_conversion.constData();
    if (m_type == 's') {
        const QString text =
                isWrittenAsNumber(value.metaType()) ? numberText(value, locale) : value.toString();
        return m_before + QString::asprintf(conversion, text.utf16()) + m_after;
    }
    bool isNumber = false;
    QString text;
    if (std::strchr("dixXo", m_type)) {
        const QString digits = longNumber(value, m_type);
        isNumber = !digits.isEmpty();
        text = isNumber ? digits : QString::asprintf(conversion, value.toLongLong(&isNumber));
    } else {
        text = QString::asprintf(conversion, value.toDouble(&isNumber));
    }
    if (!isNumber)
        return value.toString();
    if (!std::strchr("xXo", m_type))
        text = localized(text, m_groupsDigits, locale);
    return m_before + text + m_after;
}

} // namespace Pellarvine::detail
