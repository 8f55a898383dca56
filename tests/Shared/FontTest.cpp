// SPDX-License-Identifier: MIT
#include "Messages.h"

#include <pellarvine/Platform/NSFont.h>
#include <pellarvine/Shared/Font.h>

#include <QFontInfo>
#include <QRawFont>
#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

QFont fontNamed(const char *name, double size = 12)
{
    return NS::fontWithName(QString::fromLatin1(name), size).value();
}

// The style without spaces: Inter 3 has "Semi Bold", Inter 4 "SemiBold".
std::string styleOf(const QFont &font)
{
    return QRawFont::fromFont(font).styleName().remove(u' ').toStdString();
}

} // namespace

TEST(Font, weights_are_walked_one_face_at_a_time)
{
    const std::pair<const char *, std::vector<std::string>> ladders[] = {
        { "Inter-Thin",
          { "Thin", "ExtraLight", "Light", "Regular", "Medium", "SemiBold", "Bold", "ExtraBold",
            "Black" } },
        { "Inter-ThinItalic",
          { "ThinItalic", "ExtraLightItalic", "LightItalic", "Italic", "MediumItalic",
            "SemiBoldItalic", "BoldItalic", "ExtraBoldItalic", "BlackItalic" } },
        { "DejaVuSans-ExtraLight", { "ExtraLight", "Book", "Bold" } },
        { "DejaVuSans-Oblique", { "Oblique", "BoldOblique" } },
    };
    for (const auto &[lightest, styles] : ladders) {
        QFont font = fontNamed(lightest);
        EXPECT_EQ(lighter(font), font) << lightest;
        for (std::size_t i = 0; i < styles.size(); ++i) {
            EXPECT_EQ(styleOf(font), styles[i]);
            EXPECT_EQ(styleOf(lighter(font)), styles[i > 0 ? i - 1 : 0]);
            const QFont next = heavier(font);
            EXPECT_EQ(next == font, i + 1 == styles.size()) << styles[i];
            font = next;
        }
    }
}

TEST(Font, bold_is_a_jump_where_heavier_is_a_step)
{
    const QFont regular = fontNamed("Inter-Regular");
    EXPECT_EQ(styleOf(boldVariant(regular)), "Bold");
    EXPECT_EQ(styleOf(heavier(regular)), "Medium");
}

TEST(Font, traits_find_the_member_of_the_family)
{
    struct Row
    {
        const char *name, *bold, *italic, *nonBold, *nonItalic;
    };
    const Row rows[] = {
        { "Inter-Regular", "Bold", "Italic", "Regular", "Regular" },
        { "Inter-Italic", "BoldItalic", "Italic", "Italic", "Regular" },
        { "Inter-Light", "Bold", "LightItalic", "Light", "Light" },
        { "Inter-SemiBold", "Bold", "SemiBoldItalic", "Regular", "SemiBold" },
        { "Inter-BlackItalic", "BlackItalic", "BlackItalic", "Italic", "Black" },
        { "DejaVuSans", "Bold", "Oblique", "Book", "Book" },
        { "DejaVuSans-BoldOblique", "BoldOblique", "BoldOblique", "Oblique", "Bold" },
        // No slanted face of this weight.
        { "DejaVuSans-ExtraLight", "Bold", "ExtraLight", "ExtraLight", "ExtraLight" },
        // A family with a single face, which is neither bold nor slanted.
        { "DejaVuMathTeXGyre-Regular", "Regular", "Regular", "Regular", "Regular" },
    };
    for (const auto &[name, bold, italic, nonBold, nonItalic] : rows) {
        const QFont font = fontNamed(name);
        EXPECT_EQ(styleOf(boldVariant(font)), bold) << name;
        EXPECT_EQ(styleOf(italicVariant(font)), italic) << name;
        EXPECT_EQ(styleOf(nonBoldVariant(font)), nonBold) << name;
        EXPECT_EQ(styleOf(nonItalicVariant(font)), nonItalic) << name;
    }
}

TEST(Font, a_font_without_such_a_member_comes_back_unchanged)
{
    const QFont lone = fontNamed("DejaVuMathTeXGyre-Regular");
    for (const auto variant : { &boldVariant, &italicVariant, &nonBoldVariant, &nonItalicVariant,
                                static_cast<QFont (*)(const QFont &)>(&heavier),
                                static_cast<QFont (*)(const QFont &)>(&lighter) })
        EXPECT_EQ(variant(lone), lone);
}

TEST(Font, a_style_that_the_family_lacks_and_qt_draws_is_taken_back)
{
    const QFont lone = fontNamed("DejaVuMathTeXGyre-Regular");
    QFont bold = lone;
    bold.setBold(true);
    EXPECT_EQ(nonBoldVariant(bold), lone);
    QFont slanted = lone;
    slanted.setItalic(true);
    EXPECT_EQ(nonItalicVariant(slanted), lone);
    // Each function removes one property.
    slanted.setBold(true);
    EXPECT_EQ(nonItalicVariant(slanted), bold);
    EXPECT_EQ(nonItalicVariant(nonBoldVariant(slanted)), lone);
}

TEST(Font, everything_else_about_the_font_is_kept)
{
    QFont font(QStringList { u"Inter"_s, u"DejaVu Sans"_s });
    font.setPixelSize(17);
    font.setUnderline(true);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 2);
    QFont expected = font;
    expected.setWeight(QFont::Medium);
    EXPECT_EQ(heavier(font), expected);
    expected.setStyle(QFont::StyleItalic);
    EXPECT_EQ(italicVariant(heavier(font)), expected);
}

TEST(Font, sizes_go_by_one_point)
{
    const QFont font = fontNamed("Inter", 12.5);
    EXPECT_EQ(larger(font).pointSizeF(), 13.5);
    EXPECT_EQ(smaller(font).pointSizeF(), 11.5);
    EXPECT_EQ(smaller(larger(font)), font);
    EXPECT_EQ(withSize(font, 48).pointSizeF(), 48);
    QFont pixels(u"Inter"_s);
    pixels.setPixelSize(20);
    const double points = QFontInfo(pixels).pointSizeF();
    EXPECT_EQ(larger(pixels).pointSizeF(), points + 1);
    EXPECT_EQ(smaller(larger(pixels)).pointSizeF(), points);
}

TEST(Font, there_is_no_size_below_the_smallest_and_no_warning_about_it)
{
    const Messages messages;
    for (const double size : { 1.0, 0.5 }) {
        const QFont font = fontNamed("Inter", size);
        EXPECT_EQ(smaller(font), font);
    }
    const QFont font = fontNamed("Inter", 12);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double size : { 0.0, -1.0, infinity, std::numeric_limits<double>::quiet_NaN() })
        EXPECT_EQ(withSize(font, size), font);
    EXPECT_EQ(Messages::texts, QStringList());
}

} // namespace Pellarvine
