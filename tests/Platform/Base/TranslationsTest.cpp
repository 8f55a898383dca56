// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/Translations.h>

#include <QGuiApplication>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString say()
{
    return QGuiApplication::translate("Pellarvine::detail::URLSession",
                                      "The server did not answer in time.");
}

} // namespace

TEST(Translations, the_library_speaks_the_locales_language_or_else_english)
{
    EXPECT_TRUE(Pellarvine::installTranslations(QLocale(u"de_AT"_s)));
    EXPECT_EQ(say(), u"Der Server hat nicht rechtzeitig geantwortet."_s);
    EXPECT_TRUE(Pellarvine::installTranslations(QLocale(u"fr_CA"_s)));
    EXPECT_EQ(say(), u"Le serveur n’a pas répondu à temps."_s);
    EXPECT_TRUE(Pellarvine::installTranslations(QLocale(u"en_GB"_s)));
    EXPECT_EQ(say(), u"The server did not answer in time."_s);
    EXPECT_TRUE(Pellarvine::installTranslations(QLocale(u"fr_FR"_s)));
    EXPECT_FALSE(Pellarvine::installTranslations(QLocale(u"ja_JP"_s)));
    EXPECT_EQ(say(), u"The server did not answer in time."_s);
}

TEST(Translations, widgets_run_in_the_direction_of_the_librarys_texts)
{
    EXPECT_TRUE(Pellarvine::installTranslations(QLocale(u"ar_EG"_s)));
    EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::RightToLeft);
    EXPECT_TRUE(Pellarvine::installTranslations(QLocale(u"de_DE"_s)));
    EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::LeftToRight);
    EXPECT_TRUE(Pellarvine::installTranslations(QLocale(u"ar_EG"_s)));
    EXPECT_TRUE(Pellarvine::installTranslations(QLocale(u"en_GB"_s)));
    EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::LeftToRight);
}
