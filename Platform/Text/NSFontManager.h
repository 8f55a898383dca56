// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QFont>
#include <QList>

namespace NS {

/// A trait of a font.
enum class FontTraitMask : quint32 {
    italic = 0x1, ///< slanted
    bold = 0x2, ///< heavier than Medium
    unbold = 0x4, ///< Medium or lighter
    unitalic = 0x1000000, ///< upright
};

/// The direction in a family's weights.
enum class WeightDirection {
    lighter, ///< down
    heavier, ///< up
};

/// Finds related faces of a font that its family really has. Nothing is synthesised: if the family
/// has no such face, and at either end of its weights, the font is returned unchanged.
///
///     QFont font(u"Inter"_s, 12);
///     font = NS::FontManager::convertToHaveTrait(font, NS::FontTraitMask::bold);
///     font = NS::FontManager::convertWeight(font, NS::WeightDirection::heavier); // Extra Bold
///     font = NS::FontManager::convertToSize(font, 14);
///
/// Slanted is italic or oblique, depending on the family. All other properties of the font are
/// kept, including its list of families and its width. Needs a QGuiApplication; any thread.
class PELLARVINE_EXPORT FontManager
{
public:
    FontManager() = delete; ///< it has no objects, only functions

    /// - `bold`: the face nearest to weight 700 that is heavier than 500; a font of 700 and more
    ///   is bold already.
    /// - `unbold`: the face nearest to weight 400 that is not heavier than 500.
    /// - `italic`, `unitalic`: the slanted or upright face of the same weight.
    static QFont convertToHaveTrait(const QFont &font, FontTraitMask trait);

    /// The next lighter or heavier face of the family with the same slant.
    static QFont convertWeight(const QFont &font, WeightDirection direction);

    /// The same font at `size` points. Unchanged if `size` is not finite or not above zero.
    static QFont convertToSize(const QFont &font, double size);

    /// The size in points, also of a font whose size is set in pixels.
    static double pointSize(const QFont &font);

    /// The weights that the family has with the font's slant and width, 1…1000, from light to
    /// heavy.
    static QList<int> weights(const QFont &font);

    /// The weight, 1…1000, of the face that is displayed. It can differ from the requested weight.
    static int weight(const QFont &font);
    /// The slant of the face that is displayed.
    static bool isSlanted(const QFont &font);
};

} // namespace NS
