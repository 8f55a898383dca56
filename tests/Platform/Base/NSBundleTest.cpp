// SPDX-License-Identifier: MIT
#include "ResourceFile.h"

#include <pellarvine/Platform/NSBundle.h>

#include <QGuiApplication>
#include <QScopeGuard>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
    try {
        NS::Bundle::main().infoDictionary();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const NS::PropertyListError &error) {
        EXPECT_STREQ(error.what(), "Info.plist:2:8: the key \"CFBundleName\" has no value");
    }
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(fact("CFBundleName"), QCoreApplication::applicationName());
    EXPECT_FALSE(fact("NSHumanReadableCopyright").isValid());
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Warning: Info.plist:2:8: the key \"CFBundleName\" has no value\n");
}

TEST(Bundle, a_property_list_that_is_no_dictionary_is_an_error)
{
    const ResourceFile file(plist, "<plist><array/></plist>");
    EXPECT_THROW(NS::Bundle::main().infoDictionary(), NS::PropertyListError);
}
