// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QFont>
#include <QList>

namespace NS {

/// A property that a font is asked to have.
enum class FontTraitMask : quint32 {
    italic = 0x1, ///< slanted
    bold = 0x2, ///< heavier than Medium
    unbold = 0x4, ///< Medium or lighter
    unitalic = 0x1000000, ///< upright
};

/// Which way to go through a family's weights.
enum class WeightDirection {
    lighter, ///< down
    heavier, ///< up
};

/// Finds, for a font, the related face that its family really has. Nothing is synthesised: where
/// the family has no such face, and at either end of its weights, the font comes back unchanged.
///
///     QFont font(u"Inter"_s, 12);
///     font = NS::FontManager::convertToHaveTrait(font, NS::FontTraitMask::bold);
///     font = NS::FontManager::convertWeight(font, NS::WeightDirection::heavier); // Extra Bold
///     font = NS::FontManager::convertToSize(font, 14);
///
/// Slanted means italic or oblique, whichever the family has. All other properties of the font are
/// kept, its list of families and its width included. Needs a QGuiApplication; any thread.
class PELLARVINE_EXPORT FontManager
{
public:
    FontManager() = delete; ///< it has no objects, only functions

    /// - `bold`: the face nearest to weight 700 that is heavier than 500; a font of 700 and more
    ///   is bold already.
    /// - `unbold`: the face nearest to weight 400 that is not heavier than 500.
    /// - `italic`, `unitalic`: the slanted or upright face of the same weight.
    static QFont convertToHaveTrait(const QFont &font, FontTraitMask trait);

    /// One face up or down the weights that the family has, with the same slant.
    static QFont convertWeight(const QFont &font, WeightDirection direction);

    /// The same font at `size` points. A size that is not above zero, or not finite, is none: the
    /// font comes back unchanged.
    static QFont convertToSize(const QFont &font, double size);

    /// The size in points, of a font that was given its size in pixels too.
    static double pointSize(const QFont &font);

    /// The weights that the family has with the font's slant and width, 1…1000, from light to
    /// heavy.
    static QList<int> weights(const QFont &font);

    /// The weight, 1…1000, of the face that the font is shown in, which need not be the one that it
    /// asks for.
    static int weight(const QFont &font);
    /// The slant of the face that the font is shown in.
    static bool isSlanted(const QFont &font);
};

} // namespace NS
