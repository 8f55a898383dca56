// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSColor.h>

#include <QDataStream>
#include <QIODevice>
#include <QVariant>
#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace NS {

using Pellarvine::HSBA;
using Pellarvine::RGBA;

static_assert(std::is_nothrow_copy_constructible_v<Color>);
static_assert(!std::is_convertible_v<QColor, Color>, "the edge to QColor is visible in the code");
static_assert(Color({ .red = 0.25 }) == Color(RGBA { 0.25, 0, 0, 1 }));
static_assert(Color() == Color::black());

namespace {

void expectNear(const RGBA &actual, const RGBA &expected)
{
    constexpr double tolerance = 1e-12;
    EXPECT_NEAR(actual.red, expected.red, tolerance);
    EXPECT_NEAR(actual.green, expected.green, tolerance);
    EXPECT_NEAR(actual.blue, expected.blue, tolerance);
    EXPECT_EQ(actual.alpha, expected.alpha);
}

void expectNear(const HSBA &actual, const HSBA &expected)
{
    constexpr double tolerance = 1e-12;
    EXPECT_NEAR(actual.hue, expected.hue, tolerance);
    EXPECT_NEAR(actual.saturation, expected.saturation, tolerance);
    EXPECT_NEAR(actual.brightness, expected.brightness, tolerance);
    EXPECT_EQ(actual.alpha, expected.alpha);
}

// The corners of the hexcone, its middle, and colours between in each of its six sectors.
const std::pair<RGBA, HSBA> pairs[] = {
    { { 0, 0, 0, 1 }, { 0, 0, 0, 1 } },
    { { 1, 1, 1, 1 }, { 0, 0, 1, 1 } },
    { { 0.5, 0.5, 0.5, 0.25 }, { 0, 0, 0.5, 0.25 } },
    { { 1, 0, 0, 1 }, { 0, 1, 1, 1 } },
    { { 1, 1, 0, 1 }, { 1 / 6.0, 1, 1, 1 } },
    { { 0, 1, 0, 1 }, { 2 / 6.0, 1, 1, 1 } },
    { { 0, 1, 1, 1 }, { 3 / 6.0, 1, 1, 1 } },
    { { 0, 0, 1, 1 }, { 4 / 6.0, 1, 1, 1 } },
    { { 1, 0, 1, 1 }, { 5 / 6.0, 1, 1, 1 } },
    { { 0.8, 0.4, 0.2, 1 }, { 1 / 18.0, 0.75, 0.8, 1 } },
    { { 0.4, 0.8, 0.2, 1 }, { 5 / 18.0, 0.75, 0.8, 1 } },
    { { 0.2, 0.8, 0.4, 1 }, { 7 / 18.0, 0.75, 0.8, 1 } },
    { { 0.2, 0.4, 0.8, 1 }, { 11 / 18.0, 0.75, 0.8, 1 } },
    { { 0.4, 0.2, 0.8, 1 }, { 13 / 18.0, 0.75, 0.8, 1 } },
    { { 0.8, 0.2, 0.4, 0 }, { 17 / 18.0, 0.75, 0.8, 0 } },
    // Out of range: brighter than white, and a component below zero.
    { { 2, 1, 1, 1 }, { 0, 0.5, 2, 1 } },
    { { 1, -0.5, 0, 1 }, { 17 / 18.0, 1.5, 1, 1 } },
};

} // namespace

TEST(NSColor, rgb_and_hsb_are_converted_both_ways)
{
    for (const auto &[rgba, hsba] : pairs) {
        SCOPED_TRACE(testing::Message() << rgba.red << ' ' << rgba.green << ' ' << rgba.blue);
        expectNear(Color(rgba).hsba(), hsba);
        expectNear(Color(hsba).rgba(), rgba);
    }
}

TEST(NSColor, a_hue_is_an_angle)
{
    for (const double turns : { -2.0, -1.0, 1.0, 5.0 })
        expectNear(Color(HSBA { 0.3 + turns, 0.5, 0.9, 1 }).rgba(),
                   Color(HSBA { 0.3, 0.5, 0.9, 1 }).rgba());
    EXPECT_EQ(Color(HSBA { 1, 1, 1, 1 }), Color(RGBA { 1, 0, 0, 1 }));
    // Hues so close to a whole turn that a double cannot represent the difference.
    for (const double blue : { 1e-15, 1e-17, 1e-300 })
        EXPECT_LT(Color(RGBA { 1, 0, blue, 1 }).hsba().hue, 1) << blue;
}

TEST(NSColor, every_byte_survives_QColor_exactly)
{
    for (int byte = 0; byte < 256; ++byte) {
        const QColor color(byte, 255 - byte, byte, byte);
        const Color converted(color);
        ASSERT_EQ(converted.rgba().red, byte / 255.0);
        ASSERT_EQ(converted.rgba().alpha, byte / 255.0);
        ASSERT_EQ(converted.toQColor(), color);
    }
}

TEST(NSColor, reads_a_QColor_of_any_spec)
{
    expectNear(Color(QColor::fromHsvF(0.5F, 1, 1)).rgba(), { 0, 1, 1, 1 });
    expectNear(Color(QColor::fromCmykF(0, 1, 1, 0)).rgba(), { 1, 0, 0, 1 });
    EXPECT_EQ(Color(QColor()), Color::black());
    QColor extended = QColor::fromRgbF(1.5F, -0.5F, 0);
    ASSERT_EQ(extended.spec(), QColor::ExtendedRgb);
    expectNear(Color(extended).rgba(), { 1.5, -0.5, 0, 1 });
}

TEST(NSColor, is_clamped_and_rounded_only_on_the_way_to_QColor)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Color(RGBA { 2, -1, 0.5, 1 }).toQColor(), QColor::fromRgba64(65535, 0, 32768));
    EXPECT_EQ(Color(RGBA { infinity, nan, -infinity, 1 }).toQColor(), QColor(255, 0, 0));
}

TEST(NSColor, equal_colours_are_equal_and_hash_alike)
{
    const Color color(RGBA { 0, 0.5, 1, 1 });
    const Color same(RGBA { -0.0, 0.5, 1, 1 });
    EXPECT_EQ(color, same);
    EXPECT_EQ(qHash(color, 7), qHash(same, 7));
    EXPECT_NE(color, Color(RGBA { 0, std::nextafter(0.5, 1), 1, 1 }));
}

TEST(NSColor, lives_in_a_QVariant)
{
    const Color color(RGBA { 0.1, 0.2, 0.3, 0.4 });
    const QVariant variant = QVariant::fromValue(color);
    EXPECT_EQ(variant, QVariant::fromValue(Color(color.rgba())));
    EXPECT_EQ(QByteArray(variant.typeName()), "NS::Color");
    EXPECT_TRUE(QMetaType::fromName("NS::Color").isValid());
    EXPECT_EQ(variant.value<QColor>(), color.toQColor());
    EXPECT_EQ(QVariant(QColor(255, 0, 0)).value<Color>(), Color({ .red = 1 }));

    QByteArray bytes;
    QDataStream output(&bytes, QIODevice::WriteOnly);
    output << variant;
    QDataStream input(bytes);
    QVariant read;
    input >> read;
    EXPECT_EQ(read, variant);

    QString text;
    QDebug(&text) << variant;
    EXPECT_TRUE(text.contains(u"NS::Color(0.1, 0.2, 0.3, 0.4)"_s)) << qPrintable(text);
}

} // namespace NS
