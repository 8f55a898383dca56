// SPDX-License-Identifier: MIT
#include "Pictures.h"

#include <pellarvine/Pellarvine/SolidView.h>
#include <pellarvine/Platform/NSView+Layer.h>

#include <QSignalSpy>
#include <gtest/gtest.h>

#include <functional>

using Pellarvine::SolidView;

TEST(SolidView, draws_nothing_until_it_has_a_layer)
{
    SolidView view;
    view.resize(20, 20);
    EXPECT_FALSE(NS::wantsLayer(&view));
    expectFilled(picture(view, 1), view.rect(), ground);
}

TEST(SolidView, each_way_of_using_it_gives_it_a_layer_and_only_a_colour_fills_that)
{
    const std::tuple<const char *, std::function<void(SolidView &)>, QColor> cases[] = {
        { "colour", [](SolidView &view) { view.setBackgroundColor(Qt::white); }, Qt::white },
        { "palette", [](SolidView &view) { view.setUsesPaletteColors(true); }, Qt::white },
        { "radius", [](SolidView &view) { view.setRadius(0); }, ground },
        { "awakeFromNib", [](SolidView &view) { QMetaObject::invokeMethod(&view, "awakeFromNib"); },
          ground },
        { "prepareForInterfaceBuilder",
          [](SolidView &view) { QMetaObject::invokeMethod(&view, "prepareForInterfaceBuilder"); },
          ground },
    };
    for (const auto &[name, use, fill] : cases) {
        SCOPED_TRACE(name);
        SolidView view;
        view.resize(20, 20);
        QPalette day;
        day.setColor(QPalette::Base, Qt::white);
        view.setPalette(day);
        use(view);
        EXPECT_TRUE(NS::wantsLayer(&view));
        expectFilled(picture(view, 1), view.rect(), fill);
        view.setBackgroundColor(Qt::white);
        expectFilled(picture(view, 1), view.rect(), Qt::white);
    }
}

TEST(SolidView, style_sheets_change_nothing_but_the_palettes_colour)
{
    SolidView view;
    view.resize(20, 20);
    view.setStyleSheet(QStringLiteral("background: red; border: 2px solid blue; padding: 4px"));
    expectFilled(picture(view, 1), view.rect(), ground);
    view.setBackgroundColor(Qt::green);
    expectFilled(picture(view, 1), view.rect(), Qt::green);
    view.setUsesPaletteColors(true);
    expectFilled(picture(view, 1), view.rect(), Qt::red);
}

TEST(SolidView, round_corners_are_clear_at_every_scale)
{
    SolidView view;
    view.resize(60, 40);
    view.setRadius(6);
    view.setBackgroundColor(Qt::red);
    EXPECT_EQ(NS::layer(&view)->cornerRadius(), 6);
    for (const int scale : { 1, 2 }) {
        const QImage image = picture(view, scale);
        for (const QPoint corner : { QPoint(0, 0), QPoint(59, 0), QPoint(0, 39), QPoint(59, 39) })
            expectFilled(image, { corner, QSize(1, 1) }, ground);
        expectFilled(image, { 6, 0, 48, 40 }, Qt::red);
        expectFilled(image, { 0, 6, 60, 28 }, Qt::red);
    }
}

TEST(SolidView, keeps_its_own_colour_unless_the_palettes_is_asked_for)
{
    SolidView view;
    view.resize(20, 20);
    view.setBackgroundColor(Qt::red);
    QPalette night;
    night.setColor(QPalette::Base, Qt::darkBlue);
    view.setPalette(night);
    expectFilled(picture(view, 1), view.rect(), Qt::red);
    view.setUsesPaletteColors(true);
    expectFilled(picture(view, 1), view.rect(), Qt::darkBlue);
    night.setColor(QPalette::Base, Qt::black);
    view.setPalette(night);
    expectFilled(picture(view, 1), view.rect(), Qt::black);
    EXPECT_EQ(view.backgroundColor(), QColor(Qt::red));
}

TEST(SolidView, emits_its_signals_for_changes_only)
{
    SolidView view;
    QSignalSpy colors(&view, &SolidView::backgroundColorChanged);
    QSignalSpy radii(&view, &SolidView::radiusChanged);
    for (const double radius : { 0.0, 4.0, 4.0 }) {
        view.setRadius(radius);
        view.setBackgroundColor(Qt::blue);
    }
    EXPECT_EQ(colors.count(), 1);
    EXPECT_EQ(radii.count(), 1);
}
