// SPDX-License-Identifier: MIT
#include "Shared/DelimiterPattern.h"

#include "../support/LiteralMarkup.h"
#include "Shared/GraphemeClusters.h"
#include "Shared/InlineParsers.h"
#include "Shared/RegularExpression.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// Patterns of the two shapes. Their delimiters overlap themselves or each other, are prefixes of
// each other, quoted, repeated, letters, or not ASCII.
const QString ofBothShapes[] = {
    u"(<)(.+?)(>)"_s,           u"(\\[\\[)(.+?)(\\]\\])"_s,
    u"(ab)(.+?)(ba)"_s,         u"(a{3})(.+?)(a)(.+?)(aa)"_s,
    u"(a)(.+?)(a)(.+?)(a)"_s,   u"(ab{2})(.+?)(bb)(.+?)(\\-a)"_s,
    u"(\\|\\|)(.+?)(\\|\\|)"_s, u"(#)(.+?)( )(.+?)(\\#)"_s,
    u"(„)(.+?)(“)"_s,
};

const QStringList ofOtherShapes =
        u"(a)(.*?)(a) (a)(.+)(a) (a+)(.+?)(a) (a.)(.+?)(a) (a|b)(.+?)(a) ([ab])(.+?)(a) "
        "(a)(.+?)(a)x (a)(.+?) (a)(.+?)(a)(.+?) (a)(.+?)(a)(.+?)(a)(.+?)(a) ()(.+?)(a) "
        "(a)(.+?)() (\\w)(.+?)(a) (a{2,3})(.+?)(a) (a{0})(.+?)(a) (a{2}?)(.+?)(a) "
        "(a{)(.+?)(a) (a{99})(.+?)(a) (?:a)(.+?)(a) (^)(.+?)(a) (\n)(.+?)(a) (a)(.+?)(\\"_s.split(
                u' ');

// Few different units, so that delimiters are frequent; also line ends and surrogates.
QString randomText(std::mt19937 &random, const QString &delimiters)
{
    const QString others = delimiters + delimiters
                           + QString::fromUtf16(u"ab|}\n\u000b\u2028\r\0é\u0301", 11)
                           + QChar(0xD83C) + QChar(0xDF88) + QChar(0x200D);
    QString text;
    const int length = int(random() % 40);
    for (int i = 0; i < length; ++i)
        text += others.at(qsizetype(random()) % others.size());
    return text;
}

} // namespace

TEST(DelimiterPattern, takes_the_nine_rules_and_their_like)
{
    for (const auto &rule : inlineParsers())
        EXPECT_TRUE(DelimiterPattern::recognized(rule->regex())) << rule->regex().toStdString();
    for (const QString &pattern : ofBothShapes)
        EXPECT_TRUE(DelimiterPattern::recognized(pattern)) << pattern.toStdString();
}

TEST(DelimiterPattern, leaves_every_other_pattern_to_the_compiler)
{
    for (const QString &pattern : ofOtherShapes + QStringList(QString()))
        EXPECT_FALSE(DelimiterPattern::recognized(pattern)) << pattern.toStdString();
}

TEST(DelimiterPattern, finds_what_a_regular_expression_finds)
{
    QStringList patterns(std::begin(ofBothShapes), std::end(ofBothShapes));
    for (const auto &rule : inlineParsers())
        patterns.append(rule->regex());
    std::mt19937 random(2);
    int matches = 0;
    for (int round = 0; round < 2000; ++round) {
        for (const QString &pattern : patterns) {
            QString delimiters = pattern;
            delimiters.remove(u"(.+?)"_s).remove(u"\\"_s).remove(u"{2}"_s);
            delimiters.remove(u'(').remove(u')');
            const QString text = randomText(random, delimiters);
            const qsizetype size = text.size();
            const qsizetype length = random() % 4 ? size : qsizetype(random()) % (size + 1);
            const auto delimited = DelimiterPattern::recognized(pattern);
            ASSERT_TRUE(delimited);
            RegularExpression expression(pattern, text, length);
            PatternMatch expected;
            PatternMatch found;
            qsizetype from = 0;
            while (expression.findNext(expected)) {
                ASSERT_TRUE(delimited->find(QStringView(text).first(length), from, found))
                        << pattern.toStdString() << " in " << text.toStdString();
                ASSERT_EQ(found, expected) << pattern.toStdString() << " in " << text.toStdString();
                from = found[0].end();
                ++matches;
            }
            ASSERT_FALSE(delimited->find(QStringView(text).first(length), from, found))
                    << pattern.toStdString() << " in " << text.toStdString();
        }
    }
    EXPECT_GT(matches, 4000);
}

TEST(DelimiterPattern, ends_lines_where_a_regular_expression_does)
{
    const QString pattern = u"(<)(.+?)(>)"_s;
    const auto delimited = DelimiterPattern::recognized(pattern);
    ASSERT_TRUE(delimited);
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        const QString text = u'<' + QString(QChar(unit)) + u'>';
        PatternMatch match;
        ASSERT_EQ(delimited->find(text, 0, match),
                  RegularExpression(pattern, text, text.size()).findNext(match))
                << unit;
    }
}

TEST(GraphemeClusters, are_as_many_as_in_a_count_of_the_whole_text)
{
    // Characters of each class that forms grapheme clusters: marks, joiners, emoji, flags, Hangul,
    // prefixed numbers, line ends, unpaired surrogates.
    const QString pieces[] = {
        u"a"_s,      u" "_s,      u"\r"_s,     u"\n"_s,       u"\r\n"_s,     u"\u0301"_s,
        u"\u200D"_s, u"👩"_s,      u"🎈"_s,      u"\u2764"_s,   u"\uFE0F"_s,   u"🏽"_s,
        u"🇩"_s,      u"🇪"_s,      u"\u1100"_s, u"\u1161"_s,   u"\u11A8"_s,   u"\uAC00"_s,
        u"\u0600"_s, u"\u0903"_s, u"\u0915"_s, u"\u094D"_s,   u"\u0E33"_s,   u"\u200B"_s,
        u"\u00AD"_s, u"\u2028"_s, u"漢"_s,     QChar(0xD800), QChar(0xDC00), QChar(0),
    };
    std::mt19937 random(3);
    for (int round = 0; round < 20000; ++round) {
        QString text;
        const int count = int(random() % 24);
        for (int i = 0; i < count; ++i) {
            text += pieces[random() % std::size(pieces)];
            if (random() % 12 == 0)
                text += QString(qsizetype(random() % 24), u'x');
        }
        ASSERT_EQ(GraphemeClusterCounter().count(text), LiteralMarkup::characterCount(text))
                << text.toStdString();
    }
}

} // namespace Pellarvine::detail
