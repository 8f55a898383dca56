// SPDX-License-Identifier: MIT
#include "Pictures.h"

#include <pellarvine/Pellarvine/InspectorSectionTableCellView.h>
#include <pellarvine/Pellarvine/InspectorSectionView.h>
#include <pellarvine/Pellarvine/StyleKit.h>
#include <pellarvine/Pellarvine/ToolBarView.h>
#include <pellarvine/Platform/NSGraphicsContext.h>

#include <QAccessible>
#include <QPainter>
#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace Pellarvine;

namespace {

const QColor gray(0x80, 0x80, 0x80);
const QColor lightGray(0xaa, 0xaa, 0xaa);

QPalette night()
{
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::black);
    palette.setColor(QPalette::Text, Qt::white);
    return palette;
}

// The image of that size that `draw` draws, with y upwards.
QImage drawing(const QSize &size, const std::function<void()> &draw)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    painter.translate(0, size.height());
    painter.scale(1, -1);
    const NS::GraphicsContext context(painter);
    draw();
    return image;
}

} // namespace

TEST(StyleKit, a_tool_bar_is_a_line_at_the_lower_edge_of_its_frame_and_white_above_it)
{
    const QImage image = drawing({ 60, 50 }, [] { StyleKit::drawToolbar({ 10, 5, 40, 30 }); });
    expectFilled(image, { 10, 44, 40, 1 }, gray);
    expectFilled(image, { 10, 15, 40, 29 }, Qt::white);
    expectFilled(image, { 0, 0, 60, 15 }, ground);
    expectFilled(image, { 0, 45, 60, 5 }, ground);
    expectFilled(image, { 0, 0, 10, 50 }, ground);
    expectFilled(image, { 50, 0, 10, 50 }, ground);
}

TEST(StyleKit, the_line_of_a_tool_bar_is_equally_thick_wherever_the_bar_lies)
{
    for (const double scale : { 1.0, 1.25, 1.5, 1.75, 2.0, 3.0 }) {
        for (int height = 20; height < 32; ++height) {
            QWidget window;
            window.resize(40, 60);
            ToolBarView bar;
            bar.setParent(&window);
            bar.setGeometry(0, height / 3, 40, height);
            const QImage image = picture(window, scale);
            int line = 0;
            int paper = 0;
            for (int y = 0; y < image.height(); ++y) {
                line += image.pixelColor(9, y) == gray;
                paper += image.pixelColor(9, y) == QColor(Qt::white);
            }
            EXPECT_EQ(line, int(scale)) << scale << " at " << height;
            EXPECT_NEAR(line + paper, height * scale, 1) << "no gap between them";
        }
    }
}

TEST(StyleKit, an_inspector_section_is_a_lighter_line_and_nothing_else)
{
    const QImage image = drawing({ 60, 50 }, [] {
        StyleKit::drawInspectorSection({ 10, 5, 40, 30 });
    });
    expectFilled(image, { 10, 44, 40, 1 }, lightGray);
    expectFilled(image, { 0, 0, 60, 44 }, ground);
    expectFilled(image, { 0, 45, 60, 5 }, ground);
}

TEST(StyleKit, a_palette_of_black_and_white_gives_the_fixed_colours)
{
    QPalette day;
    day.setColor(QPalette::Base, Qt::white);
    day.setColor(QPalette::Text, Qt::black);
    const QRectF frame(0, 1, 20, 9);
    const QImage bar = drawing({ 20, 10 }, [&] { StyleKit::drawToolbar(frame, true, day); });
    expectFilled(bar, { 0, 0, 20, 8 }, Qt::white);
    const QImage line = drawing({ 20, 10 }, [&] {
        StyleKit::drawToolbar({ 0, 0, 20, 10 });
        StyleKit::drawToolbar(frame, false, day);
        StyleKit::drawInspectorSection({ 0, 5, 20, 5 }, day);
    });
    expectFilled(line, { 0, 8, 20, 1 }, gray);
    expectFilled(line, { 0, 4, 20, 1 }, lightGray);
}

TEST(StyleKit, without_a_context_there_is_a_warning_and_no_drawing)
{
    testing::internal::CaptureStdout();
    StyleKit::drawInspectorSection({ 0, 0, 10, 10 });
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Warning: there is no graphics context to draw into\n");
}

TEST(ToolBarView, draws_its_line_and_its_background_if_it_is_opaque)
{
    ToolBarView view;
    view.resize(300, 40);
    EXPECT_TRUE(view.opaqueBackground());
    for (const int scale : { 1, 2 }) {
        const QImage image = picture(view, scale);
        expectFilled(image, { 0, 39, 300, 1 }, gray);
        expectFilled(image, { 0, 0, 300, 39 }, Qt::white);
    }
    QSignalSpy changes(&view, &ToolBarView::opaqueBackgroundChanged);
    view.setOpaqueBackground(false);
    view.setOpaqueBackground(false);
    EXPECT_EQ(changes.count(), 1);
    for (const int scale : { 1, 2 }) {
        const QImage image = picture(view, scale);
        expectFilled(image, { 0, 39, 300, 1 }, gray);
        expectFilled(image, { 0, 0, 300, 39 }, ground);
    }
}

TEST(ToolBarView, is_all_line_where_there_is_no_room_for_more)
{
    ToolBarView view;
    view.resize(300, 1);
    expectFilled(picture(view, 1), view.rect(), gray);
    const QImage low = drawing({ 10, 10 }, [] { StyleKit::drawToolbar({ 0, 0, 10, 0 }); });
    expectFilled(low, { 0, 9, 10, 1 }, gray);
}

TEST(ToolBarView, draws_all_of_itself_whatever_rectangle_is_dirty)
{
    ToolBarView view;
    view.resize(30, 10);
    const QImage image = drawing({ 30, 10 }, [&] { view.draw({ 3, 3, 1, 1 }); });
    EXPECT_EQ(image, drawing({ 30, 10 }, [&] { view.draw({}); }));
    expectFilled(image, { 0, 9, 30, 1 }, gray);
    expectFilled(image, { 0, 0, 30, 9 }, Qt::white);
}

TEST(ToolBarView, is_a_tool_bar_to_a_screen_reader)
{
    ToolBarView bar;
    InspectorSectionView section;
    section.setAccessibleName(QStringLiteral("Stroke"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&bar)->role(), QAccessible::ToolBar);
    QAccessibleInterface *const group = QAccessible::queryAccessibleInterface(&section);
    EXPECT_EQ(group->role(), QAccessible::Grouping);
    EXPECT_EQ(group->text(QAccessible::Name), QStringLiteral("Stroke"));
}

template <typename View>
class Sections : public testing::Test
{ };
using SectionViews = testing::Types<InspectorSectionView, InspectorSectionTableCellView>;
TYPED_TEST_SUITE(Sections, SectionViews);

TYPED_TEST(Sections, draw_a_line_along_the_lower_edge_alone)
{
    TypeParam view;
    view.resize(80, 30);
    view.setPalette(night());
    for (const int scale : { 1, 2 }) {
        const QImage image = picture(view, scale);
        expectFilled(image, { 0, 29, 80, 1 }, lightGray);
        expectFilled(image, { 0, 0, 80, 29 }, ground);
    }
}

TYPED_TEST(Sections, take_the_palettes_colours_where_asked_for)
{
    QWidget paper;
    paper.resize(80, 30);
    paper.setAutoFillBackground(true);
    auto *const view = new TypeParam(&paper);
    view->resize(80, 30);
    QSignalSpy changes(view, &TypeParam::usesPaletteColorsChanged);
    view->setUsesPaletteColors(true);
    view->setUsesPaletteColors(true);
    EXPECT_EQ(changes.count(), 1);
    QPalette palette = night();
    palette.setColor(QPalette::Window, Qt::black);
    paper.setPalette(palette);
    const QImage image = paper.grab().toImage();
    expectFilled(image, { 0, 29, 80, 1 }, QColor(0x55, 0x55, 0x55));
    expectFilled(image, { 0, 0, 80, 29 }, Qt::black);
}

TEST(ToolBarView, takes_the_palettes_colours_where_asked_for)
{
    ToolBarView view;
    view.resize(80, 30);
    view.setPalette(night());
    expectFilled(picture(view, 1), { 0, 0, 80, 29 }, Qt::white);
    view.setUsesPaletteColors(true);
    expectFilled(picture(view, 1), { 0, 0, 80, 29 }, Qt::black);
}
