// SPDX-License-Identifier: MIT
#include "Base/Translations.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

// As in Qt's own catalogues: QGuiApplication takes its layout direction from this text.
[[maybe_unused]] constexpr const char *layoutDirection =
        QT_TRANSLATE_NOOP("QGuiApplication", "QT_LAYOUT_DIRECTION");

} // namespace

bool installTranslations(const QLocale &locale)
{
    static QPointer<QTranslator> installed;
    delete installed;

    auto translator = std::make_unique<QTranslator>();
    const QStringList languages = locale.uiLanguages();
    for (const QString &language : languages) {
        // English needs no catalogue. It precedes the languages that come after it in the user's
        // list.
        if (QLocale(language).language() == QLocale::English)
            return true;
        if (translator->load(QLocale(language), u"pellarvine"_s, u"_"_s, u":/pellarvine"_s)) {
            installed = translator.release();
            installed->setParent(QCoreApplication::instance());
            return QCoreApplication::installTranslator(installed);
        }
    }
    return false;
}

} // namespace Pellarvine
