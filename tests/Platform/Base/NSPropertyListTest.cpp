// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSPropertyList.h>

#include <QDateTime>
#include <QTimeZone>
#include <gmock/gmock.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

QVariant list(const QByteArray &value)
{
    return NS::propertyListFromXML(
            R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Example//DTD PLIST 1.0//EN" "http://example.org/PropertyList-1.0.dtd">
<plist version="1.0">)"
            + value + "</plist>\n");
}

} // namespace

TEST(PropertyList, every_type_is_read)
{
    const std::pair<const char *, QVariant> rows[] = {
        { "<string>Fish &amp; Chips &#x2014; na\u00efve</string>",
          u"Fish & Chips \u2014 na\u00efve"_s },
        { "<string><![CDATA[<b>]]></string>", u"<b>"_s },
        { "<string/>", u""_s },
        { "<integer>-12</integer>", -12ll },
        { "<integer> 0x1F </integer>", 31ll },
        { "<integer>18446744073709551615</integer>", std::numeric_limits<qulonglong>::max() },
        { "<real>6.02e23</real>", 6.02e23 },
        { "<true/>", true },
        { "<false></false>", false },
        { "<date>2026-11-24T20:00:00Z</date>",
          QDateTime({ 2026, 11, 24 }, { 20, 0 }, QTimeZone::utc()) },
        { "<data>\n SGVs\n bG8=\n</data>", QByteArray("Hello") },
        { "<array><true/><!-- no --><array/></array>",
          QVariantList { true, QVariant(QVariantList()) } },
        { "<dict><key>a</key><integer>1</integer> <key></key><dict/></dict>",
          QVariantMap { { u"a"_s, 1ll }, { u""_s, QVariantMap() } } },
    };
    for (const auto &[xml, expected] : rows) {
        const QVariant value = list(xml);
        EXPECT_EQ(value, expected) << xml;
        EXPECT_EQ(value.metaType(), expected.metaType()) << xml;
    }
}

TEST(PropertyList, what_is_malformed_is_an_error_that_names_line_and_column)
{
    const struct
    {
        const char *xml; // inside <plist>
        int line;
        int column;
        const char *message;
    } rows[] = {
        { "\n  <integer>1.5</integer>", 2, 3, "\"1.5\" is not an integer" },
        { "\n  <integer></integer>", 2, 3, "not an integer" },
        { "<integer>18446744073709551616</integer>", 1, 8, "not an integer" },
        { "<real>x</real>", 1, 8, "not a number" },
        { "<date>yesterday</date>", 1, 8, "not a date" },
        { "<data>SGV*</data>", 1, 8, "not Base64" },
        { "<true>1</true>", 1, 8, "must be empty" },
        { "<text>x</text>", 1, 8, "no type \"text\"" },
        { "<dict>\n<string>x</string></dict>", 2, 1, "<key> is missing" },
        { "<dict>\n<key>x</key>\n</dict>", 2, 1, "\"x\" has no value" },
        { "<dict><key>x</key>\n<key>y</key><true/></dict>", 2, 1, "\"x\" has no value" },
        { "<dict><key>x</key><true/>\n <key>x</key><true/></dict>", 2, 2, "\"x\" occurs twice" },
        { "<string>a</string>\n<string>b</string>", 2, 1, "second value" },
        { "<dict>text</dict>", 1, 14, "text between" },
        { "<string>a</strong>", 1, 26, "" },
        { "<string>a &copyright; b</string>", 1, 29, "" },
        { "", 1, 1, "is empty" },
    };
    for (const auto &row : rows) {
        try {
            NS::propertyListFromXML(QByteArray("<plist>").append(row.xml).append("</plist>"),
                                    u"/etc/Info.plist"_s);
            ADD_FAILURE() << row.xml;
        } catch (const NS::PropertyListError &error) {
            EXPECT_EQ(error.line(), row.line) << error.what();
            EXPECT_EQ(error.column(), row.column) << error.what();
            EXPECT_EQ(error.file(), u"/etc/Info.plist"_s);
            EXPECT_THAT(error.what(), ::testing::StartsWith("Info.plist:"));
            EXPECT_THAT(error.what(), ::testing::HasSubstr(row.message));
        }
    }
}

TEST(PropertyList, what_is_no_property_list_at_all_is_an_error_too)
{
    const QByteArray deep = QByteArray("<array>").repeated(100000);
    const QByteArray texts[] = {
        "",
        "bplist00",
        "<svg/>",
        "<plist>",
        "<plist><string>a</string></plist><more/>",
        "<plist><string>\xff\xfe</string></plist>",
        "<plist>" + deep,
    };
    for (const QByteArray &text : texts)
        EXPECT_THROW(NS::propertyListFromXML(text), NS::PropertyListError)
                << text.left(40).constData();
}
