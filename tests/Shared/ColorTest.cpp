// SPDX-License-Identifier: MIT
#include <pellarvine/Shared/Contrast.h>
#include <pellarvine/Shared/NSColor+Color.h>

#include <QVariant>
#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

// A grey with sixteen steps. It shows that the four operations of the concept are enough.
class Grey
{
public:
    explicit Grey(const RGBA &color)
        : m_step(int(std::lround((color.red + color.green + color.blue) * 5)))
    { }
    explicit Grey(const HSBA &color)
        : m_step(int(std::lround(color.brightness * 15)))
    { }
    RGBA rgba() const { return { m_step / 15.0, m_step / 15.0, m_step / 15.0, 1 }; }
    HSBA hsba() const { return { 0, 0, m_step / 15.0, 1 }; }
    int step() const { return m_step; }

private:
    int m_step;
};

static_assert(Color<Grey>);
static_assert(!Color<QColor> && !Color<RGBA> && !Color<int>);

using Named = Palette<NS::Color>;

QString hex(const NS::Color &color)
{
    return hexStringWithAlpha(color);
}

} // namespace

TEST(Color, four_functions_are_enough_for_the_operations_and_the_palette)
{
    const Grey grey(RGBA { 0.6666, 0.6666, 0.6666, 1 });
    EXPECT_EQ(grey.step(), 10);
    EXPECT_EQ(darker(grey).step(), 8);
    EXPECT_EQ(lighter(darker(grey)).step(), 10);
    EXPECT_EQ(withScaledBrightness(grey, 0.5).step(), 5);
    EXPECT_EQ(interpolate(grey, Grey(HSBA {}), 0.3).step(), 7);
    EXPECT_EQ(Palette<Grey>::clouds().step(), 14);
    EXPECT_EQ(Palette<Grey>::all().size(), 19U);
}

TEST(Color, the_palette_has_these_nineteen_colours)
{
    const char *const expected[][2] = {
        { "turquoise", "#1ABC9CFF" },    { "greenSea", "#16A085FF" },
        { "emerald", "#2ECC71FF" },      { "nephritis", "#27AE60FF" },
        { "peterRiver", "#3498DBFF" },   { "belizeHole", "#2980B9FF" },
        { "amethyst", "#9B59B6FF" },     { "wisteria", "#8E44ADFF" },
        { "wetAsphalt", "#34495EFF" },   { "midnightBlue", "#2C3E50FF" },
        { "sunflower", "#F1C40FFF" },    { "carrot", "#E67E22FF" },
        { "pumpkin", "#D35400FF" },      { "alizarin", "#E74C3CFF" },
        { "pomergranate", "#C0392BFF" }, { "clouds", "#ECF0F1FF" },
        { "silver", "#BDC3C7FF" },       { "concrete", "#95A5A6FF" },
        { "asbestos", "#7F8C8DFF" },
    };
    const auto all = Named::all();
    ASSERT_EQ(all.size(), std::size(expected));
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_STREQ(all[i].name, expected[i][0]);
        EXPECT_EQ(hex(all[i].color), QString::fromLatin1(expected[i][1]));
    }
}

TEST(Color, darker_and_lighter_are_inverse_and_nothing_is_clamped)
{
    const NS::Color red({ .red = 1 });
    EXPECT_DOUBLE_EQ(darker(red).hsba().brightness, 0.8);
    EXPECT_DOUBLE_EQ(lighter(darker(red)).hsba().brightness, 1.0);
    EXPECT_DOUBLE_EQ(lighter(red).hsba().brightness, 1.25);
    EXPECT_DOUBLE_EQ(withScaledBrightness(red, 3).rgba().red, 3.0);
    for (const auto &[name, color] : Named::all()) {
        EXPECT_NEAR(darker(color).hsba().hue, color.hsba().hue, 1e-12) << name;
        EXPECT_NEAR(darker(color).hsba().saturation, color.hsba().saturation, 1e-12) << name;
    }
    EXPECT_EQ(darker(NS::Color({ .red = 1, .alpha = 0.25 })).rgba().alpha, 0.25);
}

TEST(Color, interpolation_takes_in_opacity_and_goes_on_beyond_its_ends)
{
    const auto black = NS::Color::black();
    const auto white = NS::Color::white();
    EXPECT_EQ(interpolate(black, white, 0), black);
    EXPECT_EQ(interpolate(black, white, 1), white);
    EXPECT_EQ(interpolate(black, white, 0.5), NS::Color(RGBA { 0.5, 0.5, 0.5, 1 }));
    EXPECT_EQ(interpolate(black, white, 2), NS::Color(RGBA { 2, 2, 2, 1 }));
    EXPECT_EQ(interpolate(black, white, -1), NS::Color(RGBA { -1, -1, -1, 1 }));
    EXPECT_EQ(interpolate(NS::Color(RGBA { .alpha = 0 }), white, 0.25),
              NS::Color(RGBA { 0.25, 0.25, 0.25, 0.25 }));
}

namespace {

// Texts and the colours that are read; no text for one that is refused.
const std::pair<QString, QString> hexCases[] = {
    // The four forms, with and without "#".
    { u"#fff"_s, u"#FFFFFFFF"_s },
    { u"fff"_s, u"#FFFFFFFF"_s },
    { u"#FfF"_s, u"#FFFFFFFF"_s },
    { u"#ffff"_s, u"#FFFFFFFF"_s },
    { u"#1af8"_s, u"#11AAFF88"_s },
    { u"#1abc9c"_s, u"#1ABC9CFF"_s },
    { u"#00000080"_s, u"#00000080"_s },
    { u"FEDCBA98"_s, u"#FEDCBA98"_s },
    // Lengths that belong to no form.
    { QString(), QString() },
    { u"#"_s, QString() },
    { u"1"_s, QString() },
    { u"#ff"_s, QString() },
    { u"12345"_s, QString() },
    { u"1234567"_s, QString() },
    { u"123456789"_s, QString() },
    { u"#00000080ff"_s, QString() },
    // Only one "#" is dropped, and only from the very start.
    { u"##fff"_s, QString() },
    { u"##ff"_s, QString() },
    { u" #fff"_s, QString() },
    // The text's length selects the form. Digits are read up to the first other character.
    { u"12zzzz"_s, u"#000012FF"_s },
    { u"#fzz"_s, u"#0000FFFF"_s }, // RGB 00f
    { u"f#f"_s, u"#0000FFFF"_s },
    { u"ff  "_s, u"#0000FFFF"_s }, // RGBA 00ff
    { u"1.5"_s, u"#000011FF"_s },
    { u"zzzzzz"_s, QString() },
    { u"-12"_s, QString() },
    { u"+fff"_s, QString() },
    // White space before the digits counts towards the length.
    { u" ff"_s, u"#00FFFFFF"_s },
    { u"\t\n\u00a0\u2003\u2028f"_s, u"#00000FFF"_s },
    { u"\r\nfff"_s, u"#00FFFFFF"_s }, // CR LF is one character: RGBA 0fff
    { u"   "_s, QString() },
    // A prefix counts towards the length.
    { u"0xf"_s, u"#0000FFFF"_s },
    { u"0xff"_s, u"#0000FFFF"_s },
    { u"#0XFF00"_s, u"#00FF00FF"_s },
    { u"0xff00ff"_s, u"#00FF00FF"_s },
    { u" 0xf"_s, u"#000000FF"_s },
    { u"0x"_s, QString() },
    { u"0xg"_s, QString() },
    { u"0x0xff"_s, u"#000000FF"_s },
    { u"0x 1"_s, QString() },
    // The length counts grapheme clusters.
    { u"12zzz\U0001F44D\U0001F3FD"_s, u"#000012FF"_s },
    { u"12e\u0301"_s, u"#1122EEFF"_s },
    { u"ff\U0001F468\u200D\U0001F469\u200D\U0001F467"_s, u"#00FFFFFF"_s },
    { u"\uff11\uff12\uff13"_s, QString() }, // full-width digits are no hexadecimal digits
    { u"f\0f"_s, u"#0000FFFF"_s },
    { QStringLiteral("fff") + QChar(0xd800), u"#00FFFFFF"_s },
};

} // namespace

TEST(Color, hex_texts_are_read_like_a_scanner_reads_them)
{
    for (const auto &[text, expected] : hexCases) {
        const auto color = colorWithHex(text);
        EXPECT_EQ(color ? hex(*color) : QString(), expected) << qPrintable(text);
    }
}

TEST(Color, contrast_is_that_of_the_accessibility_guidelines)
{
    const std::tuple<const char *, const char *, double> rows[] = {
        { "000", "fff", 21 },
        { "fff", "000", 21 },
        { "777", "777", 1 },
        // Two greys on white: just below and just above a contrast of 4.5.
        { "777777", "ffffff", 4.478 },
        { "767676", "ffffff", 4.542 },
        { "ff0000", "ffffff", 3.998 },
        { "0000ff", "ffffff", 8.592 },
        // Translucent colours are blended first: black of half the opacity is a grey.
        { "00000080", "ffffff", 4.004 },
        { "fff0", "000", 1 },
    };
    for (const auto &[text, background, ratio] : rows) {
        const auto colorOf = [](const char *hex) {
            return colorWithHex(QString::fromLatin1(hex)).value();
        };
        EXPECT_NEAR(contrastRatio(colorOf(text), colorOf(background)), ratio, 0.001) << text;
    }
    EXPECT_NEAR(luminance(NS::Color(RGBA { 0.5, 0.5, 0.5, 1 })), 0.2140, 0.0001);
    EXPECT_EQ(luminance(NS::Color(RGBA { 2, 2, 2, 1 })), 1);
    EXPECT_EQ(seenOn(NS::Color::white(), NS::Color(RGBA { 1, 0, 0, 0.5 })),
              NS::Color(RGBA { 1, 0.5, 0.5, 1 }));
    EXPECT_EQ(seenOn(NS::Color::white(), NS::Color(RGBA { 0.5, 0, 0, 2 })),
              NS::Color(RGBA { 0.5, 0, 0, 1 }));
}

TEST(Color, black_or_white_can_be_read_on_every_colour)
{
    for (int red = 0; red < 256; red += 15) {
        for (int green = 0; green < 256; green += 15) {
            for (int blue = 0; blue < 256; blue += 15) {
                const NS::Color paper(RGBA { red / 255.0, green / 255.0, blue / 255.0, 1 });
                const NS::Color ink = readableOn(paper);
                ASSERT_TRUE(ink == NS::Color::black() || ink == NS::Color::white());
                ASSERT_GE(contrastRatio(ink, paper), readableContrast) << hex(paper).toStdString();
            }
        }
    }
    EXPECT_EQ(readableOn(NS::Color::white(), Named::midnightBlue()), Named::midnightBlue());
    EXPECT_EQ(readableOn(NS::Color::white(), Named::sunflower()), NS::Color::black());
    EXPECT_EQ(readableOn(Grey(RGBA { 1, 1, 1, 1 })).step(), 0);
}

TEST(Color, hex_forms_give_exact_components)
{
    EXPECT_EQ(colorWithHex(u"#1abc9c"), Named::turquoise());
    EXPECT_EQ(colorWithHex(u"5a0f"), NS::Color(RGBA { 5 / 15.0, 10 / 15.0, 0, 1 }));
    for (int byte = 0; byte < 256; ++byte) {
        const QString text = QString::asprintf("#%02X%02X%02X%02X", byte, 255 - byte, byte, byte);
        ASSERT_EQ(hex(colorWithHex(text).value()), text);
        ASSERT_EQ(hexStringWithoutAlpha(colorWithHex(text).value()), text.first(7));
    }
}

TEST(Color, a_long_text_is_refused_at_once)
{
    EXPECT_EQ(colorWithHex(QString(10'000'000, u'f')), std::nullopt);
    EXPECT_EQ(colorWithHex(QString(1'000'000, QChar(0x301))), std::nullopt);
}

TEST(Color, hex_components_are_cut_and_not_clamped)
{
    EXPECT_EQ(hexStringWithoutAlpha(NS::Color({ .red = 0.5 })), u"#7F0000"_s);
    EXPECT_EQ(hexStringWithoutAlpha(NS::Color(RGBA { 2, -0.001, 0, 1 })), u"#1FE0000"_s);
    EXPECT_EQ(hexStringWithoutAlpha(NS::Color(RGBA { -0.5, 0, 0, 1 })), u"#FFFFFF810000"_s);
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EXIT(hexStringWithAlpha(NS::Color(RGBA { .alpha = nan })),
                ::testing::KilledBySignal(SIGABRT), "Error: color component out of range");
    EXPECT_EXIT(hexStringWithoutAlpha(NS::Color({ .green = 1e9 })),
                ::testing::KilledBySignal(SIGABRT), "Error: color component out of range");
}

TEST(Color, a_variant_gives_and_takes_hex_text)
{
    EXPECT_EQ(QVariant::fromValue(Named::carrot()).toString(), u"#E67E22FF"_s);
    QVariant text(u"#e67e22"_s);
    EXPECT_EQ(text.value<NS::Color>(), Named::carrot());
    EXPECT_TRUE(text.convert(QMetaType::fromType<NS::Color>()));
    QVariant bad(u"#e67e2"_s);
    EXPECT_FALSE(bad.convert(QMetaType::fromType<NS::Color>()));
    // A colour without a hexadecimal form.
    QVariant extrapolated = QVariant::fromValue(NS::Color(RGBA { 2, -1, 0, 1 }));
    EXPECT_FALSE(extrapolated.convert(QMetaType::fromType<QString>()));
}

} // namespace Pellarvine
