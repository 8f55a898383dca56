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

} // namespace

std::optional<BindingFormat> BindingFormat::parsed(const QString &text)
{
    // Width and precision have at most two digits, so a file cannot demand gigabytes of spaces.
    static const QRegularExpression sentence(
            uR"(^((?:[^%]|%%)*)%([-+ #0]*\d{0,2}(?:\.\d{0,2})?)([dixXoeEfFgGs])((?:[^%]|%%)*)$)"_s,
            QRegularExpression::DotMatchesEverythingOption);
    const auto match = sentence.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    BindingFormat format;
    format.m_type = match.captured(3).at(0).toLatin1();
    format.m_before = undoubled(match.captured(1));
    format.m_after = undoubled(match.captured(4));
    const char *const length = std::strchr("dixXo", format.m_type) ? "ll" : "";
    format.m_conversion = '%' + match.captured(2).toLatin1() + length + format.m_type;
    return format;
}

QString BindingFormat::apply(const QVariant &value) const
{
    if (!value.isValid())
        return {};
    const char *const conversion = m_conversion.constData();
    if (m_type == 's')
        return m_before + QString::asprintf(conversion, qUtf8Printable(value.toString())) + m_after;
    bool isNumber = false;
    QString text;
    if (std::strchr("dixXo", m_type))
        text = QString::asprintf(conversion, value.toLongLong(&isNumber));
    else
        text = QString::asprintf(conversion, value.toDouble(&isNumber));
    return isNumber ? m_before + text + m_after : value.toString();
}

} // namespace Pellarvine::detail
