// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QFont>

/// @file
/// A font that differs from another in one respect. Faces are those that the family really has, by
/// the rules of NS::FontManager; where there is none, the font comes back unchanged.
///
///     using namespace Pellarvine;
///     const QFont body = label.font();
///     heading.setFont(heavier(larger(body)));
///     quotation.setFont(italicVariant(body));
///     caption.setFont(withSize(body, 9));

namespace Pellarvine {

/// The family's bold face; a font of weight 700 and more is bold already.
PELLARVINE_EXPORT QFont boldVariant(const QFont &font);
/// The slanted face of the same weight.
PELLARVINE_EXPORT QFont italicVariant(const QFont &font);
/// The face nearest to Regular; a font up to Medium is not bold and comes back unchanged.
PELLARVINE_EXPORT QFont nonBoldVariant(const QFont &font);
/// The upright face of the same weight.
PELLARVINE_EXPORT QFont nonItalicVariant(const QFont &font);

/// One point smaller. There is nothing below one point: such a font comes back unchanged.
PELLARVINE_EXPORT QFont smaller(const QFont &font);

/// One point larger.
PELLARVINE_EXPORT QFont larger(const QFont &font);

/// One step up the family's weights: from Regular to Medium where there is a Medium, where
/// `boldVariant` jumps to Bold.
PELLARVINE_EXPORT QFont heavier(const QFont &font);

/// One step down the family's weights.
PELLARVINE_EXPORT QFont lighter(const QFont &font);

/// The font at `size` points; unchanged for a size that is not above zero, or not finite.
PELLARVINE_EXPORT QFont withSize(const QFont &font, double size);

} // namespace Pellarvine
