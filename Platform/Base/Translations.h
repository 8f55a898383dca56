// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QLocale>

namespace Pellarvine {

/// Shows the library's texts in the locale's language. The library knows Arabic, English, French
/// and German. With Arabic, the program's windows run from right to left, unless it has called
/// QGuiApplication::setLayoutDirection(). The texts of Qt ("Cancel") are in Qt's own catalogue,
/// which the program installs: see docs/recipes/translate-theme-and-scale.md.
///
///     QApplication application(argc, argv);
///     Pellarvine::installTranslations();
///
/// Call it after the application object is made; that owns the translator. A second call replaces
/// the first. Returns false if the library knows none of the languages of the locale; its texts are
/// then English. Main thread only.
PELLARVINE_EXPORT bool installTranslations(const QLocale &locale = QLocale());

} // namespace Pellarvine
