// SPDX-License-Identifier: MIT
#include "ResourceFile.h"

#include <pellarvine/Platform/NSBundle.h>

#include <QGuiApplication>
#include <QScopeGuard>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace {

const QString plist = u":/Info.plist"_s;

QVariant fact(const char *key)
{
    return NS::Bundle::main().objectForInfoDictionaryKey(QString::fromLatin1(key));
}

} // namespace

TEST(Bundle, without_a_property_list_it_knows_what_the_program_has_told_Qt)
{
    const QString name = QCoreApplication::applicationName();
    const auto restore = qScopeGuard([&] {
        QCoreApplication::setApplicationName(name);
        QCoreApplication::setApplicationVersion({});
        QCoreApplication::setOrganizationDomain({});
        QGuiApplication::setApplicationDisplayName({});
    });
    EXPECT_EQ(NS::Bundle::main().infoDictionaryPath(), QString());
    EXPECT_FALSE(fact("CFBundleShortVersionString").isValid());
    EXPECT_TRUE(NS::Bundle::main().bundleIdentifier().isNull());

    QCoreApplication::setApplicationName(u"mail"_s);
    QCoreApplication::setApplicationVersion(u"2.1"_s);
    QCoreApplication::setOrganizationDomain(u"lab.example.org"_s);
    QGuiApplication::setApplicationDisplayName(u"Mail"_s);
    EXPECT_EQ(fact("CFBundleName"), u"mail"_s);
    EXPECT_EQ(fact("CFBundleDisplayName"), u"Mail"_s);
    EXPECT_EQ(fact("CFBundleShortVersionString"), u"2.1"_s);
    EXPECT_EQ(NS::Bundle::main().bundleIdentifier(), u"org.example.lab.mail"_s);
}

TEST(Bundle, a_property_list_has_the_only_word_and_is_read_afresh)
{
    QCoreApplication::setApplicationVersion(u"2.1"_s);
    const auto restore = qScopeGuard([] { QCoreApplication::setApplicationVersion({}); });
    {
        const ResourceFile file(plist, "<plist><dict><key>CFBundleName</key><string>Post</string>"
                                       "<key>CFBundleIdentifier</key><integer>1</integer></dict>"
                                       "</plist>");
        EXPECT_EQ(NS::Bundle::main().infoDictionaryPath(), plist);
        EXPECT_EQ(fact("CFBundleName"), u"Post"_s);
        EXPECT_FALSE(fact("CFBundleShortVersionString").isValid());
        EXPECT_TRUE(NS::Bundle::main().bundleIdentifier().isNull());
    }
    const ResourceFile file(plist, "<plist><dict><key>CFBundleName</key><string>Mail</string>"
                                   "<key>CFBundleIdentifier</key><string>org.example.post</string>"
                                   "</dict></plist>");
    EXPECT_EQ(fact("CFBundleName"), u"Mail"_s);
    EXPECT_EQ(NS::Bundle::main().bundleIdentifier(), u"org.example.post"_s);
    EXPECT_EQ(NS::Bundle::main().infoDictionary().size(), 2);
}

TEST(Bundle, a_malformed_property_list_is_an_error_and_for_facts_one_warning)
{
    const ResourceFile file(plist, "<plist>\n <dict><key>CFBundleName</key></dict></plist>");
    EXPECT_THAT([] { NS::Bundle::main().infoDictionary(); },
                testing::ThrowsMessage<NS::PropertyListError>(
                        "Info.plist:2:8: the key \"CFBundleName\" has no value"));
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(fact("CFBundleName"), QCoreApplication::applicationName());
    EXPECT_FALSE(fact("NSHumanReadableCopyright").isValid());
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Warning: Info.plist:2:8: the key \"CFBundleName\" has no value\n");
    const ResourceFile list(plist, "<plist><array/></plist>"); // not a dictionary
    EXPECT_THROW(NS::Bundle::main().infoDictionary(), NS::PropertyListError);
}

TEST(Bundle, metainfo_is_read_in_the_users_language_and_faults_are_named)
{
    const ResourceFile list(plist, "<plist><dict><key>CFBundleIdentifier</key>"
                                   "<string>org.example.mail</string></dict></plist>");
    const QString path = u":/org.example.mail.metainfo.xml"_s;
    EXPECT_EQ(NS::Bundle::main().metainfo(), NS::Metainfo());
    EXPECT_EQ(NS::Bundle::main().metainfoPath(), QString());
    const auto restore = qScopeGuard([] { QLocale::setDefault(QLocale::system()); });
    const ResourceFile file(path, R"(<?xml version="1.0"?><!-- notes --><component type="x">
<id>org.example.mail</id><project_license> MIT </project_license><future><new/></future>
<developer_name xml:lang="fr">Ada et Cie</developer_name><developer_name>Ada</developer_name>
<url type="homepage">https://mail.example/</url>
<releases><release version="2" timestamp="1793577600"><description>
<p>Faster, <em>much</em>
  faster</p><p xml:lang="de">Schneller</p><p xml:lang="de_AT">Flotter</p>
<ul><li>One</li><li xml:lang="de">Eins</li></ul></description><issues/></release>
<release version="1" date="2026-01-31T10:00:00Z"/></releases>
<custom><value key="a">1
2</value></custom></component>)");
    const std::tuple<QString, QString, QString> rows[] = {
        { u"C"_s, u"Ada"_s, u"Faster, much faster\n• One"_s },
        { u"de_DE"_s, u"Ada"_s, u"Schneller\n• Eins"_s },
        { u"de_AT"_s, u"Ada"_s, u"Flotter\n• Eins"_s },
        { u"fr_FR"_s, u"Ada et Cie"_s, u"Faster, much faster\n• One"_s },
    };
    for (const auto &[locale, developer, description] : rows) {
        QLocale::setDefault(QLocale(locale));
        const NS::Metainfo metainfo = NS::Bundle::main().metainfo();
        const NS::Metainfo expected { u"MIT"_s,
                                      developer,
                                      { { u"homepage"_s, QUrl(u"https://mail.example/"_s) } },
                                      { { u"2"_s, QDate(2026, 11, 2), description },
                                        { u"1"_s, QDate(2026, 1, 31), {} } },
                                      { { u"a"_s, u"1\n2"_s } } };
        EXPECT_EQ(metainfo.releases.value(0).description.toStdString(), description.toStdString());
        EXPECT_EQ(metainfo, expected) << locale.toStdString();
        EXPECT_EQ(NS::Bundle::main().metainfoPath(), path);
    }
}

TEST(Bundle, a_metainfo_file_with_a_fault_is_warned_about_once)
{
    const ResourceFile list(plist, "<plist><dict><key>CFBundleIdentifier</key>"
                                   "<string>org.example.mail</string></dict></plist>");
    const std::pair<QByteArray, std::string> rows[] = {
        { "<component><id></component>", "Warning: org.example.mail.metainfo.xml:1:28: " },
        { "<components/>", "this is not a metainfo file" },
        { "", "metainfo.xml:1:1: " },
    };
    for (const auto &[xml, warning] : rows) {
        const ResourceFile file(u":/org.example.mail.metainfo.xml"_s, xml);
        testing::internal::CaptureStdout();
        EXPECT_EQ(NS::Bundle::main().metainfo(), NS::Metainfo());
        EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::HasSubstr(warning));
        testing::internal::CaptureStdout();
        EXPECT_EQ(NS::Bundle::main().metainfo(), NS::Metainfo());
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    }
}
