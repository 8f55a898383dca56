// SPDX-License-Identifier: MIT
#include "Base/Translations.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

namespace Pellarvine {

bool installTranslations(const QLocale &locale)
{
    static QPointer<QTranslator> installed;
    delete installed;

    auto translator = std::make_unique<QTranslator>();
    const QStringList languages = locale.uiLanguages();
    for (const QString &language : languages) {
        // The sources' own language needs no catalogue, and comes before what is asked for after
        // it.
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
