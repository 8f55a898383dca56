// SPDX-License-Identifier: MIT
#include "Pictures.h"

#include <pellarvine/Pellarvine/BorderView.h>
#include <pellarvine/Platform/NSView+Layer.h>
#include <pellarvine/Platform/NSView.h>

#include <QSignalSpy>
#include <gtest/gtest.h>

#include <type_traits>

using Pellarvine::BorderView;

static_assert(!std::is_constructible_v<BorderView, QRectF>);

namespace {

// The default lines over the default background.
const QColor line(0xbf, 0xbf, 0xbf);

class View : public BorderView
{
public:
    View() { resize(100, 40); }

    void setBorders(bool left, bool right, bool top, bool bottom)
    {
        setHasLeftBorder(left);
        setHasRightBorder(right);
        setHasTopBorder(top);
        setHasBottomBorder(bottom);
        NS::layoutSubtreeIfNeeded(this);
    }
};

qsizetype inkIn(const QImage &image)
{
    qsizetype inked = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            inked += image.pixelColor(x, y) == line;
    }
    return inked;
}

} // namespace

TEST(BorderView, starts_white_and_without_lines)
{
    View view;
    EXPECT_TRUE(NS::wantsLayer(&view));
    EXPECT_EQ(view.backgroundColor(), QColor(Qt::white));
    EXPECT_EQ(view.borderColor(), QColor::fromRgbF(0, 0, 0, 0.25F));
    EXPECT_EQ(view.leftLayer()->backgroundColor(), view.borderColor());
    EXPECT_TRUE(NS::layer(&view)->sublayers().isEmpty());
    expectFilled(picture(view, 1), view.rect(), Qt::white);
}

TEST(BorderView, the_four_lines_do_not_overlap)
{
    View view;
    view.setBorders(true, true, true, true);
    EXPECT_EQ(view.leftLayer()->frame(), QRectF(0, 0, 1, 40));
    EXPECT_EQ(view.rightLayer()->frame(), QRectF(99, 0, 1, 40));
    EXPECT_EQ(view.topLayer()->frame(), QRectF(1, 39, 98, 1));
    EXPECT_EQ(view.bottomLayer()->frame(), QRectF(1, 0, 98, 1));
    for (const int scale : { 1, 2 }) {
        const QImage image = picture(view, scale);
        expectFilled(image, { 0, 0, 1, 40 }, line);
        expectFilled(image, { 99, 0, 1, 40 }, line);
        expectFilled(image, { 1, 0, 98, 1 }, line);
        expectFilled(image, { 1, 39, 98, 1 }, line);
        expectFilled(image, { 1, 1, 98, 38 }, Qt::white);
    }
}

TEST(BorderView, lines_are_equally_thick_on_every_side_and_place_of_every_screen)
{
    for (const double scale : { 1.0, 1.25, 1.5, 1.75, 2.0, 3.0 }) {
        for (int place = 0; place < 12; ++place) {
            QWidget window;
            window.resize(80, 80);
            View view;
            view.setParent(&window);
            view.setGeometry(2 + place, 2 + place, 40 + place, 40 + place % 5);
            view.setBorders(true, true, true, true);
            const QImage image = picture(window, scale);
            const QRect rect = pixelsOf(view.geometry(), scale);
            const int thickness = int(scale);
            SCOPED_TRACE(testing::Message() << scale << " at " << place);
            expectOutline(image, rect, line, thickness);
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const QColor color = image.pixelColor(x, y);
                    ASSERT_TRUE(color == ground || color == line || color == Qt::white)
                            << "lines cover each other, or blend";
                }
            }
            const qsizetype inked = inkIn(image);
            EXPECT_EQ(inked, 2 * thickness * (rect.width() + rect.height() - 2 * thickness));

            QWidget child(&view);
            child.setAutoFillBackground(true);
            child.setGeometry(view.rect().adjusted(1, 1, -1, -1));
            EXPECT_EQ(inkIn(picture(window, scale)), inked) << "a child covers a part of a line";
        }
    }
}

TEST(BorderView, each_flag_shows_its_own_edge_across_the_whole_side)
{
    struct Case
    {
        const char *flag;
        QRect line;
    };
    for (const auto &[flag, edge] :
         { Case { "hasLeftBorder", { 0, 0, 1, 40 } }, Case { "hasRightBorder", { 99, 0, 1, 40 } },
           Case { "hasTopBorder", { 0, 0, 100, 1 } },
           Case { "hasBottomBorder", { 0, 39, 100, 1 } } }) {
        SCOPED_TRACE(flag);
        View view;
        ASSERT_TRUE(view.setProperty(flag, true));
        EXPECT_TRUE(view.property(flag).toBool());
        for (const int scale : { 1, 2 }) {
            const QImage image = picture(view, scale);
            expectFilled(image, edge, line);
            const QRect inside = view.rect().adjusted(1, 1, -1, -1);
            expectFilled(image, inside, Qt::white);
        }
    }
}

TEST(BorderView, clearing_a_flag_detaches_the_line_at_once_and_its_neighbours_grow)
{
    View view;
    view.setBorders(true, true, true, true);
    view.setHasLeftBorder(false);
    EXPECT_EQ(view.leftLayer()->superlayer(), nullptr);
    EXPECT_TRUE(NS::needsLayout(&view));
    NS::layoutSubtreeIfNeeded(&view);
    EXPECT_EQ(view.topLayer()->frame(), QRectF(0, 39, 99, 1));
    EXPECT_EQ(view.bottomLayer()->frame(), QRectF(0, 0, 99, 1));
    view.resize(60, 20);
    view.setHasTopBorder(false);
    NS::layoutSubtreeIfNeeded(&view);
    EXPECT_EQ(view.rightLayer()->frame(), QRectF(59, 0, 1, 20));
    EXPECT_EQ(view.topLayer()->frame(), QRectF(0, 39, 99, 1))
            << "hidden lines stay where they were";
}

TEST(BorderView, lines_are_attached_before_anything_is_drawn)
{
    View view;
    view.setHasTopBorder(true);
    view.setBackgroundColor(Qt::yellow);
    const CA::Layer *const top = view.topLayer();
    EXPECT_EQ(top->superlayer(), NS::layer(&view).get());
    EXPECT_EQ(NS::layer(&view)->backgroundColor(), QColor(Qt::yellow));
    EXPECT_EQ(view.leftLayer()->superlayer(), nullptr);
}

TEST(BorderView, hidden_lines_take_a_new_colour_too)
{
    View view;
    view.setHasRightBorder(true);
    view.setBorderColor(Qt::red);
    view.setBackgroundColor(Qt::yellow);
    view.setBorders(false, true, false, true);
    const QImage image = picture(view, 1);
    expectFilled(image, { 99, 0, 1, 40 }, Qt::red);
    expectFilled(image, { 0, 39, 99, 1 }, Qt::red);
    expectFilled(image, { 0, 0, 99, 39 }, Qt::yellow);
}

TEST(BorderView, lines_follow_the_view_to_another_layer)
{
    View view;
    view.setBorders(true, false, false, true);
    NS::setWantsLayer(&view, false);
    EXPECT_EQ(view.leftLayer()->superlayer(), nullptr);
    view.setHasLeftBorder(true);
    view.setBackgroundColor(Qt::yellow);
    EXPECT_EQ(view.leftLayer()->superlayer(), nullptr) << "there is nothing to attach it to";
    NS::setWantsLayer(&view, true);
    EXPECT_TRUE(QMetaObject::invokeMethod(&view, "updateLayerVisibility"));
    EXPECT_EQ(NS::layer(&view)->sublayers().size(), 2);
    view.leftLayer()->removeFromSuperlayer();
    view.setHasLeftBorder(true);
    EXPECT_EQ(view.leftLayer()->superlayer(), NS::layer(&view).get());
}

TEST(BorderView, emits_its_signals_for_changes_only)
{
    View view;
    QSignalSpy flags(&view, &BorderView::hasTopBorderChanged);
    QSignalSpy backgrounds(&view, &BorderView::backgroundColorChanged);
    QSignalSpy borders(&view, &BorderView::borderColorChanged);
    for (int i = 0; i < 2; ++i) {
        view.setHasTopBorder(true);
        view.setBackgroundColor(Qt::red);
        view.setBorderColor(Qt::green);
    }
    EXPECT_EQ(flags.count(), 1);
    EXPECT_EQ(backgrounds.count(), 1);
    EXPECT_EQ(borders.count(), 1);
}

TEST(BorderView, the_palettes_colours_are_shown_only_where_asked_for)
{
    QPalette night;
    night.setColor(QPalette::Base, Qt::black);
    night.setColor(QPalette::Text, Qt::white);
    View view;
    view.setHasLeftBorder(true);
    view.setPalette(night);
    expectFilled(picture(view, 1), { 1, 0, 99, 40 }, Qt::white);
    view.setUsesPaletteColors(true);
    expectFilled(picture(view, 1), { 1, 0, 99, 40 }, Qt::black);
    expectFilled(picture(view, 1), { 0, 0, 1, 40 }, QColor(0x40, 0x40, 0x40));
    night.setColor(QPalette::Base, Qt::darkBlue);
    view.setPalette(night);
    expectFilled(picture(view, 1), { 1, 0, 99, 40 }, Qt::darkBlue);
    view.setBackgroundColor(Qt::yellow);
    expectFilled(picture(view, 1), { 1, 0, 99, 40 }, Qt::darkBlue);
    view.setUsesPaletteColors(false);
    expectFilled(picture(view, 1), { 1, 0, 99, 40 }, Qt::yellow);
    expectFilled(picture(view, 1), { 0, 0, 1, 40 }, QColor(0xbf, 0xbf, 0x00));
}
