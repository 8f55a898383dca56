// SPDX-License-Identifier: MIT
#include "Program.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryFile>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

Outcome runMarkup(const QByteArray &input, const QStringList &arguments = {})
{
    return runProgram(u"pellarvine"_s, QStringList { u"markup"_s } + arguments, input);
}

QJsonObject object(const QByteArray &json)
{
    QJsonParseError error;
    QJsonObject object = QJsonDocument::fromJson(json, &error).object();
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    return object;
}

QByteArray escapes(QByteArray output)
{
    return output.replace("\x1b", "^");
}

} // namespace

TEST(MarkupCommand, prints_the_text_and_its_runs)
{
    const Outcome result = runMarkup(
            "🎈 **b** {#f00|{bg#00ff0080|c}} __~~{k1.5|d}~~__ {font:Inter-SemiBold,20|e}    ");
    ASSERT_EQ(result.status, 0) << result.errors.toStdString();
    const QJsonObject text = object(result.output);
    EXPECT_EQ(text[u"string"_s], u"🎈 b c d e    "_s);
    const QJsonArray runs = text[u"runs"_s].toArray();
    ASSERT_EQ(runs.size(), 9);

    const QJsonObject base = runs.at(0).toObject();
    EXPECT_EQ(base.keys(),
              QStringList({ u"font"_s, u"foregroundColor"_s, u"length"_s, u"location"_s }));
    EXPECT_EQ(base[u"location"_s], 0);
    EXPECT_EQ(base[u"length"_s], 3);
    EXPECT_EQ(base[u"foregroundColor"_s], u"#000000FF"_s);
    const QJsonObject font = base[u"font"_s].toObject();
    EXPECT_EQ(font.keys(), QStringList({ u"family"_s, u"italic"_s, u"pointSize"_s, u"weight"_s }));
    EXPECT_EQ(font[u"italic"_s], false);

    EXPECT_GE(runs.at(1)[u"font"_s][u"weight"_s].toInt(), 700);
    EXPECT_EQ(runs.at(3)[u"foregroundColor"_s], u"#FF0000FF"_s);
    EXPECT_EQ(runs.at(3)[u"backgroundColor"_s], u"#00FF0080"_s);
    EXPECT_EQ(runs.at(5)[u"underlineStyle"_s], 1);
    EXPECT_EQ(runs.at(5)[u"strikethroughStyle"_s], 1);
    EXPECT_EQ(runs.at(5)[u"kern"_s], 1.5);
    EXPECT_EQ(runs.at(7)[u"font"_s][u"family"_s], u"Inter"_s);
    EXPECT_EQ(runs.at(7)[u"font"_s][u"pointSize"_s], 20);
    EXPECT_EQ(runs.at(7)[u"font"_s][u"weight"_s], 600);
}

TEST(MarkupCommand, takes_each_line_by_itself)
{
    // A line feed ends a line, with or without a carriage return, and the last line may lack it.
    const Outcome result = runMarkup("**a\n\nb** //c//\r\v\u2028d\n`e`", { u"--lines"_s });
    ASSERT_EQ(result.status, 0) << result.errors.toStdString();
    const QList<QByteArray> lines = result.output.split('\n');
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(object(lines.at(0))[u"string"_s], u"**a"_s);
    EXPECT_EQ(lines.at(1), "{\"string\":\"\",\"runs\":[]}");
    EXPECT_EQ(object(lines.at(2))[u"string"_s], u"b** c\r\v\u2028d"_s);
    EXPECT_EQ(object(lines.at(3))[u"string"_s], u"e"_s);
    EXPECT_EQ(lines.at(4), "");
    EXPECT_EQ(runMarkup("", { u"--lines"_s }).output, "");
    EXPECT_EQ(runMarkup("**a**\r\n\r\nb\r\nc\r", { u"--lines"_s, u"--html"_s }).output,
              runMarkup("**a**\n\nb\nc\r", { u"--lines"_s, u"--html"_s }).output);
    EXPECT_EQ(object(runMarkup("a\r\n", { u"--lines"_s }).output)[u"string"_s], u"a"_s);
    EXPECT_EQ(runMarkup("").output, lines.at(1) + '\n');
}

TEST(MarkupCommand, keeps_every_character_of_its_input)
{
    const QByteArray input = QByteArray("\xEF\xBB\xBF") + "a" + QByteArray(1, '\0') + "\xFF";
    EXPECT_EQ(object(runMarkup(input).output)[u"string"_s],
              QString(QChar(0xFEFF)) + u'a' + QChar(0) + QChar(0xFFFD));
}

TEST(MarkupCommand, shows_the_styles_in_a_terminal)
{
    EXPECT_EQ(escapes(runMarkup("a **b** __~~c~~__ {#f00|{bg#010203|d}} //e//", { u"--ansi"_s })
                              .output),
              "a ^[1mb^[0m ^[4;9mc^[0m ^[38;2;255;0;0;48;2;1;2;3md^[0m ^[3me^[0m\n");
    // Terminals have no opacity: a colour is blended with the background colour, or with black.
    EXPECT_EQ(escapes(runMarkup("{#ff000080|a}{#ff000080|{bg#fff|b}}{bg#ffffff80|c}{bg#fff0|d}",
                                { u"--ansi"_s })
                              .output),
              "^[38;2;128;0;0ma^[0m^[38;2;255;127;127;48;2;255;255;255mb^[0m"
              "^[48;2;128;128;128mc^[0md\n");
    // A sequence that clears the screen is not printed.
    EXPECT_EQ(runMarkup("\x1b[2J\r\n", { u"--ansi"_s }).output, "\uFFFD[2J\n");
}

TEST(MarkupCommand, prints_html)
{
    const QByteArray output = runMarkup("<{#f00|a}>", { u"--html"_s }).output;
    EXPECT_TRUE(output.contains(">&lt;</span>")) << output.toStdString();
    EXPECT_TRUE(output.contains("color:#ff0000\">a</span>")) << output.toStdString();
}

TEST(MarkupCommand, reads_a_file_and_says_what_is_wrong_with_its_arguments)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("**a**");
    file.close();
    EXPECT_EQ(object(runMarkup("", { file.fileName() }).output)[u"string"_s], u"a"_s);

    const Outcome missing = runMarkup("", { u"/no/such/file"_s });
    EXPECT_EQ(missing.status, 6);
    EXPECT_EQ(missing.output, "");
    EXPECT_TRUE(missing.errors.contains("pellarvine: /no/such/file: ")) << missing.errors.data();
    EXPECT_EQ(runMarkup("", { u"a"_s, u"b"_s }).status, 2);
    EXPECT_EQ(runMarkup("", { u"--html"_s, u"--ansi"_s }).status, 2);
}
