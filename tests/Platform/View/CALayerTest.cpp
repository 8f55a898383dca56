// SPDX-License-Identifier: MIT
#include "Pictures.h"

#include <pellarvine/Platform/NSView+Layer.h>
#include <pellarvine/Platform/NSView.h>

#include <QPainter>
#include <QSignalSpy>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

std::shared_ptr<CA::Layer> makeLayer(const QRectF &frame, const QColor &color)
{
    auto layer = std::make_shared<CA::Layer>();
    layer->setFrame(frame);
    layer->setBackgroundColor(color);
    return layer;
}

// A view that draws a dot in its middle and lays out a layer.
class Dotted : public QWidget
{
    Q_OBJECT

public:
    Q_INVOKABLE void performLayout()
    {
        if (line)
            line->setFrame(QRectF(0, 0, width(), 1));
    }
    std::shared_ptr<CA::Layer> line;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(width() / 2, height() / 2, 1, 1, Qt::black);
    }
};

} // namespace

TEST(Layer, frames_count_upwards_and_edges_are_sharp_at_every_scale)
{
    QWidget widget;
    widget.resize(20, 10);
    NS::setWantsLayer(&widget, true);
    NS::layer(&widget)->setBackgroundColor(Qt::white);
    NS::layer(&widget)->addSublayer(makeLayer({ 3, 0, 5, 1 }, Qt::red));
    for (const int scale : { 1, 2 }) {
        const QImage image = picture(widget, scale);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const bool isLine = QRect(3 * scale, 9 * scale, 5 * scale, scale).contains(x, y);
                ASSERT_EQ(image.pixelColor(x, y), isLine ? QColor(Qt::red) : QColor(Qt::white))
                        << x << ' ' << y << " at " << scale;
            }
        }
    }
}

TEST(Layer, a_line_is_equally_thick_wherever_it_lies)
{
    for (const double scale : { 1.0, 1.25, 1.5, 1.75, 2.0, 3.0 }) {
        for (int y = 0; y < 40; ++y) {
            QWidget widget;
            widget.resize(20, 40);
            NS::setWantsLayer(&widget, true);
            NS::layer(&widget)->addSublayer(makeLayer(QRectF(0, y, 20, 1), Qt::red));
            const QImage image = picture(widget, scale);
            int thickness = 0;
            for (int i = 0; i < image.height(); ++i)
                thickness += image.pixelColor(3, i) == QColor(Qt::red);
            EXPECT_EQ(thickness, int(scale)) << scale << " at " << y;
        }
    }
}

TEST(Layer, half_a_unit_is_one_pixel_of_a_2x_screen)
{
    QWidget widget;
    widget.resize(20, 10);
    NS::setWantsLayer(&widget, true);
    NS::layer(&widget)->addSublayer(makeLayer({ 0, 0, 20, 0.5 }, Qt::red));
    const QImage image = picture(widget, 2);
    EXPECT_EQ(image.pixelColor(7, 19), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(7, 18), ground);
}

TEST(Layer, round_corners_are_clear_and_cut_off_the_sublayers)
{
    QWidget widget;
    widget.resize(40, 40);
    NS::setWantsLayer(&widget, true);
    const auto layer = NS::layer(&widget);
    layer->setBackgroundColor(Qt::white);
    layer->setCornerRadius(12);
    layer->addSublayer(makeLayer({ 0, 20, 40, 20 }, Qt::red));
    for (const int scale : { 1, 2 }) {
        const QImage image = picture(widget, scale);
        const int last = image.width() - 1;
        for (const QPoint corner :
             { QPoint(0, 0), QPoint(last, 0), QPoint(0, last), QPoint(last, last) })
            EXPECT_EQ(image.pixelColor(corner), ground) << scale;
        EXPECT_EQ(image.pixelColor(last / 2, 0), QColor(Qt::red)) << scale;
        EXPECT_EQ(image.pixelColor(last / 2, last), QColor(Qt::white)) << scale;
    }
    layer->setCornerRadius(-3);
    EXPECT_EQ(picture(widget, 1).pixelColor(0, 0), QColor(Qt::red));
    layer->setCornerRadius(1000); // a circle, no more
    EXPECT_EQ(picture(widget, 1).pixelColor(20, 38), QColor(Qt::white));
    EXPECT_EQ(picture(widget, 1).pixelColor(4, 4), ground);
}

TEST(Layer, sublayers_lie_in_their_superlayer_and_the_last_one_in_front)
{
    QWidget widget;
    widget.resize(20, 20);
    NS::setWantsLayer(&widget, true);
    const auto box = makeLayer({ 10, 10, 10, 10 }, QColor());
    const auto back = makeLayer({ 0, 0, 4, 4 }, Qt::red);
    const auto front = makeLayer({ 2, 0, 4, 4 }, Qt::blue);
    NS::layer(&widget)->addSublayer(box);
    box->addSublayer(back);
    box->addSublayer(front);
    EXPECT_EQ(picture(widget, 1).pixelColor(10, 9), QColor(Qt::red));
    EXPECT_EQ(picture(widget, 1).pixelColor(12, 9), QColor(Qt::blue));
    EXPECT_EQ(picture(widget, 1).pixelColor(18, 2), ground);
    box->addSublayer(back);
    EXPECT_EQ(picture(widget, 1).pixelColor(12, 9), QColor(Qt::red));
    EXPECT_EQ(box->sublayers(), (QList<std::shared_ptr<CA::Layer>> { front, back }));
}

TEST(Layer, a_detached_layer_is_kept_by_whoever_holds_it)
{
    const auto top = std::make_shared<CA::Layer>();
    const auto held = makeLayer({ 1, 2, 3, 4 }, Qt::red);
    std::weak_ptr<CA::Layer> loose = makeLayer({}, Qt::red);
    {
        const auto passing = makeLayer({}, Qt::red);
        loose = passing;
        top->addSublayer(passing);
    }
    top->addSublayer(held);
    EXPECT_EQ(held->superlayer(), top.get());
    held->removeFromSuperlayer();
    held->removeFromSuperlayer();
    EXPECT_EQ(held->superlayer(), nullptr);
    EXPECT_EQ(held->frame(), QRectF(1, 2, 3, 4));
    loose.lock()->removeFromSuperlayer();
    EXPECT_TRUE(loose.expired());
    EXPECT_TRUE(top->sublayers().isEmpty());

    auto passing = std::make_shared<CA::Layer>();
    passing->addSublayer(held);
    passing.reset();
    EXPECT_EQ(held->superlayer(), nullptr);
}

TEST(Layer, changes_in_the_tree_are_reported_once_at_the_root)
{
    const auto top = std::make_shared<CA::Layer>();
    const auto box = std::make_shared<CA::Layer>();
    const auto leaf = std::make_shared<CA::Layer>();
    top->addSublayer(box);
    box->addSublayer(leaf);
    QSignalSpy told(top.get(), &CA::Layer::needsDisplay);
    QSignalSpy colors(leaf.get(), &CA::Layer::backgroundColorChanged);
    leaf->setBackgroundColor(Qt::red);
    leaf->setBackgroundColor(Qt::red);
    EXPECT_EQ(told.count(), 1);
    EXPECT_EQ(colors.count(), 1);
    leaf->setFrame({ 0, 0, 1, 1 });
    leaf->setCornerRadius(2);
    box->removeFromSuperlayer();
    EXPECT_EQ(told.count(), 4);
    leaf->setCornerRadius(3);
    EXPECT_EQ(told.count(), 4);
}

TEST(Layer, a_widget_draws_over_its_layer_which_follows_its_size)
{
    Dotted widget;
    widget.resize(20, 10);
    EXPECT_FALSE(NS::wantsLayer(&widget));
    EXPECT_EQ(NS::layer(&widget), nullptr);
    NS::setWantsLayer(&widget, true);
    const auto layer = NS::layer(&widget);
    layer->setBackgroundColor(Qt::white);
    NS::setWantsLayer(&widget, true);
    EXPECT_EQ(NS::layer(&widget), layer);
    widget.resize(60, 30);
    EXPECT_EQ(picture(widget, 1).pixelColor(30, 15), QColor(Qt::black));
    EXPECT_EQ(picture(widget, 1).pixelColor(59, 29), QColor(Qt::white));
    NS::setWantsLayer(&widget, false);
    EXPECT_FALSE(NS::wantsLayer(&widget));
    EXPECT_EQ(picture(widget, 1).pixelColor(59, 29), ground);
}

TEST(Layer, a_picture_shows_what_the_layout_pass_made_of_the_layers)
{
    Dotted widget;
    widget.resize(20, 10);
    NS::setNeedsLayout(&widget);
    NS::setWantsLayer(&widget, true);
    widget.line = makeLayer({}, Qt::red);
    NS::layer(&widget)->addSublayer(widget.line);
    EXPECT_EQ(picture(widget, 1).pixelColor(19, 9), QColor(Qt::red));
    widget.resize(40, 20);
    EXPECT_EQ(picture(widget, 1).pixelColor(39, 19), QColor(Qt::red));
}

#include "CALayerTest.moc"
