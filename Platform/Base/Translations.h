// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QLocale>

namespace Pellarvine {

/// Shows the library's texts in the locale's language. The library knows Arabic, English, French
/// and German.
///
///     QApplication application(argc, argv);
///     Pellarvine::installTranslations();
///
/// Call it after the application object is made; that owns the translator. A second call replaces
/// the first. Returns false if the library knows none of the languages of the locale; its texts are
/// then English. Main thread only.
PELLARVINE_EXPORT bool installTranslations(const QLocale &locale = QLocale());

} // namespace Pellarvine
