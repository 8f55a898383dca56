// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QLocale>

namespace Pellarvine {

/// Lets the library speak the locale's language, as far as it knows it: Arabic, English,
/// French, German.
///
///     QApplication application(argc, argv);
///     Pellarvine::installTranslations();
///
/// To be called once there is an application object, which owns what is installed; a second call
/// takes the place of the first. False if the library does not know any language that the locale
/// asks for: its texts are English then. Main thread only.
PELLARVINE_EXPORT bool installTranslations(const QLocale &locale = QLocale());

} // namespace Pellarvine
