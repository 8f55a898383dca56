// SPDX-License-Identifier: MIT
#include "../support/LiteralMarkup.h"

#include <pellarvine/Platform/NSFont.h>
#include <pellarvine/Platform/NSFontManager.h>
#include <pellarvine/Shared/Font.h>
#include <pellarvine/Shared/MarkupParser.h>
#include <pellarvine/Shared/NSColor+Color.h>
#include <pellarvine/Shared/Parser.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

// Four fonts that differ clearly.
MarkupParser parser()
{
    return { QFont(u"Base"_s, 10), QFont(u"Bold"_s, 10), QFont(u"Italic"_s, 10),
             QFont(u"Mono"_s, 10) };
}

QString named(const QVariant &value)
{
    if (value.typeId() == qMetaTypeId<QFont>()) {
        const QFont font = value.value<QFont>();
        return font.family() == "Base"_L1 ? QString() : font.family().first(1);
    }
    if (value.typeId() == qMetaTypeId<NS::Color>())
        return hexStringWithAlpha(value.value<NS::Color>());
    return value.toString();
}

// A run of "text" with styles is "[styles:text]", one without is "text". Styles: B, I and M for the
// font, u and s for the lines, fg, bg and k with their values.
QString described(const NS::AttributedString &text)
{
    QString result;
    for (const auto &run : text.runs()) {
        QString styles = named(run.attributes.value(NS::FontAttributeName));
        const auto add = [&](const QString &mark, const QString &key, const QString &normal) {
            const QString value = named(run.attributes.value(key));
            if (value != normal)
                styles += mark + (value == "1"_L1 ? QString() : value);
        };
        add(u"u"_s, NS::UnderlineStyleAttributeName, {});
        add(u"s"_s, NS::StrikethroughStyleAttributeName, {});
        add(u"fg"_s, NS::ForegroundColorAttributeName, u"#000000FF"_s);
        add(u"bg"_s, NS::BackgroundColorAttributeName, {});
        add(u"k"_s, NS::KernAttributeName, {});
        const QString content = text.string().sliced(run.location, run.length);
        result += styles.isEmpty() ? content : u'[' + styles + u':' + content + u']';
    }
    return result;
}

QString parsed(const QString &markup)
{
    return described(parser().parse(markup));
}

struct Row
{
    QString markup;
    QString expected;
};

void check(std::initializer_list<Row> rows)
{
    for (const auto &[markup, expected] : rows)
        EXPECT_EQ(parsed(markup), expected) << markup.toStdString();
}

double kern(const QString &argument)
{
    // The trailing space is for arguments with fewer characters than UTF-16 units.
    const auto text = parser().parse(u"{k"_s + argument + u"|x} "_s);
    EXPECT_EQ(text.string(), u"x "_s);
    return text.attribute(NS::KernAttributeName, 0).toDouble();
}

// A rule of the program, with a pattern that needs ICU.
class HostRule : public Parser
{
public:
    HostRule(const QString &regex, int group)
        : m_regex(regex)
        , m_group(group)
    { }
    QString regex() const override { return m_regex; }
    int principalCaptureGroup() const override { return m_group; }
    NS::Attributes provideAttributes(const QStringList &captures,
                                     const MarkupParser &) const override
    {
        return { { u"captures"_s, captures.join(u';') } };
    }

private:
    QString m_regex;
    int m_group;
};

QString hostParsed(const QString &regex, int group, const QString &markup)
{
    MarkupParser host = parser();
    host.setParsers({ std::make_shared<HostRule>(regex, group) });
    QString result;
    const auto text = host.parse(markup);
    for (const auto &run : text.runs()) {
        const QVariant captures = run.attributes.value(u"captures"_s);
        const QString content = text.string().sliced(run.location, run.length);
        result += captures.isValid() ? u'[' + captures.toString() + u':' + content + u']' : content;
    }
    return result;
}

// Nested constructs and pieces of them. Some pieces are repeated many times.
QString randomMarkup(std::mt19937 &random, int depth)
{
    static const QString pieces[] = {
        u"**"_s,     u"//"_s,   u"__"_s, u"~~"_s,  u"`"_s,   u"{#"_s, u"{bg#"_s, u"{k"_s,
        u"{font:"_s, u"|"_s,    u"}"_s,  u"*"_s,   u"/"_s,   u"["_s,  u"]("_s,   u")"_s,
        u"@"_s,      u"f00|"_s, u"a"_s,  u"bc "_s, u"%1 "_s, u"é"_s,  u"ש"_s,    u"0"_s,
    };
    static const QString rare[] = {
        u"\n"_s,       u"\r\n"_s,   u"\v"_s,
        u"\u2029"_s,   u"🎈"_s,      u"👩🏽‍👧"_s,
        u"🇩🇪"_s,       u"\u0301"_s, u"\u1112\u1161"_s,
        u"क्ष"_s,       u"\u200D"_s, u"\uFEFF"_s,
        QChar(0xDC00), QChar(0),
    };
    static const QStringList openings =
            u"** // __ ~~ ` {#f00| {#1abc9c80| {bg#0f08| {bg#none| {k-1.5| {keep| {font:Inter| "
            "{font:Inter-SemiBold,9| {font:None,20| [ @"_s.split(u' ');
    const auto any = [&random](const auto &list) {
        return list[qsizetype(random() % std::size(list))];
    };
    QString markup;
    for (int count = int(random() % 10); count > 0; --count) {
        const auto kind = random() % 200;
        if (kind < 60 && depth > 0) {
            const QString opening = any(openings);
            const QString closing = opening.startsWith(u'{')   ? u"}"_s
                                    : opening.startsWith(u'[') ? u"](notes:1)"_s
                                                               : opening;
            markup += opening + randomMarkup(random, depth - 1) + closing;
        } else if (kind == 199) {
            markup += any(pieces).repeated(qsizetype(random() % 200));
        } else {
            markup += kind < 180 ? any(pieces) : any(rare);
        }
    }
    return markup;
}

} // namespace

TEST(MarkupParser, sets_the_text_of_each_construct)
{
    check({
            { u""_s, u""_s },
            { u"plain"_s, u"plain"_s },
            { u"a **b** c"_s, u"a [B:b] c"_s },
            { u"**a** and **b**"_s, u"[B:a] and [B:b]"_s },
            { u"//a//"_s, u"[I:a]"_s },
            { u"__a__"_s, u"[u:a]"_s },
            { u"~~a~~"_s, u"[s:a]"_s },
            { u"`a`"_s, u"[M:a]"_s },
            { u"{#ff0000|red}"_s, u"[fg#FF0000FF:red]"_s },
            { u"{#f00|x}"_s, u"[fg#FF0000FF:x]"_s },
            { u"{#ff000080|x}"_s, u"[fg#FF000080:x]"_s },
            { u"{bg#00ff00|x}"_s, u"[bg#00FF00FF:x]"_s },
            { u"{k2|ab}"_s, u"[k2:ab]"_s },
    });
}

TEST(MarkupParser, gives_plain_text_exactly_the_base_attributes)
{
    const auto text = parser().parse(u"plain"_s);
    ASSERT_EQ(text.runs().size(), 1);
    const NS::Attributes expected {
        { NS::FontAttributeName, QFont(u"Base"_s, 10) },
        { NS::ForegroundColorAttributeName, QVariant::fromValue(NS::Color::black()) },
        { NS::ParagraphStyleAttributeName, QVariant::fromValue(NS::ParagraphStyle()) },
    };
    EXPECT_EQ(text.runs().constFirst().attributes, expected);
}

TEST(MarkupParser, leaves_incomplete_constructs_as_typed)
{
    for (const char16_t *text : { u"**x", u"****", u"** x*", u"{#|x}", u"{#f00|}", u"{k2|",
                                  u"{font:A,1|b", u"``", u"//", u"{bg#f00 x}" })
        EXPECT_EQ(parsed(QString::fromUtf16(text)), QString::fromUtf16(text));
}

TEST(MarkupParser, ends_a_content_at_the_first_delimiter_behind_its_first_character)
{
    check({
            { u"**a**b**"_s, u"[B:a]b**"_s },
            { u"*****"_s, u"[B:*]"_s },
            { u"{font:A|b|c}"_s, u"b|c"_s },
            { u"{#f00||}"_s, u"[fg#FF0000FF:|]"_s },
            { u"{#f00||a}"_s, u"[fg#FF0000FF:|a]"_s },
            { u"{#f00|}}"_s, u"[fg#FF0000FF:}]"_s },
            { u"{bg#||a|b}"_s, u"[bg#000000FF:a|b]"_s },
    });
}

TEST(MarkupParser, runs_its_rules_in_order_and_the_later_font_wins)
{
    check({
            { u"**//x//**"_s, u"[I:x]"_s },
            { u"//**x**//"_s, u"[I:x]"_s },
            { u"`**x**`"_s, u"[M:x]"_s },
            { u"**a//b**c//"_s, u"[B:a][I:bc]"_s },
            { u"__~~**{#00f|{bg#ff0|{k1|x}}}**~~__"_s, u"[Busfg#0000FFFFbg#FFFF00FFk:x]"_s },
    });
}

// docs/markup.md lists these.
TEST(MarkupParser, has_the_pitfalls_that_the_documentation_lists)
{
    check({
            { u"http://a.de and http://b.de"_s, u"http:[I:a.de and http:]b.de"_s },
            { u"see http://a.de"_s, u"see http://a.de"_s },
            { u"`a ** b` and `c ** d`"_s, u"[M:a  b][B: and ][M:c  d]"_s },
            { u"{#f00|a{k2|b}c}"_s, u"[fg#FF0000FF:a][fg#FF0000FFk2:b][k2:c]"_s },
            { u"{k2|a{#f00|b}c}"_s, u"[k2:a][fg#FF0000FFk2:b][k2:c]"_s },
            { u"{keep|this}"_s, u"[k0:this]"_s },
            { u"__init__.py"_s, u"[u:init].py"_s },
    });
}

TEST(MarkupParser, never_spans_lines_whatever_ends_them)
{
    for (const char16_t unit : { u'\n', u'\v', u'\f', u'\r', u'\u0085', u'\u2028', u'\u2029' }) {
        const QString end(1, QChar(unit));
        for (const QString &markup : { u"**a"_s + end + u"b**"_s, u"{#f00|a"_s + end + u"b}"_s,
                                       u"{#f00"_s + end + u"|a}"_s })
            EXPECT_EQ(parsed(markup), markup);
        EXPECT_EQ(parsed(u"**a"_s + end + u"**b**"_s), u"**a"_s + end + u"[B:b]"_s);
    }
    const QString nul(1, QChar(0));
    EXPECT_EQ(parsed(u"**a\t"_s + nul + u"b**"_s), u"[B:a\t"_s + nul + u"b]"_s);
}

TEST(MarkupParser, searches_as_many_units_as_there_are_characters)
{
    check({
            { u"🎈 **x**"_s, u"🎈 **x**"_s },
            { u"🎈 **x** "_s, u"🎈 [B:x] "_s },
            { u"e\u0301 **x**"_s, u"e\u0301 **x**"_s },
            { u"👩‍👩‍👧 **x** 1234567"_s, u"👩‍👩‍👧 [B:x] 1234567"_s },
            { u"a\r\n**x**"_s, u"a\r\n**x**"_s },
            // Each rule counts the characters anew.
            { u"🎈 **//x//** "_s, u"🎈 [I:x] "_s },
            { u"🎈 //x// `y`"_s, u"🎈 [I:x] `y`"_s },
    });
}

TEST(MarkupParser, has_a_fallback_for_every_argument)
{
    const QString black = u"#000000FF"_s;
    const auto color = [](const QString &markup, const QString &key) {
        const auto text = parser().parse(markup);
        EXPECT_EQ(text.string(), u"x"_s);
        return named(text.attribute(key, 0));
    };
    for (const QString &argument : { u"zz"_s, u"12345"_s, u"##fff"_s, u" "_s }) {
        EXPECT_EQ(color(u"{#"_s + argument + u"|x}"_s, NS::ForegroundColorAttributeName), black);
        EXPECT_EQ(color(u"{bg#"_s + argument + u"|x}"_s, NS::BackgroundColorAttributeName), black);
    }
    EXPECT_EQ(color(u"{##0f0|x}"_s, NS::ForegroundColorAttributeName), u"#00FF00FF"_s);
}

TEST(MarkupParser, reads_kerning_as_one_whole_number)
{
    const std::pair<QString, double> numbers[] = {
        { u"1.5"_s, 1.5 },   { u"-1"_s, -1.0 },   { u"+.5"_s, 0.5 },      { u"2."_s, 2.0 },
        { u"1e2"_s, 100.0 }, { u"0x10"_s, 16.0 }, { u"inf"_s, INFINITY }, { u"1e999"_s, INFINITY },
        { u"wide"_s, 0.0 },  { u"1,5"_s, 0.0 },   { u" 1"_s, 0.0 },       { u"1 "_s, 0.0 },
        { u"1x"_s, 0.0 },    { u"١"_s, 0.0 },     { u"1\u0301"_s, 0.0 },
    };
    for (const auto &[text, value] : numbers)
        EXPECT_EQ(kern(text), value) << text.toStdString();
    EXPECT_TRUE(std::isnan(kern(u"nan"_s)));
    EXPECT_EQ(kern(u"1"_s + QChar(0)), 0.0);
}

TEST(MarkupParser, looks_fonts_up_by_name_and_size)
{
    const auto font = [](const QString &argument) {
        const auto text = parser().parse(u"{font:"_s + argument + u"|x}"_s);
        EXPECT_EQ(text.string(), u"x"_s);
        return text.attribute(NS::FontAttributeName, 0).value<QFont>();
    };
    const QFont base(u"Base"_s, 10);
    const auto named = [](const QString &name, double size) {
        const auto found = NS::fontWithName(name, size);
        EXPECT_TRUE(found) << name.toStdString();
        return found.value_or(QFont());
    };
    EXPECT_EQ(font(u"Menlo-Regular,20"_s), named(u"Menlo-Regular"_s, 20));
    EXPECT_EQ(font(u"Menlo-Regular"_s), named(u"Menlo-Regular"_s, 10));
    EXPECT_EQ(font(u"Inter-SemiBold,7.5"_s), named(u"Inter-SemiBold"_s, 7.5));
    EXPECT_EQ(font(u"Inter,12,bold"_s), named(u"Inter"_s, 12));
    EXPECT_EQ(font(u"Inter, 12"_s), named(u"Inter"_s, 10));
    EXPECT_EQ(font(u"Inter,,12"_s), named(u"Inter"_s, 10));
    EXPECT_EQ(font(u"NoSuchFont,20"_s), base);
    EXPECT_EQ(font(u" Inter,20"_s), base);
    EXPECT_EQ(font(u",20"_s), base);
    EXPECT_EQ(font(u","_s), base);
}

TEST(MarkupParser, takes_its_default_fonts_from_the_system)
{
    const double size = NS::systemFontSize();
    const MarkupParser byDefault;
    EXPECT_EQ(byDefault.font(), NS::systemFont(size));
    EXPECT_EQ(byDefault.boldFont(), NS::boldSystemFont(size));
    EXPECT_EQ(byDefault.italicFont(),
              NS::FontManager::convertToHaveTrait(NS::systemFont(size), NS::FontTraitMask::italic));
    EXPECT_EQ(byDefault.monospaceFont(), NS::fontWithName(u"Menlo-Regular"_s, size));
    EXPECT_EQ(byDefault.color(), NS::Color::black());
    EXPECT_EQ(byDefault.paragraphStyle(), NS::ParagraphStyle());
    EXPECT_EQ(byDefault.parsers().size(), 9);
}

TEST(MarkupParser, derives_fonts_from_a_base_font)
{
    const QFont base(u"Inter"_s, 21);
    const MarkupParser fromBase(base);
    EXPECT_EQ(fromBase.font(), base);
    EXPECT_EQ(fromBase.boldFont(), heavier(base));
    EXPECT_EQ(fromBase.italicFont(), italicVariant(base));
    EXPECT_EQ(fromBase.monospaceFont().pointSizeF(), 21.0);
    EXPECT_EQ(fromBase.monospaceFont().family(), MarkupParser().monospaceFont().family());
}

TEST(MarkupParser, uses_changed_settings_from_the_next_parse_on)
{
    MarkupParser changed = parser();
    const NS::ParagraphStyle centred { .alignment = Qt::AlignHCenter };
    changed.setColor(NS::Color::white());
    changed.setParagraphStyle(centred);
    changed.setBoldFont(QFont(u"Mono"_s));
    changed.setParsers({ changed.parsers().constFirst() });
    const auto text = changed.parse(u"//**x**//"_s);
    EXPECT_EQ(described(text), u"[fg#FFFFFFFF://][Mfg#FFFFFFFF:x][fg#FFFFFFFF://]"_s);
    EXPECT_EQ(text.attribute(NS::ParagraphStyleAttributeName, 0).value<NS::ParagraphStyle>(),
              centred);
    changed.setParsers({});
    EXPECT_EQ(changed.stripped(u"**x**"_s), u"**x**"_s);
}

TEST(MarkupParser, inserts_arguments_as_they_are_in_the_style_of_their_place)
{
    const QStringList three { u"**a**"_s, u"{#f00|b}"_s, u"%1"_s };
    const Row rows[] = {
        { u"See **%1** in %2"_s, u"See [B:**a**] in {#f00|b}"_s },
        { u"//**%2**// %2 %3"_s, u"[I:{#f00|b}] {#f00|b} %1"_s },
        { u"{#00f|%3}%12"_s, u"[fg#0000FFFF:%1]**a**2"_s },
        { u"100 % %0 %01 %4 %%1 %"_s, u"100 % %0 %01 %4 %**a** %"_s },
        // In an argument of the markup, the placeholder is a part of the argument.
        { u"{#%1|x}"_s, u"x"_s },
        { u"%**1**"_s, u"**a**"_s }, // the style of its first character
        { u""_s, u""_s },
    };
    for (const auto &[format, expected] : rows)
        EXPECT_EQ(described(parser().styled(format, three)), expected) << format.toStdString();
    QStringList many(99, u"-"_s);
    many[9] = u"ten"_s;
    many[98] = QString();
    EXPECT_EQ(parser().styled(u"%10%99%1"_s, many).string(), u"ten-"_s);
}

TEST(MarkupParser, agrees_with_the_grammar_taken_literally)
{
    const auto link = std::make_shared<HostRule>(u"(\\[)(.+?)(\\]\\()(.+?)(\\))"_s, 1);
    const auto mention = std::make_shared<HostRule>(u"@(\\w+)"_s, 0); // matched by ICU
    MarkupParser subjects[] = { parser(), parser(), parser() };
    subjects[1].setParsers(QList(subjects[1].parsers()) << link << mention);
    subjects[2].setParsers(QList<std::shared_ptr<const Parser>> { link } + subjects[2].parsers());

    std::mt19937 random(1);
    QMap<QString, int> seen; // attributes, and initials of fonts
    const int rounds = qEnvironmentVariableIntValue("PELLARVINE_MARKUP_TEXTS"); // nightly
    for (int round = 0; round < std::max(rounds, 5000); ++round) {
        const MarkupParser &subject = subjects[round % std::size(subjects)];
        const QString markup = randomMarkup(random, 4);
        const auto text = subject.parse(markup);
        ASSERT_EQ(text, LiteralMarkup::parse(subject, markup)) << markup.toStdString();
        for (const auto &run : text.runs()) {
            for (const auto &[key, value] : run.attributes)
                ++seen[key == NS::FontAttributeName ? value.value<QFont>().family().first(2) : key];
        }
    }
    EXPECT_EQ(seen.size(), 12) << "five fonts, the other six attributes and the host's";
    for (const auto &[key, count] : seen.asKeyValueRange())
        EXPECT_GT(count, 500) << key.toStdString();
}

TEST(MarkupParser, takes_any_text)
{
    const MarkupParser subject = parser();
    const QString units[] = {
        QChar(0xD83D), QChar(0xDE00),     QChar(0),     QChar(0xFFFF), u"*"_s,
        u"`"_s,        u"{#"_s,           u"{#fff|a"_s, u"{k1|"_s,     u"{font:A,1|b"_s,
        u"\u05D0**"_s, u"\u202E{k2|x}"_s, u"\u0301"_s,  u"👩‍"_s,
    };
    for (const QString &unit : units) {
        const QString text = unit.repeated(60000 / unit.size());
        EXPECT_LE(subject.parse(text).length(), text.size());
    }
    const QString tenMegabytes = u"**a** {#f00|b} "_s.repeated(700000);
    EXPECT_EQ(subject.stripped(tenMegabytes), u"a b "_s.repeated(700000));
}

TEST(Parser, runs_a_pattern_of_the_hosts_own_through_icu)
{
    EXPECT_EQ(hostParsed(u"@(\\w+)"_s, 0, u"hi @ann and @bob!"_s),
              u"hi [ann:ann] and [bob:bob]!"_s);
    EXPECT_EQ(hostParsed(u"(<)(\\w)?(\\d+)>"_s, 2, u"<a1> <2>"_s), u"[<;a;1:1] [<;;2:2]"_s);
    EXPECT_EQ(hostParsed(u"(?<=(ab))(c+)"_s, 1, u"abcc abc c"_s), u"ab[ab;cc:cc] ab[ab;c:c] c"_s);
    EXPECT_EQ(hostParsed(u"(x*)"_s, 0, u"axxb"_s), u"a[xx:xx]b"_s);
    // The match is outside of the range.
    EXPECT_EQ(hostParsed(u"(b)"_s, 0, u"🎈ab"_s), u"🎈ab"_s);
}

TEST(Parser, is_asked_for_every_match)
{
    class Counting : public Parser
    {
    public:
        QString regex() const override { return u"(<)(.+?)(>)"_s; }
        int principalCaptureGroup() const override { return 1; }
        NS::Attributes provideAttributes(const QStringList &, const MarkupParser &) const override
        {
            return { { u"number"_s, ++m_count } };
        }

    private:
        mutable int m_count = 0;
    };
    MarkupParser host = parser();
    host.setParsers({ std::make_shared<Counting>() });
    const auto text = host.parse(u"<a><a><a>"_s);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(text.attribute(u"number"_s, i), i + 1);
}

TEST(Parser, leaves_a_match_as_typed_whose_principal_group_is_not_in_it)
{
    EXPECT_EQ(hostParsed(u"(a)|b"_s, 0, u"ab"_s), u"[a:a]b"_s);
    EXPECT_EQ(hostParsed(u"a(?=(b))"_s, 0, u"ab"_s), u"ab"_s);
    EXPECT_EQ(hostParsed(u"(?<=(a))b"_s, 0, u"ab"_s), u"ab"_s);
}

TEST(Parser, gives_up_on_a_pattern_that_backtracks_without_end)
{
    ::testing::internal::CaptureStdout();
    const QString text = QString(40, u'a') + u'b';
    EXPECT_EQ(hostParsed(u"((?:a|a)+)c"_s, 0, text), text);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Warning: regular expression gave up: U_REGEX_TIME_OUT\n");
}

TEST(Parser, stops_the_process_for_a_rule_that_cannot_work)
{
    EXPECT_EXIT(hostParsed(u"(a"_s, 0, u"a"_s), ::testing::KilledBySignal(SIGABRT),
                "Could not compile regular expression \\(a");
    EXPECT_EXIT(hostParsed(u"(a)"_s, 1, u"a"_s), ::testing::KilledBySignal(SIGABRT),
                "No such capture group in \\(a\\)");
}

} // namespace Pellarvine
