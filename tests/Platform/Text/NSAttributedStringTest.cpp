// SPDX-License-Identifier: MIT
#include "AttributedStringModel.h"
#include "Text/NSAttributedStringRewriter.h"

#include <pellarvine/Platform/NSAttributedString+Text.h>
#include <pellarvine/Platform/NSMutableAttributedString.h>

#include <QColor>
#include <QFont>
#include <QTextBlock>
#include <QTextDocument>
#include <QUrl>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace NS {

static_assert(std::is_nothrow_move_constructible_v<Attributes>);
static_assert(std::is_copy_constructible_v<AttributedString>);
static_assert(std::is_convertible_v<MutableAttributedString, AttributedString>);

namespace {

constexpr qsizetype farthest = std::numeric_limits<qsizetype>::max();

QString letters(std::mt19937 &random, qsizetype count)
{
    return QString(count, QChar(char16_t(u'a' + random() % 9)));
}

// Random attributes from few keys and values, so that runs are often equal.
Attributes someAttributes(std::mt19937 &random)
{
    Attributes attributes;
    while (random() % 3)
        attributes.insert(QString::number(random() % 3), int(random() % 2));
    return attributes;
}

QString runsOf(const AttributedString &text, const QString &key)
{
    QStringList parts;
    for (const auto &run : text.runs())
        parts.append(text.string().sliced(run.location, run.length) + u':'
                     + run.attributes.value(key).toString());
    return parts.join(u'|');
}

const Attributes bold { { u"weight"_s, u"bold"_s } };

} // namespace

TEST(Attributes, keep_the_last_value_of_a_key_and_compare_by_value)
{
    Attributes attributes { { u"b"_s, 1 }, { u"a"_s, 2 }, { u"b"_s, 3 } };
    EXPECT_EQ(attributes.size(), 2);
    EXPECT_EQ(attributes.value(u"b"_s), 3);
    EXPECT_FALSE(attributes.value(u"c"_s).isValid());
    const Attributes copy = attributes;
    EXPECT_TRUE(copy.isSharedWith(attributes));
    attributes.remove(u"b"_s);
    attributes.remove(u"b"_s);
    EXPECT_EQ(attributes, Attributes({ { u"a"_s, 2 } }));
    EXPECT_EQ(copy, Attributes({ { u"a"_s, 2 }, { u"b"_s, 3 } }));
}

TEST(AttributedString, an_empty_text_has_no_runs)
{
    EXPECT_TRUE(AttributedString().runs().isEmpty());
    EXPECT_EQ(AttributedString(QString(), bold), AttributedString());
}

TEST(AttributedString, ranges_outside_the_text_are_cut_to_it)
{
    const AttributedString text(u"abc"_s, bold);
    const std::tuple<qsizetype, qsizetype, QString> rows[] = {
        { 0, 3, u"abc"_s },
        { 1, farthest, u"bc"_s },
        { -2, 3, u"a"_s },
        { -2, 2, u""_s },
        { -farthest, farthest, u""_s },
        { 3, 1, u""_s },
        { farthest, 1, u""_s },
        { 1, -1, u""_s },
        { -farthest - 1, -farthest, u""_s },
    };
    for (const auto &[location, length, expected] : rows)
        EXPECT_EQ(text.attributedSubstring(location, length), AttributedString(expected, bold));
    EXPECT_TRUE(text.attributes(-1).isEmpty());
    EXPECT_TRUE(text.attributes(3).isEmpty());
    AttributedString::Run run { 1, 1, bold };
    EXPECT_FALSE(text.attributes(3, &run).contains(u"weight"_s));
    EXPECT_EQ(run, AttributedString::Run());
}

TEST(MutableAttributedString, random_edits_agree_with_one_set_of_attributes_for_each_unit)
{
    std::mt19937 random(20);
    for (int round = 0; round < 200; ++round) {
        MutableAttributedString text;
        AttributedStringModel model;
        for (int step = 0; step < 60; ++step) {
            const qsizetype location = qsizetype(random() % 40) - 4;
            const qsizetype length = qsizetype(random() % 12) - 1;
            const Attributes attributes = someAttributes(random);
            const QString key = QString::number(random() % 3);
            switch (random() % 7) {
            case 0:
            case 1: {
                const QString string = letters(random, qsizetype(random() % 5));
                text.replaceCharacters(location, length, AttributedString(string, attributes));
                model.replace(location, length, { string, { string.size(), attributes } });
                break;
            }
            case 2:
                if (text.length() < 200) {
                    text.append(text.attributedSubstring(location, length));
                    model.replace(farthest, 0, model.substring(location, length));
                }
                break;
            case 3:
                text.setAttributes(attributes, location, length);
                model.change(location, length, [&](Attributes &unit) { unit = attributes; });
                break;
            case 4:
                text.addAttributes(attributes, location, length);
                model.change(location, length, [&](Attributes &unit) { unit.insert(attributes); });
                break;
            case 5:
                text.removeAttribute(key, location, length);
                model.change(location, length, [&](Attributes &unit) { unit.remove(key); });
                break;
            case 6:
                text = text.attributedSubstring(location - 8, length + 30);
                model = model.substring(location - 8, length + 30);
                break;
            }
            ASSERT_EQ(difference(text, model), "") << "round " << round << " step " << step;
        }
    }
}

TEST(MutableAttributedString, a_rewriter_agrees_with_edits_one_by_one)
{
    std::mt19937 random(21);
    for (int round = 0; round < 2000; ++round) {
        MutableAttributedString text;
        for (int i = 0; i < 8; ++i)
            text.append(AttributedString(letters(random, qsizetype(1 + random() % 4)),
                                         someAttributes(random)));
        MutableAttributedString edited = text;
        const AttributedString before = text;
        // This copy must not change.
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const AttributedString snapshot = before;

        detail::AttributedStringRewriter rewriter(text);
        qsizetype shift = 0;
        for (qsizetype place = 0; place < before.length();) {
            const qsizetype end = std::min(place + qsizetype(random() % 6), before.length());
            EXPECT_EQ(rewriter.source().sliced(place), before.string().sliced(place));
            switch (random() % 3) {
            case 0:
                rewriter.keep(end);
                break;
            case 1:
                rewriter.drop(end);
                edited.replaceCharacters(place - shift, end - place, AttributedString());
                shift += end - place;
                break;
            case 2: {
                const Attributes added = someAttributes(random);
                rewriter.keep(end, added);
                edited.addAttributes(added, place - shift, end - place);
                break;
            }
            }
            place = end;
            if (random() % 16 == 0)
                break;
        }
        rewriter.finish();
        ASSERT_EQ(text, edited) << "round " << round;
        ASSERT_EQ(before, snapshot);
    }
}

TEST(MutableAttributedString, can_be_given_itself)
{
    MutableAttributedString text(u"ab"_s, bold);
    text.append(AttributedString(u"c"_s));
    text.append(text);
    EXPECT_EQ(runsOf(text, u"weight"_s), u"ab:bold|c:|ab:bold|c:"_s);
    text.replaceCharacters(1, 4, text);
    EXPECT_EQ(runsOf(text, u"weight"_s), u"aab:bold|c:|ab:bold|cc:"_s);
}

TEST(MutableAttributedString, plain_text_takes_the_attributes_of_its_place)
{
    MutableAttributedString text(u"ab"_s, bold);
    text.append(AttributedString(u"cd"_s));
    const auto replaced = [&](qsizetype location, qsizetype length) {
        MutableAttributedString copy = text;
        copy.replaceCharacters(location, length, u"-"_s);
        return runsOf(copy, u"weight"_s);
    };
    EXPECT_EQ(replaced(0, 0), u"-ab:bold|cd:"_s);
    EXPECT_EQ(replaced(2, 0), u"ab-:bold|cd:"_s);
    EXPECT_EQ(replaced(1, 2), u"a-:bold|d:"_s);
    EXPECT_EQ(replaced(9, 9), u"ab:bold|cd-:"_s);
    MutableAttributedString empty;
    empty.replaceCharacters(5, 5, u"x"_s);
    EXPECT_EQ(empty, AttributedString(u"x"_s));
}

TEST(MutableAttributedString, runs_that_get_the_same_attributes_share_them)
{
    MutableAttributedString text(u"abcdef"_s);
    text.addAttributes({ { u"size"_s, 9 } }, 2, 2);
    text.addAttributes(bold, 0, 6);
    ASSERT_EQ(text.runs().size(), 3);
    EXPECT_TRUE(text.runs().at(0).attributes.isSharedWith(text.runs().at(2).attributes));
}

TEST(AttributedStringText, becomes_formats_of_a_layout)
{
    QFont font(u"Inter"_s, 20);
    font.setItalic(true);
    MutableAttributedString text(u"ab"_s, { { FontAttributeName, font } });
    text.append(AttributedString(u"cd"_s, { { ForegroundColorAttributeName, QColor(Qt::red) },
                                            { BackgroundColorAttributeName, u"nonsense"_s },
                                            { UnderlineStyleAttributeName, 1 },
                                            { StrikethroughStyleAttributeName, 1 },
                                            { KernAttributeName, 1.5 } }));
    const auto formats = layoutFormats(text);
    ASSERT_EQ(formats.size(), 2);
    EXPECT_EQ(formats.at(0).format.font(), font);
    const QTextLayout::FormatRange &second = formats.at(1);
    EXPECT_EQ(second.start, 2);
    EXPECT_EQ(second.length, 2);
    EXPECT_EQ(second.format.foreground().color(), QColor(Qt::red));
    EXPECT_FALSE(second.format.hasProperty(QTextFormat::BackgroundBrush));
    EXPECT_TRUE(second.format.fontUnderline());
    EXPECT_TRUE(second.format.fontStrikeOut());
    EXPECT_EQ(second.format.fontLetterSpacing(), 1.5);
}

TEST(AttributedStringText, extreme_kerning_is_not_passed_to_the_layout)
{
    const auto spacing = [](double kern) {
        return charFormat({ { KernAttributeName, kern } }).fontLetterSpacing();
    };
    EXPECT_EQ(spacing(std::numeric_limits<double>::quiet_NaN()), 0.0);
    EXPECT_EQ(spacing(-std::numeric_limits<double>::infinity()), 0.0);
    EXPECT_EQ(spacing(1e300), 65536.0);
}

TEST(AttributedStringText, fills_a_document_paragraph_by_paragraph)
{
    const ParagraphStyle centred { .alignment = Qt::AlignHCenter, .paragraphSpacing = 4.0 };
    const Attributes style { { ParagraphStyleAttributeName, QVariant::fromValue(centred) } };
    MutableAttributedString text(u"one\ntw"_s, style);
    text.append(AttributedString(u"o\nthree"_s, { { UnderlineStyleAttributeName, 1 } }));
    QTextDocument document(u"old"_s);
    setDocumentText(document, text);
    EXPECT_EQ(document.toPlainText(), u"one\ntwo\nthree"_s);
    const auto alignment = [&](int block) {
        return document.findBlockByNumber(block).blockFormat().alignment();
    };
    EXPECT_EQ(alignment(0), Qt::AlignHCenter);
    EXPECT_EQ(alignment(1), Qt::AlignHCenter);
    EXPECT_EQ(alignment(2), QTextBlockFormat().alignment());
    EXPECT_EQ(document.firstBlock().blockFormat().bottomMargin(), 4.0);
    setDocumentText(document, AttributedString());
    EXPECT_EQ(document.toPlainText(), QString());
}

TEST(AttributedStringText, html_carries_styles_and_escapes_what_is_not_markup)
{
    QFont font(u"O'Neill \"Sans\""_s, 12, QFont::Bold);
    MutableAttributedString text(u"a<b & \"c\""_s);
    text.append(AttributedString(u"x"_s, { { FontAttributeName, font },
                                           { ForegroundColorAttributeName, QColor(255, 0, 0, 128) },
                                           { UnderlineStyleAttributeName, 1 },
                                           { StrikethroughStyleAttributeName, 1 },
                                           { KernAttributeName, 2.0 } }));
    EXPECT_EQ(html(text),
              u"a&lt;b &amp; &quot;c&quot;<span style=\"font-family:'ONeill Sans';font-size:12pt;"
              "font-weight:700;color:rgba(255,0,0,0.502);text-decoration:underline line-through;"
              "letter-spacing:2px\">x</span>"_s);
    // The names of generic families are keywords. In quotes, they would be the names of fonts.
    const std::pair<QString, QString> families[] = {
        { u"monospace"_s, u"monospace"_s },
        { u"Sans-Serif"_s, u"sans-serif"_s },
        { u"Sans Serif"_s, u"sans-serif"_s },
        { u"Monospace 821"_s, u"'Monospace 821'"_s },
    };
    for (const auto &[family, css] : families) {
        const QString styled =
                html(AttributedString(u"x"_s, { { FontAttributeName, QFont(family, 12) } }));
        EXPECT_TRUE(styled.startsWith(u"<span style=\"font-family:"_s + css + u';'))
                << styled.toStdString();
    }
    const NS::Attributes link { { LinkAttributeName, QUrl(u"https://a.org/b c?d&\"e\""_s) },
                                { UnderlineStyleAttributeName, 1 } };
    EXPECT_EQ(html(AttributedString(u"x"_s, link)),
              u"<a href=\"https://a.org/b%20c?d&amp;%22e%22\" style=\"text-decoration:underline\">x"
              "</a>"_s);
    const QString broken = QString(QChar(0)) + QChar(0xD83D) + u"🎈"_s + QChar(0xDC00);
    EXPECT_EQ(html(AttributedString(broken)), u"\uFFFD\uFFFD🎈\uFFFD"_s);
    QTextDocument document;
    document.setHtml(html(text));
    EXPECT_EQ(document.toPlainText(), text.string());
}

} // namespace NS
