// SPDX-License-Identifier: MIT
#include "Text/NSFontManager.h"

#include "Text/FontFaces.h"

#include <QFontInfo>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace NS {

using detail::FontFace;

namespace {

bool isBold(const FontFace &face)
{
    return face.weight > QFont::Medium;
}

QFont inWeight(QFont font, int weight)
{
    font.setStyleName(QString()); // it would override the weight
    font.setWeight(QFont::Weight(weight));
    return font;
}

QFont upright(QFont font)
{
    font.setStyleName(QString());
    font.setStyle(QFont::StyleNormal);
    return font;
}

// The font in the face that is `wanted` and nearest to `weight`, among the faces of its family with
// the width of the displayed one.
template <typename Predicate>
QFont nearest(const QFont &font, const FontFace &shown, int weight, Predicate wanted)
{
    QList<FontFace> candidates = detail::faces(font);
    candidates.removeIf(
            [&](const FontFace &face) { return face.width != shown.width || !wanted(face); });
    const auto found = std::ranges::min_element(
            candidates, {}, [&](const FontFace &face) { return std::abs(face.weight - weight); });
    return found == candidates.end() ? font : detail::inFace(font, *found);
}

} // namespace

QFont FontManager::convertToHaveTrait(const QFont &font, FontTraitMask trait)
{
    const auto shown = detail::shownFace(font);
    if (!shown)
        return font;
    const auto isAsSlanted = [&](const FontFace &face) {
        return face.isSlanted() == shown->isSlanted();
    };
    const auto turned = [&] {
        return nearest(font, *shown, shown->weight, [&](const FontFace &face) {
            return !isAsSlanted(face) && face.weight == shown->weight;
        });
    };
    switch (trait) {
    case FontTraitMask::bold:
        if (shown->weight >= QFont::Bold)
            return font;
        return nearest(font, *shown, QFont::Bold,
                       [&](const FontFace &face) { return isAsSlanted(face) && isBold(face); });
    case FontTraitMask::unbold:
        // Qt thickens the face of a family without a bold one.
        if (!isBold(*shown))
            return font.weight() > QFont::Medium ? inWeight(font, shown->weight) : font;
        return nearest(font, *shown, QFont::Normal,
                       [&](const FontFace &face) { return isAsSlanted(face) && !isBold(face); });
    case FontTraitMask::italic:
        return shown->isSlanted() ? font : turned();
    case FontTraitMask::unitalic:
        if (shown->isSlanted())
            return turned();
        // Qt slants the face of a family without a slanted one.
        return font.style() != QFont::StyleNormal ? upright(font) : font;
    }
    return font;
}

QFont FontManager::convertWeight(const QFont &font, WeightDirection direction)
{
    const auto shown = detail::shownFace(font);
    if (!shown)
        return font;
    return nearest(font, *shown, shown->weight, [&](const FontFace &face) {
        const bool isInDirection = direction == WeightDirection::heavier
                                           ? face.weight > shown->weight
                                           : face.weight < shown->weight;
        return isInDirection && face.isSlanted() == shown->isSlanted();
    });
}

QFont FontManager::convertToSize(const QFont &font, double size)
{
    if (!(size > 0) || !std::isfinite(size))
        return font;
    QFont result = font;
    result.setPointSizeF(size);
    return result;
}

double FontManager::pointSize(const QFont &font)
{
    // Negative for a size in pixels.
    return font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
}

QList<int> FontManager::weights(const QFont &font)
{
    const auto shown = detail::shownFace(font);
    QList<int> all;
    for (const FontFace &face : detail::faces(font)) {
        if (face.isSlanted() == shown->isSlanted() && face.width == shown->width)
            all.append(face.weight);
    }
    std::ranges::sort(all);
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

int FontManager::weight(const QFont &font)
{
    const auto shown = detail::shownFace(font);
    return shown ? shown->weight : font.weight();
}

bool FontManager::isSlanted(const QFont &font)
{
    const auto shown = detail::shownFace(font);
    return shown ? shown->isSlanted() : font.style() != QFont::StyleNormal;
}

} // namespace NS
