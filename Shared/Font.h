// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QFont>

/// @file
/// Fonts that differ from another in one respect. They have faces that the family really has, by
/// the rules of NS::FontManager. If there is no such face, the font is returned unchanged. Needs a
/// QGuiApplication; any thread.
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
/// The face nearest to Regular. A font up to Medium is not bold and is returned unchanged.
PELLARVINE_EXPORT QFont nonBoldVariant(const QFont &font);
/// The upright face of the same weight.
PELLARVINE_EXPORT QFont nonItalicVariant(const QFont &font);

/// One point smaller. A font of one point or less is returned unchanged.
PELLARVINE_EXPORT QFont smaller(const QFont &font);

/// One point larger, without a limit.
PELLARVINE_EXPORT QFont larger(const QFont &font);

/// One step up the weights of the family. From Regular this is Medium if there is one, while
/// `boldVariant` skips to Bold.
PELLARVINE_EXPORT QFont heavier(const QFont &font);

/// One step down the weights of the family.
PELLARVINE_EXPORT QFont lighter(const QFont &font);

/// The font at `size` points. Unchanged if `size` is not finite or not above zero.
PELLARVINE_EXPORT QFont withSize(const QFont &font, double size);

} // namespace Pellarvine
