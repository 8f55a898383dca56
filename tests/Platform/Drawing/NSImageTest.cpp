// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSGraphicsContext.h>
#include <pellarvine/Platform/NSImage.h>
#include <pellarvine/Platform/NSShadow.h>

#include <QPainter>
#include <QPainterPath>
#include <QVariant>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <thread>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

QPainter &current()
{
    return *GraphicsContext::current();
}

QImage canvas(QSize size = { 100, 100 }, QColor color = Qt::white)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

} // namespace

TEST(NSImage, has_whole_pixels_and_keeps_its_size)
{
    const Image image({ 10.7, 5.2 }, [] {});
    EXPECT_EQ(image.bitmap().size(), QSize(10, 5));
    EXPECT_EQ(image.size(), QSizeF(10.7, 5.2));
    EXPECT_EQ(image.bitmap().pixelColor(0, 0), QColor(Qt::transparent));
    EXPECT_EQ(image.bitmap().format(), QImage::Format_RGBA8888_Premultiplied);
}

TEST(NSImage, a_size_without_a_bitmap_gives_an_empty_image_and_draws_nothing)
{
    const QSizeF sizes[] = { { 0, 0 },         { 10, 0 },        { 0.9, 10 },     { -4, 4 },
                             { 1e300, 1e300 }, { 40000, 1 },     { 1, 32768 },    { 30000, 30000 },
                             { nan, 10 },      { 10, infinity }, { -infinity, 1 } };
    for (const QSizeF &size : sizes) {
        bool hasRun = false;
        const Image image(size, [&] { hasRun = true; });
        EXPECT_TRUE(image.isEmpty()) << size.width() << " x " << size.height();
        EXPECT_EQ(image, Image());
        EXPECT_FALSE(hasRun);
    }
}

TEST(NSImage, is_drawn_from_the_lower_left)
{
    const Image image({ 10, 20 }, [] { current().fillRect(0, 0, 4, 6, Qt::red); });
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 10; ++x) {
            const bool isInside = x < 4 && y >= 14;
            ASSERT_EQ(image.bitmap().pixelColor(x, y) == QColor(Qt::red), isInside)
                    << x << ' ' << y;
        }
    }
}

TEST(NSImage, text_and_pictures_can_be_drawn_upright)
{
    QImage picture = canvas({ 8, 8 }, Qt::blue);
    picture.setPixelColor(0, 0, Qt::yellow); // marks the upper left
    const Image source(picture);
    const Image image({ 20, 20 }, [&] { source.draw({ 4, 2, 8, 8 }); });
    EXPECT_EQ(image.bitmap().pixelColor(4, 10), QColor(Qt::yellow));
    EXPECT_EQ(image.bitmap().pixelColor(11, 17), QColor(Qt::blue));
    EXPECT_EQ(image.bitmap().pixelColor(4, 9), QColor(Qt::transparent));

    // The picture is also upright on a widget's painter, whose y points downwards.
    QImage screen = canvas();
    QPainter painter(&screen);
    const GraphicsContext context(painter);
    source.draw({ 4, 2, 8, 8 });
    EXPECT_EQ(screen.pixelColor(4, 2), QColor(Qt::yellow));
}

TEST(NSImage, leaves_the_context_before_it_as_it_was)
{
    QImage screen = canvas();
    QPainter outer(&screen);
    const GraphicsContext context(outer);
    outer.setPen(Qt::green);
    const QTransform before = outer.worldTransform();
    const auto spoil = [&] {
        EXPECT_NE(&current(), &outer);
        current().setPen(Qt::red);
        outer.setPen(Qt::red);
        outer.translate(5, 5);
        outer.setClipRect(0, 0, 1, 1);
    };
    const Image image({ 4, 4 }, [&] {
        spoil();
        // An image can be drawn while another one is drawn.
        QPainter *const inner = &current();
        const Image nested({ 2, 2 }, spoil);
        EXPECT_EQ(&current(), inner);
    });
    EXPECT_THROW(Image({ 4, 4 },
                       [&] {
                           spoil();
                           throw std::runtime_error("no data");
                       }),
                 std::runtime_error);
    EXPECT_EQ(&current(), &outer);
    EXPECT_EQ(outer.pen().color(), QColor(Qt::green));
    EXPECT_EQ(outer.worldTransform(), before);
    EXPECT_FALSE(outer.hasClipping());
}

TEST(NSImage, converts_to_and_from_QImage_in_a_QVariant)
{
    QImage picture = canvas({ 8, 6 }, Qt::blue);
    picture.setDevicePixelRatio(2);
    const auto image = QVariant(picture).value<Image>();
    EXPECT_EQ(image.size(), QSizeF(4, 3));
    EXPECT_EQ(QVariant::fromValue(image).value<QImage>(), picture);
    EXPECT_EQ(QVariant::fromValue(image), QVariant::fromValue(Image(picture)));
    EXPECT_FALSE(image == Image(picture, { 8, 6 }));
}

TEST(NSGraphicsContext, belongs_to_its_thread)
{
    QImage screen = canvas();
    QPainter painter(&screen);
    EXPECT_EQ(GraphicsContext::current(), nullptr);
    {
        const GraphicsContext context(painter);
        std::jthread([] { EXPECT_EQ(GraphicsContext::current(), nullptr); }).join();
        EXPECT_EQ(GraphicsContext::current(), &painter);
    }
    EXPECT_EQ(GraphicsContext::current(), nullptr);
}

namespace {

// How dark a black shadow on white is at a point, 0…1.
double darkness(const QImage &image, int x, int y)
{
    return 1 - image.pixelColor(x, y).redF();
}

QImage shadowOf(const QRectF &rect, const Shadow &shadow, double scale = 1)
{
    QImage image = canvas(QSize(200, 200) * scale);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    QPainterPath path;
    path.addRect(rect);
    shadow.draw(painter, path);
    return image;
}

} // namespace

TEST(NSShadow, falls_off_like_a_gaussian)
{
    // The edge of a wide shape is the integral of a Gaussian whose deviation is half the radius.
    const double deviation = 10;
    for (const int scale : { 1, 2 }) {
        const QImage image = shadowOf({ -400, -400, 500, 1000 },
                                      Shadow(Color::black(), { 0, 0 }, 2 * deviation), scale);
        for (int x = 70; x <= 130; x += 5) {
            const double distance = x + 0.5 / scale - 100;
            const double expected = 0.5 * std::erfc(distance / (deviation * std::sqrt(2)));
            EXPECT_NEAR(darkness(image, x * scale, 100 * scale), expected, 0.02) << x;
        }
    }
}

TEST(NSShadow, lies_in_the_middle_whatever_its_radius)
{
    for (const double radius : { 4.0, 5.0, 7.0, 7.3 }) {
        for (const int scale : { 1, 2 }) {
            const QImage image =
                    shadowOf({ 60, 70, 80, 60 }, Shadow(Color::black(), { 0, 0 }, radius), scale);
            // A shadow is symmetric in both directions.
            EXPECT_EQ(image, image.mirrored(true, true)) << radius << " at " << scale;
        }
    }
}

TEST(NSShadow, an_offset_points_to_the_right_and_upwards)
{
    const QRectF rect(50, 50, 40, 40);
    const QImage sharp = shadowOf(rect, Shadow(Color::black(), { 30, -20 }, 0));
    EXPECT_EQ(darkness(sharp, 81, 71), 1);
    EXPECT_EQ(darkness(sharp, 79, 71), 0);
    EXPECT_EQ(darkness(sharp, 118, 108), 1);
    EXPECT_EQ(darkness(sharp, 118, 111), 0);

    // The same on a painter whose y points upwards.
    const Image image({ 200, 200 }, [&] {
        QPainterPath path;
        path.addRect(rect);
        Shadow(Color::black(), { 30, -20 }, 8).draw(current(), path);
    });
    // The middle of the shape is at (70, 70) from the lower left, and the shadow's is 20 lower.
    EXPECT_EQ(image.bitmap().pixelColor(100, 200 - 50), QColor(Qt::black));
    EXPECT_EQ(image.bitmap().pixelColor(100, 200 - 95), QColor(Qt::transparent));
}

TEST(NSShadow, takes_its_colour_and_opacity)
{
    const QImage image =
            shadowOf({ 50, 50, 100, 100 }, Shadow(Color({ .red = 1, .alpha = 0.5 }), { 0, 0 }, 4));
    const QColor middle = image.pixelColor(100, 100);
    EXPECT_NEAR(middle.redF(), 1, 0.01);
    EXPECT_NEAR(middle.greenF(), 0.5, 0.01);
    EXPECT_EQ(image.pixelColor(20, 20), QColor(Qt::white));
}

TEST(NSShadow, stays_within_the_clip_and_leaves_the_painter_as_it_was)
{
    QImage image = canvas({ 200, 200 });
    QPainter painter(&image);
    painter.setClipRect(0, 0, 100, 200);
    painter.rotate(10);
    const QTransform before = painter.worldTransform();
    QPainterPath path;
    path.addEllipse(60, 60, 90, 60);
    Shadow(Color::black(), { 0, 0 }, 20).draw(painter, path);
    EXPECT_EQ(painter.worldTransform(), before);
    EXPECT_GT(darkness(image, 95, 110), 0.8);
    EXPECT_EQ(darkness(image, 105, 110), 0);
}

TEST(NSShadow, extreme_values_draw_something_or_nothing_but_return)
{
    for (const double radius : { -1.0, 0.001, 1e300, infinity, nan })
        shadowOf({ 50, 50, 40, 40 }, Shadow(Color::black(), { 0, 0 }, radius));
    for (const QRectF &rect :
         { QRectF(), QRectF(0, 0, 1e7, 1e7), QRectF(-1e300, 0, 1e300, 1), QRectF(nan, 0, 10, 10) })
        shadowOf(rect, Shadow(Color::black(), { 3, 3 }, 8));
    const QImage far = shadowOf({ 0, 0, 9, 9 }, Shadow(Color::black(), { infinity, nan }, 8));
    EXPECT_EQ(far, canvas({ 200, 200 }));
}

} // namespace NS
