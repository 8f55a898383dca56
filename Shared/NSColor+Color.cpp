// SPDX-License-Identifier: MIT
#include "Base/Failure.h"
#include "Drawing/NSColorList.h"
#include "Shared/NSColor+Color.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Pellarvine {

namespace {

constexpr int longestForm = 8;

// The length in user-perceived characters, or a number above `longestForm`.
int length(QStringView text)
{
    // Each of these is one character. This decides for most texts and for the start of most long
    // ones.
    const QStringView start = text.first(std::min<qsizetype>(text.size(), longestForm + 1));
    if (std::ranges::all_of(start, [](QChar unit) { return unit >= u' ' && unit <= u'~'; }))
        return int(start.size());
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    int count = 0;
    while (count <= longestForm && finder.toNextBoundary() != -1)
        ++count;
    return count;
}

int digitValue(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'a' && unit <= u'f')
        return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F')
        return unit - u'A' + 10;
    return -1;
}

// A text of at most eight characters has at most eight digits: the value cannot overflow.
std::optional<quint32> scannedHex(QStringView text)
{
    while (!text.isEmpty() && text.front().isSpace())
        text = text.sliced(1);
    if (text.startsWith(u"0x", Qt::CaseInsensitive))
        text = text.sliced(2);
    std::optional<quint32> value;
    for (const QChar character : text) {
        const int digit = digitValue(character);
        if (digit < 0)
            break;
        value = value.value_or(0) << 4 | quint32(digit);
    }
    return value;
}

NS::Color color(quint32 red, quint32 green, quint32 blue, quint32 alpha, double largest)
{
    return NS::Color(RGBA { red / largest, green / largest, blue / largest, alpha / largest });
}

unsigned hexComponent(double component)
{
    const double scaled = std::trunc(component * 255.0);
    if (!(std::abs(scaled) <= std::numeric_limits<int>::max()))
        detail::fatalError("Error: color component out of range");
    return unsigned(int(scaled));
}

bool isInRange(double component)
{
    return component >= 0 && component <= 1;
}

// Converts a QVariant with a colour to text and back. A text that would not give the same bytes
// back is not produced.
bool toText(const void *from, void *to)
{
    const auto &color = *static_cast<const NS::Color *>(from);
    const auto &[red, green, blue, alpha] = color.rgba();
    if (!isInRange(red) || !isInRange(green) || !isInRange(blue) || !isInRange(alpha))
        return false;
    *static_cast<QString *>(to) = hexStringWithAlpha(color);
    return true;
}

bool fromText(const void *from, void *to)
{
    const auto color = colorWithHex(*static_cast<const QString *>(from));
    if (color)
        *static_cast<NS::Color *>(to) = *color;
    return color.has_value();
}

// The name for people: "Green Sea" for "greenSea".
QString title(const char *name)
{
    QString text;
    for (const QChar character : QString::fromLatin1(name)) {
        if (text.isEmpty())
            text.append(character.toUpper());
        else if (character.isUpper())
            text.append(u' ').append(character);
        else
            text.append(character);
    }
    return text;
}

// The list that colour panels offer.
void offerPalette()
{
    NS::ColorList list { QStringLiteral("Pellarvine"), {} };
    for (const auto &[name, color] : Palette<NS::Color>::all())
        list.entries.append({ title(name), color });
    NS::ColorList::add(list);
}

[[maybe_unused]] const bool isConversionRegistered = [] {
    offerPalette();
    const auto color = QMetaType::fromType<NS::Color>();
    const auto text = QMetaType::fromType<QString>();
    return QMetaType::registerConverterFunction(&toText, color, text)
           && QMetaType::registerConverterFunction(&fromText, text, color);
}();

} // namespace

std::optional<NS::Color> colorWithHex(QStringView hex)
{
    if (hex.startsWith(u'#'))
        hex = hex.sliced(1);
    const int form = length(hex);
    if (form > longestForm)
        return std::nullopt;
    const auto scanned = scannedHex(hex);
    if (!scanned)
        return std::nullopt;
    const quint32 value = *scanned;
    switch (form) {
    case 3:
        return color(value >> 8 & 0xf, value >> 4 & 0xf, value & 0xf, 15, 15);
    case 4:
        return color(value >> 12 & 0xf, value >> 8 & 0xf, value >> 4 & 0xf, value & 0xf, 15);
    case 6:
        return color(value >> 16 & 0xff, value >> 8 & 0xff, value & 0xff, 255, 255);
    case 8:
        return color(value >> 24, value >> 16 & 0xff, value >> 8 & 0xff, value & 0xff, 255);
    default:
        return std::nullopt;
    }
}

QString hexStringWithAlpha(const NS::Color &color)
{
    const auto &[red, green, blue, alpha] = color.rgba();
    return QString::asprintf("#%02X%02X%02X%02X", hexComponent(red), hexComponent(green),
                             hexComponent(blue), hexComponent(alpha));
}

QString hexStringWithoutAlpha(const NS::Color &color)
{
    const auto &[red, green, blue, alpha] = color.rgba();
    return QString::asprintf("#%02X%02X%02X", hexComponent(red), hexComponent(green),
                             hexComponent(blue));
}

} // namespace Pellarvine
