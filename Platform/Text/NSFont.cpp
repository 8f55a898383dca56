// SPDX-License-Identifier: MIT
#include "Text/NSFont.h"

#include "Text/FontFaces.h"
#include "Text/NSFontManager.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <cmath>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

QFont serifSystemFont(double size)
{
    QFont font(u"Serif"_s);
    font.setStyleHint(QFont::Serif);
    return FontManager::convertToSize(font, size);
}

struct Alias
{
    QStringView family;
    QFont (*font)(double size);
};

// Families by the prefix of their PostScript names, and by the spelling that people use.
constexpr Alias aliases[] = {
    { u"menlo", &monospacedSystemFont },   { u"monaco", &monospacedSystemFont },
    { u"sfmono", &monospacedSystemFont },  { u"sf mono", &monospacedSystemFont },
    { u"courier", &monospacedSystemFont }, { u"monospace", &monospacedSystemFont },
    { u"helvetica", &systemFont },         { u"helveticaneue", &systemFont },
    { u"helvetica neue", &systemFont },    { u"lucidagrande", &systemFont },
    { u"lucida grande", &systemFont },     { u"sans-serif", &systemFont },
    { u"times", &serifSystemFont },        { u"serif", &serifSystemFont },
};

std::optional<QFont> fontOfFamily(QStringView family, double size)
{
    for (const Alias &alias : aliases) {
        if (family.compare(alias.family, Qt::CaseInsensitive) == 0)
            return alias.font(size);
    }
    return std::nullopt;
}

// "Menlo-BoldItalic" is two traits of the family's font.
std::optional<QFont> fontByAlias(const QString &name, double size)
{
    if (auto font = fontOfFamily(name, size))
        return font;
    const qsizetype hyphen = name.lastIndexOf(u'-');
    auto font = hyphen < 0 ? std::nullopt : fontOfFamily(QStringView(name).first(hyphen), size);
    if (!font)
        return std::nullopt;
    QString style = name.sliced(hyphen + 1).toLower();
    if (style.startsWith("bold"_L1)) {
        *font = FontManager::convertToHaveTrait(*font, FontTraitMask::bold);
        style.remove(0, 4);
    }
    if (style == "italic"_L1 || style == "oblique"_L1) {
        *font = FontManager::convertToHaveTrait(*font, FontTraitMask::italic);
        style.clear();
    }
    const bool isKnown = style.isEmpty() || style == "regular"_L1 || style == "roman"_L1;
    return isKnown ? font : std::nullopt;
}

double usableSize(double size)
{
    return size > 0 && std::isfinite(size) ? size : systemFontSize();
}

} // namespace

std::optional<QFont> fontWithName(const QString &name, double size)
{
    const auto font = detail::fontNamed(name);
    if (!font)
        return fontByAlias(name, usableSize(size));
    return FontManager::convertToSize(*font, usableSize(size));
}

QFont systemFont(double size)
{
    return FontManager::convertToSize(QGuiApplication::font(), usableSize(size));
}

QFont boldSystemFont(double size)
{
    QFont font = FontManager::convertToHaveTrait(systemFont(size), FontTraitMask::bold);
    if (!font.bold())
        font.setBold(true);
    return font;
}

QFont monospacedSystemFont(double size)
{
    return FontManager::convertToSize(QFontDatabase::systemFont(QFontDatabase::FixedFont),
                                      usableSize(size));
}

double systemFontSize()
{
    return FontManager::pointSize(QGuiApplication::font());
}

} // namespace NS
