// SPDX-License-Identifier: MIT
#include "TemporaryFolder.h"

#include <pellarvine/Platform/NSFont.h>
#include <pellarvine/Platform/NSFontManager.h>

#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QRawFont>
#include <gtest/gtest.h>

#include <limits>
#include <thread>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

// The family and style of the face that Qt draws with. Spaces are removed from the style: Inter 3
// has "Semi Bold", Inter 4 "SemiBold".
std::string face(const QFont &font)
{
    const QString style = QRawFont::fromFont(font).styleName().remove(u' ');
    return (QFontInfo(font).family().section(u'[', 0, 0).trimmed() + u'/' + style).toStdString();
}

std::string faceNamed(const QString &name)
{
    const auto font = fontWithName(name, 20);
    return font ? face(*font) : "none";
}

const std::pair<const char *, const char *> facesByName[] = {
    // PostScript names.
    { "Inter-Regular", "Inter/Regular" },
    { "Inter-SemiBold", "Inter/SemiBold" },
    { "Inter-ThinItalic", "Inter/ThinItalic" },
    { "InterDisplay-Black", "Inter Display/Black" },
    { "DejaVuSans", "DejaVu Sans/Book" },
    { "DejaVuSans-ExtraLight", "DejaVu Sans/ExtraLight" },
    { "DejaVuSansCondensed-BoldOblique", "DejaVu Sans/CondensedBoldOblique" },
    { "inter-semibold", "Inter/SemiBold" },
    // Full names and families.
    { "Inter Medium Italic", "Inter/MediumItalic" },
    { "Inter", "Inter/Regular" },
    { "inter display", "Inter Display/Regular" },
    { "DejaVu Sans Condensed", "DejaVu Sans/Condensed" },
    // Names that are almost right.
    { "", "none" },
    { "NoSuchFont", "none" },
    { "Inter-NoSuchFace", "none" },
    { " Inter", "none" },
    { "Inter ", "none" },
    { "Inter [nobody]", "none" },
    { "Inter,DejaVu Sans", "none" },
    { "Int*", "none" },
    { "Inter:bold", "none" },
    { "-Regular", "none" },
};

} // namespace

TEST(NSFont, names_find_their_face_or_nothing)
{
    for (const auto &[name, expected] : facesByName)
        EXPECT_EQ(faceNamed(QString::fromLatin1(name)), expected) << name;
}

TEST(NSFont, well_known_names_stand_for_the_systems_fonts)
{
    const QFont regular = monospacedSystemFont(20);
    const QFont bold = FontManager::convertToHaveTrait(regular, FontTraitMask::bold);
    const QFont both = FontManager::convertToHaveTrait(bold, FontTraitMask::italic);
    for (const QString &name :
         { u"Menlo-Regular"_s, u"menlo"_s, u"SFMono-Regular"_s, u"SF Mono"_s, u"monospace"_s })
        EXPECT_EQ(fontWithName(name, 20), regular) << qPrintable(name);
    EXPECT_EQ(fontWithName(u"Menlo-Bold"_s, 20), bold);
    EXPECT_EQ(fontWithName(u"Menlo-BoldItalic"_s, 20), both);
    EXPECT_EQ(fontWithName(u"HelveticaNeue-Bold"_s, 20), boldSystemFont(20));
    EXPECT_EQ(fontWithName(u"Times-Roman"_s, 20)->pointSizeF(), 20);
    EXPECT_EQ(fontWithName(u"Menlo-Sideways"_s, 20), std::nullopt);
}

TEST(NSFont, odd_texts_are_no_names)
{
    EXPECT_EQ(fontWithName(u"Inter\0x"_s, 12), std::nullopt);
    EXPECT_EQ(fontWithName(QString(QChar(0xd800)), 12), std::nullopt);
    EXPECT_EQ(fontWithName(QString(1'000'000, u'x'), 12), std::nullopt);
}

TEST(NSFont, a_font_looked_up_by_face_is_not_held_to_that_face)
{
    QFont font = fontWithName(u"Inter-SemiBold"_s, 12).value();
    EXPECT_EQ(font.weight(), QFont::DemiBold);
    font.setWeight(QFont::Light);
    EXPECT_EQ(face(font), "Inter/Light");
    font = fontWithName(u"DejaVuSansCondensed"_s, 12).value();
    font.setWeight(QFont::Bold);
    EXPECT_EQ(face(font), "DejaVu Sans/CondensedBold");
}

TEST(NSFont, an_invalid_size_stands_for_the_systems)
{
    EXPECT_EQ(fontWithName(u"Inter"_s, 20.5)->pointSizeF(), 20.5);
    for (const double size : { 0.0, -3.0, nan, infinity, -infinity }) {
        EXPECT_EQ(fontWithName(u"Inter"_s, size)->pointSizeF(), systemFontSize());
        EXPECT_EQ(fontWithName(u"Menlo-Regular"_s, size)->pointSizeF(), systemFontSize());
        EXPECT_EQ(systemFont(size).pointSizeF(), systemFontSize());
    }
}

TEST(NSFont, the_systems_fonts_follow_the_program)
{
    const QFont before = QGuiApplication::font();
    QFont own(u"Inter"_s);
    own.setPixelSize(20);
    QGuiApplication::setFont(own);
    EXPECT_EQ(systemFontSize(), QFontInfo(own).pointSizeF());
    EXPECT_EQ(face(systemFont(13)), "Inter/Regular");
    EXPECT_EQ(face(boldSystemFont(13)), "Inter/Bold");
    EXPECT_EQ(boldSystemFont(13).pointSizeF(), 13);
    QGuiApplication::setFont(QFont(u"Inter Medium"_s)); // a family of one weight
    EXPECT_TRUE(boldSystemFont(13).bold());
    QGuiApplication::setFont(before);
    EXPECT_TRUE(QFontInfo(monospacedSystemFont(13)).fixedPitch());
}

TEST(NSFont, a_font_that_the_program_adds_is_found_while_it_is_there)
{
    // Makes a font that is not installed: an installed one, with other names of the same length.
    QFile original(u"/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf"_s);
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    QByteArray bytes = original.readAll();
    bytes.replace("DejaVu", "Ledger");
    bytes.replace(QByteArray("\0D\0e\0j\0a\0V\0u", 12), QByteArray("\0L\0e\0d\0g\0e\0r", 12));
    const TemporaryFolder folder;
    const QString path = folder.file(u"Ledger.ttf"_s, bytes);

    for (const QString &name : { u"LedgerSansMono"_s, u"Ledger Sans Mono"_s })
        EXPECT_EQ(fontWithName(name, 12), std::nullopt);
    const int id = QFontDatabase::addApplicationFont(path);
    ASSERT_NE(id, -1);
    for (const QString &name : { u"LedgerSansMono"_s, u"Ledger Sans Mono"_s })
        EXPECT_EQ(faceNamed(name), "Ledger Sans Mono/Book");
    ASSERT_TRUE(QFontDatabase::removeApplicationFont(id));
    for (const QString &name : { u"LedgerSansMono"_s, u"Ledger Sans Mono"_s })
        EXPECT_EQ(fontWithName(name, 12), std::nullopt);
}

TEST(NSFont, names_can_be_looked_up_from_several_threads)
{
    const auto lookUp = [] {
        for (int i = 0; i < 100; ++i) {
            EXPECT_EQ(fontWithName(u"Inter-Bold"_s, 12)->weight(), QFont::Bold);
            EXPECT_FALSE(fontWithName(u"None%1"_s.arg(i), 12));
        }
    };
    std::jthread other(lookUp);
    lookUp();
}

TEST(NSFontManager, the_face_that_is_shown_counts_and_not_the_one_asked_for)
{
    QFont font(u"DejaVu Sans"_s);
    font.setWeight(QFont::DemiBold); // drawn with the face Bold
    EXPECT_EQ(FontManager::weight(font), QFont::Bold);
    EXPECT_EQ(FontManager::convertWeight(font, WeightDirection::heavier), font);
    EXPECT_EQ(face(FontManager::convertWeight(font, WeightDirection::lighter)), "DejaVu Sans/Book");
    EXPECT_EQ(FontManager::weights(font), (QList<int> { 200, 400, 700 }));
    // An alias of a family, and a list that begins with a missing family.
    for (const QStringList &families :
         { QStringList { u"monospace"_s }, QStringList { u"Nobody"_s, u"DejaVu Sans Mono"_s } }) {
        const QFont regular(families);
        const QFont bold = FontManager::convertToHaveTrait(regular, FontTraitMask::bold);
        EXPECT_EQ(FontManager::weight(bold), QFont::Bold);
        EXPECT_EQ(QFontInfo(bold).family(), QFontInfo(regular).family());
        EXPECT_EQ(bold.families(), families);
    }
}

TEST(NSFontManager, a_condensed_font_stays_condensed)
{
    QFont pinned(u"DejaVu Sans"_s);
    pinned.setStyleName(u"Condensed"_s); // like a font dialog
    const QFont wide = QFont(u"DejaVu Sans"_s);
    for (const QFont &font : { pinned, fontWithName(u"DejaVuSansCondensed"_s, 12).value() }) {
        const QFont bold = FontManager::convertWeight(font, WeightDirection::heavier);
        EXPECT_EQ(face(bold), "DejaVu Sans/CondensedBold");
        EXPECT_EQ(face(FontManager::convertToHaveTrait(bold, FontTraitMask::italic)),
                  "DejaVu Sans/CondensedBoldOblique");
        EXPECT_EQ(face(FontManager::convertToHaveTrait(bold, FontTraitMask::unbold)),
                  "DejaVu Sans/Condensed");
    }
    EXPECT_EQ(face(FontManager::convertWeight(wide, WeightDirection::heavier)), "DejaVu Sans/Bold");
}

TEST(NSFontManager, the_trait_bits_have_their_values)
{
    EXPECT_EQ(quint32(FontTraitMask::italic), 1U);
    EXPECT_EQ(quint32(FontTraitMask::bold), 2U);
    EXPECT_EQ(quint32(FontTraitMask::unbold), 4U);
    EXPECT_EQ(quint32(FontTraitMask::unitalic), 0x1000000U);
}

} // namespace NS
