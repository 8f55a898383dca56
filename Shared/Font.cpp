// SPDX-License-Identifier: MIT
#include "Shared/Font.h"

#include "Text/NSFontManager.h"

namespace Pellarvine {

using NS::FontManager;
using NS::FontTraitMask;
using NS::WeightDirection;

QFont boldVariant(const QFont &font)
{
    return FontManager::convertToHaveTrait(font, FontTraitMask::bold);
}

QFont italicVariant(const QFont &font)
{
    return FontManager::convertToHaveTrait(font, FontTraitMask::italic);
}

QFont nonBoldVariant(const QFont &font)
{
    return FontManager::convertToHaveTrait(font, FontTraitMask::unbold);
}

QFont nonItalicVariant(const QFont &font)
{
    return FontManager::convertToHaveTrait(font, FontTraitMask::unitalic);
}

QFont smaller(const QFont &font)
{
    return FontManager::convertToSize(font, FontManager::pointSize(font) - 1);
}

QFont larger(const QFont &font)
{
    return FontManager::convertToSize(font, FontManager::pointSize(font) + 1);
}

QFont heavier(const QFont &font)
{
    return FontManager::convertWeight(font, WeightDirection::heavier);
}

QFont lighter(const QFont &font)
{
    return FontManager::convertWeight(font, WeightDirection::lighter);
}

QFont withSize(const QFont &font, double size)
{
    return FontManager::convertToSize(font, size);
}

} // namespace Pellarvine
