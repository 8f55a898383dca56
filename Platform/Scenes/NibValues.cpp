// SPDX-License-Identifier: MIT
#include "Scenes/NibValues.h"

#include "Scenes/NibVocabulary.h"

#include <QBrush>
#include <QDate>
#include <QFont>
#include <QGradient>
#include <QLocale>
#include <QPalette>
#include <QSet>

#include <climits>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// The keys in the element, or in the attribute if there is one. Invalid for other texts.
QMetaEnum keysIn(const QString &tag, const QString &attribute = {})
{
    static const QHash<std::pair<QString, QString>, QMetaEnum> keys {
        { { u"stylestrategy"_s, {} }, QMetaEnum::fromType<QFont::StyleStrategy>() },
        { { u"hintingpreference"_s, {} }, QMetaEnum::fromType<QFont::HintingPreference>() },
        { { u"fontweight"_s, {} }, QMetaEnum::fromType<QFont::Weight>() },
        { { u"colorrole"_s, u"role"_s }, QMetaEnum::fromType<QPalette::ColorRole>() },
        { { u"brush"_s, u"brushstyle"_s }, QMetaEnum::fromType<Qt::BrushStyle>() },
        { { u"gradient"_s, u"type"_s }, QMetaEnum::fromType<QGradient::Type>() },
        { { u"gradient"_s, u"spread"_s }, QMetaEnum::fromType<QGradient::Spread>() },
        { { u"gradient"_s, u"coordinatemode"_s },
          QMetaEnum::fromType<QGradient::CoordinateMode>() },
        { { u"locale"_s, u"language"_s }, QMetaEnum::fromType<QLocale::Language>() },
        { { u"locale"_s, u"country"_s }, QMetaEnum::fromType<QLocale::Country>() },
    };
    return keys.value({ tag, attribute });
}

QString keyProblem(const QMetaEnum &keys, const QString &name, const QString &text)
{
    const bool isKnown = !keys.isValid() || valueOfKeys(keys, text);
    return isKnown ? QString() : u"there is no %1 \"%2\""_s.arg(name, text);
}

} // namespace

QString numberProblem(QStringView text, int least, int most)
{
    bool isValid = false;
    const int value = text.toInt(&isValid);
    return isValid && value >= least && value <= most
                   ? QString()
                   : u"\"%1\" is no whole number, or out of range"_s.arg(text);
}

QString textProblem(const QString &tag, const QString &kind, const QString &text)
{
    using Range = std::pair<int, int>;
    static const Range any { INT_MIN, INT_MAX };
    static const QHash<QString, Range> wholes {
        { u"number"_s, any },
        { u"x"_s, any },
        { u"y"_s, any },
        { u"width"_s, any },
        { u"height"_s, any },
        { u"year"_s, any },
        { u"month"_s, { 1, 12 } },
        { u"day"_s, { 1, 31 } },
        { u"hour"_s, { 0, 23 } },
        { u"minute"_s, { 0, 59 } },
        { u"second"_s, { 0, 59 } },
        { u"red"_s, { 0, 255 } },
        { u"green"_s, { 0, 255 } },
        { u"blue"_s, { 0, 255 } },
        { u"pointsize"_s, { 1, INT_MAX } },
        { u"weight"_s, { 0, 1000 } },
        { u"horstretch"_s, { 0, 255 } },
        { u"verstretch"_s, { 0, 255 } },
        { u"unicode"_s, { 0, 0xFFFF } },
    };
    static const QSet<QString> booleans { u"bool"_s,        u"bold"_s,      u"italic"_s,
                                          u"underline"_s,   u"strikeout"_s, u"kerning"_s,
                                          u"antialiasing"_s };
    static const QSet<QString> reals { u"pointf"_s, u"rectf"_s, u"sizef"_s };
    bool isValid = true;
    if (tag == "double"_L1 || tag == "float"_L1 || reals.contains(kind)) {
        static_cast<void>(text.toDouble(&isValid));
        return isValid ? QString() : u"\"%1\" is no number"_s.arg(text);
    }
    if (const auto range = wholes.constFind(tag); range != wholes.cend())
        return numberProblem(text, range->first, range->second);
    if (tag == "uint"_L1)
        static_cast<void>(text.toUInt(&isValid));
    else if (tag == "longlong"_L1)
        static_cast<void>(text.toLongLong(&isValid));
    else if (tag == "ulonglong"_L1)
        static_cast<void>(text.toULongLong(&isValid));
    if (!isValid)
        return u"\"%1\" is no whole number, or out of range"_s.arg(text);
    if (booleans.contains(tag) && text != "true"_L1 && text != "false"_L1)
        return u"\"%1\" is neither true nor false"_s.arg(text);
    return keyProblem(keysIn(tag), tag, text);
}

QString attributeProblem(const QString &tag, const QString &attribute, const QString &text)
{
    if (tag == "color"_L1 && attribute == "alpha"_L1)
        return numberProblem(text, 0, 255);
    return keyProblem(keysIn(tag, attribute), attribute, text);
}

QString wholeProblem(const QString &kind, const QHash<QString, QString> &parts)
{
    if (kind != "date"_L1 && kind != "datetime"_L1)
        return {};
    const auto number = [&](const QString &part) {
        return parts.value(part).toInt();
    };
    const int year = number(u"year"_s);
    const int month = number(u"month"_s);
    const int day = number(u"day"_s);
    return QDate(year, month, day).isValid()
                   ? QString()
                   : u"there is no date %1-%2-%3"_s.arg(year).arg(month).arg(day);
}

} // namespace Pellarvine::detail
