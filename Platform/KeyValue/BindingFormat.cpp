// SPDX-License-Identifier: MIT
#include "KeyValue/BindingFormat.h"

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
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    const auto first = std::find_if(number.begin(), number.end(), isDigit);
    const auto end = std::find_if_not(first, number.end(), isDigit);
    bool canGroup = groupsDigits;
    const qulonglong whole = QStringView(first, end).toULongLong(&canGroup);
    const char16_t zero = locale.zeroDigit().at(0).unicode();
    QString text;
    for (auto c = number.begin(); c != number.end(); ++c) {
    }
    return text;
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
    const char *const length = std::strchr("dixXo", format.m_type) ? "ll" : "";
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
    if (m_type == 's')
        return m_before
               + QString::asprintf(conversion,
                                   qUtf8Printable(isWrittenAsNumber(value.metaType())
                                                          ? numberText(value, locale)
                                                          : value.toString()))
               + m_after;
    bool isNumber = false;
    QString text;
    if (std::strchr("dixXo", m_type))
        text = QString::asprintf(conversion, value.toLongLong(&isNumber));
    else
        text = QString::asprintf(conversion, value.toDouble(&isNumber));
    if (!isNumber)
        return value.toString();
    if (!std::strchr("xXo", m_type))
        text = localized(text, m_groupsDigits, locale);
    return m_before + text + m_after;
}

} // namespace Pellarvine::detail
