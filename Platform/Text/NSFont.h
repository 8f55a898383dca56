// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QFont>

#include <optional>

/// @file
/// Fonts by name and by role. QFont silently shows another font for a name that the system lacks;
/// fontWithName() returns nothing.
///
///     const QFont body = NS::systemFont(NS::systemFontSize());
///     const auto display = NS::fontWithName(u"Inter-SemiBold"_s, 24);
///     label.setFont(display.value_or(NS::boldSystemFont(24)));
///
/// A size that is not above zero, or not finite, stands for `systemFontSize()`. The functions need
/// a QGuiApplication and can be called from any thread.

namespace NS {

/// The font of that name in points: a face by its PostScript name ("Inter-SemiBold") or full name
/// ("Inter Semi Bold Italic"), or a family's regular face ("Inter"). Case does not matter, white
/// space does. Nothing if there is no such font.
///
/// Some well-known names resolve to other fonts if the system lacks them: Menlo, Monaco, SF Mono
/// and Courier to the system's fixed-width font, Helvetica, Helvetica Neue and Lucida Grande to the
/// system font, and Times to its serif font. So do the PostScript names of their faces
/// ("Menlo-Bold"), and the generic names "monospace", "sans-serif" and "serif".
PELLARVINE_EXPORT std::optional<QFont> fontWithName(const QString &name, double size);

/// The font of the program's texts. Default: the desktop's font.
PELLARVINE_EXPORT QFont systemFont(double size);

/// The bold face of the system font. Qt synthesises it if the family has none.
PELLARVINE_EXPORT QFont boldSystemFont(double size);

/// The system's fixed-width font.
PELLARVINE_EXPORT QFont monospacedSystemFont(double size);

/// The size of the program's texts in points.
PELLARVINE_EXPORT double systemFontSize();

} // namespace NS
