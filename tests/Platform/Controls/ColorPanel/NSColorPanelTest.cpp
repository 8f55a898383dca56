// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/ScreenColorPicker.h"
#include "DragAndDrop.h"
#include "Drawing/Shades.h"
#include "Named.h"
#include "Pictures.h"

#include <pellarvine/Platform/NSColorList.h>
#include <pellarvine/Platform/NSColorPanel.h>
#include <pellarvine/Shared/NSColor+Color.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QSet>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWindow>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using NS::ColorPanel;

namespace {

class ColorPanelTest : public testing::Test
{
public:
    ColorPanelTest() { panel->orderFront(); }
    ~ColorPanelTest() override { delete panel; }

    template <typename Widget>
    Widget *find(const QString &name)
    {
        return named<Widget>(panel->contentView(), name);
    }
    QLineEdit *hex() { return find<QLineEdit>(u"Hexadecimal colour"_s); }
    QWidget *wheel() { return find<QWidget>(u"Hue and saturation"_s); }

    void enterHex(const QString &text)
    {
        hex()->selectAll();
        QTest::keyClicks(hex(), text);
        QTest::keyClick(hex(), Qt::Key_Return);
    }

    ColorPanel *panel = ColorPanel::sharedColorPanel();
};

} // namespace

TEST_F(ColorPanelTest, the_shared_panel_is_made_by_the_first_call)
{
    EXPECT_EQ(ColorPanel::sharedColorPanel(), panel);
    EXPECT_TRUE(ColorPanel::sharedColorPanelExists());
    delete panel;
    EXPECT_FALSE(ColorPanel::sharedColorPanelExists());
    panel = ColorPanel::sharedColorPanel();
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(ColorPanelTest, the_wheel_reports_every_movement_of_the_mouse)
{
    QSignalSpy reports(panel, &ColorPanel::colorChanged);
    const QPoint middle = wheel()->rect().center();
    QTest::mousePress(wheel(), Qt::LeftButton, {}, middle + QPoint(40, 0));
    const QColor reddish = panel->color();
    EXPECT_GT(reddish.red(), reddish.green());
    EXPECT_NEAR(reddish.green(), reddish.blue(), 8);
    QTest::mouseMove(wheel(), middle + QPoint(0, -40)); // a quarter turn, to yellow-green
    EXPECT_EQ(reports.count(), 2);
    EXPECT_NEAR(panel->color().hueF(), 0.25, 0.01);
    QTest::mouseMove(wheel(), middle + QPoint(-4000, 0)); // on the edge of the disc
    EXPECT_NEAR(panel->color().hueF(), 0.5, 0.01);
    EXPECT_EQ(panel->color().saturation(), 255);
    QTest::mouseRelease(wheel(), Qt::LeftButton, {}, middle);
    QTest::mouseMove(wheel(), middle);
    EXPECT_EQ(reports.count(), 3);
}

TEST_F(ColorPanelTest, the_wheel_obeys_the_arrow_keys)
{
    panel->setColor(Qt::red);
    QTest::keyClick(wheel(), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_NEAR(panel->color().hue(), 10, 1); // as exact as 8 bits per component allow
    QTest::keyClick(wheel(), Qt::Key_Left);
    EXPECT_NEAR(panel->color().hue(), 9, 1);
    QTest::keyClick(wheel(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_NEAR(panel->color().saturationF(), 0.9, 0.005);
    QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(wheel());
    EXPECT_EQ(interface->text(QAccessible::Value), u"Hue 9°, saturation 90 %"_s);
    interface->valueInterface()->setCurrentValue(180);
    EXPECT_EQ(panel->color().hue(), 180);
}

TEST_F(ColorPanelTest, greys_and_black_keep_the_hue_and_saturation_that_they_do_not_show)
{
    panel->setColor(QColor::fromHsv(200, 255, 255));
    auto *const brightness = find<QSlider>(u"Brightness"_s);
    brightness->setValue(0);
    EXPECT_EQ(panel->color(), QColor(Qt::black));
    brightness->setValue(100);
    EXPECT_EQ(panel->color().hue(), 200);
    EXPECT_EQ(panel->color().saturation(), 255);
    for (int i = 0; i < 10; ++i)
        QTest::keyClick(wheel(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(panel->color(), QColor(Qt::white));
    QTest::keyClick(wheel(), Qt::Key_Right, Qt::ShiftModifier); // changes the hue, not the colour
    QTest::keyClick(wheel(), Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_NEAR(panel->color().hue(), 210, 2);
    for (int i = 0; i < 9; ++i)
        QTest::keyClick(wheel(), Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_NEAR(panel->color().hue(), 210, 1); // not the hue of a paler colour
}

TEST_F(ColorPanelTest, each_slider_and_each_field_sets_its_component)
{
    struct Row
    {
        ColorPanel::Mode mode;
        QString name;
        int value;
        QColor color;
    };
    panel->setShowsAlpha(true);
    const QColor start = QColor::fromRgb(51, 102, 204); // 220°, 75 %, 80 %
    const Row rows[] = {
        { ColorPanel::rgbMode, u"Red"_s, 17, QColor(17, 102, 204) },
        { ColorPanel::rgbMode, u"Green"_s, 18, QColor(51, 18, 204) },
        { ColorPanel::rgbMode, u"Blue"_s, 19, QColor(51, 102, 19) },
        { ColorPanel::hsbMode, u"Hue"_s, 100, QColor::fromHsvF(100 / 360.0F, 0.75F, 0.8F) },
        { ColorPanel::hsbMode, u"Saturation"_s, 0, QColor(204, 204, 204) },
        { ColorPanel::hsbMode, u"Brightness"_s, 100, QColor(64, 128, 255) },
        { ColorPanel::wheelMode, u"Brightness"_s, 0, QColor(Qt::black) },
        { ColorPanel::wheelMode, u"Opacity"_s, 20, QColor(51, 102, 204, 51) },
    };
    for (const auto &[mode, name, value, color] : rows) {
        panel->setMode(mode);
        const auto expectColor = [&, &expected = color, &component = name] {
            EXPECT_EQ(panel->color().rgba(), expected.rgba()) << component.toStdString();
            panel->setColor(start);
        };
        panel->setColor(start);
        find<QSlider>(name)->setValue(value);
        expectColor();
        find<QSpinBox>(name)->setValue(value);
        expectColor();
    }
}

TEST_F(ColorPanelTest, sliders_and_fields_end_at_the_same_place)
{
    panel->setShowsAlpha(true);
    for (const auto mode : { ColorPanel::wheelMode, ColorPanel::rgbMode, ColorPanel::hsbMode }) {
        panel->setMode(mode);
        QCoreApplication::processEvents();
        QSet<std::pair<int, int>> sliders;
        QSet<std::pair<int, int>> fields;
        const auto place = [this](const QWidget *widget) {
            const int left = widget->mapTo(panel->contentView(), QPoint()).x();
            return std::pair(left, left + widget->width());
        };
        for (const QSlider *const slider : panel->contentView()->findChildren<QSlider *>()) {
            if (slider->isVisible())
                sliders.insert(place(slider));
        }
        for (const QSpinBox *const field : panel->contentView()->findChildren<QSpinBox *>()) {
            if (field->isVisible())
                fields.insert(place(field));
        }
        EXPECT_EQ(sliders.size(), 1) << mode;
        EXPECT_EQ(fields.size(), 1) << mode;
    }
}

TEST_F(ColorPanelTest, fields_are_wide_enough_in_a_larger_font)
{
    panel->setMode(ColorPanel::hsbMode);
    const int height = hex()->sizeHint().height();
    QFont font = panel->font();
    font.setPointSizeF(2 * font.pointSizeF());
    QWidget window; // of which the content has the font while it is in a popover there
    window.setFont(font);
    QVBoxLayout layout(&window);
    layout.addWidget(panel->contentView());
    window.show();
    QCoreApplication::processEvents();
    QSet<int> widths;
    for (const QSpinBox *const field : panel->contentView()->findChildren<QSpinBox *>()) {
        EXPECT_GE(field->width(), field->sizeHint().width()) << qPrintable(field->accessibleName());
        if (field->isVisible())
            widths.insert(field->width());
    }
    EXPECT_EQ(widths.size(), 1);
    EXPECT_GT(hex()->sizeHint().height(), height);
    panel->reclaimContentView();
}

TEST_F(ColorPanelTest, a_slider_goes_where_it_is_pressed_in_either_direction_of_text)
{
    panel->setMode(ColorPanel::rgbMode);
    panel->setColor(Qt::black);
    auto *const red = find<QSlider>(u"Red"_s);
    const QPoint nearLeft(red->width() / 4, red->height() / 2);
    QTest::mousePress(red, Qt::LeftButton, {}, nearLeft);
    EXPECT_NEAR(panel->color().red(), 60, 15);
    QTest::mouseMove(red, { red->width() * 2, 0 });
    EXPECT_EQ(panel->color().red(), 255);
    QTest::mouseRelease(red, Qt::LeftButton);
    red->setLayoutDirection(Qt::RightToLeft);
    QTest::mouseClick(red, Qt::LeftButton, {}, nearLeft);
    EXPECT_NEAR(panel->color().red(), 195, 15);
    QTest::keyClick(red, Qt::Key_Home);
    EXPECT_EQ(panel->color().red(), 0);
}

TEST_F(ColorPanelTest, without_an_opacity_slider_every_colour_is_opaque)
{
    EXPECT_FALSE(find<QSlider>(u"Opacity"_s)->isVisible());
    panel->setColor(QColor(1, 2, 3, 4));
    EXPECT_EQ(panel->color(), QColor(1, 2, 3));
    panel->setShowsAlpha(true);
    EXPECT_TRUE(find<QSlider>(u"Opacity"_s)->isVisible());
    panel->setColor(QColor(1, 2, 3, 4));
    EXPECT_EQ(panel->color(), QColor(1, 2, 3, 4));
    panel->setShowsAlpha(false);
    EXPECT_EQ(panel->color(), QColor(1, 2, 3));
    panel->setColor(QColor());
    EXPECT_EQ(panel->color(), QColor(1, 2, 3));
}

TEST_F(ColorPanelTest, items_of_the_tool_bar_show_their_pages)
{
    QSignalSpy modes(panel, &ColorPanel::modeChanged);
    const QList<QAction *> items = panel->toolbar()->actions();
    ASSERT_EQ(items.size(), 3);
    items.at(1)->trigger();
    EXPECT_EQ(panel->mode(), ColorPanel::rgbMode);
    EXPECT_TRUE(find<QSlider>(u"Red"_s)->isVisible());
    EXPECT_FALSE(wheel()->isVisible());
    QTest::mouseClick(find<QAbstractButton>(u"HSB"_s), Qt::LeftButton);
    EXPECT_EQ(panel->mode(), ColorPanel::hsbMode);
    items.at(2)->trigger();
    items.at(1)->trigger(); // shows the sliders that were last used
    EXPECT_EQ(panel->mode(), ColorPanel::hsbMode);
    items.at(0)->trigger();
    EXPECT_EQ(panel->mode(), ColorPanel::wheelMode);
    EXPECT_TRUE(wheel()->isVisible());
    EXPECT_EQ(modes.count(), 5);
    const auto role = [](QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget)->role();
    };
    for (const QString &model : { u"RGB"_s, u"HSB"_s }) // one of a group
        EXPECT_EQ(role(find<QAbstractButton>(model)), QAccessible::RadioButton);
    for (QAction *const item : items) {
        QWidget *const page = panel->toolbar()->widgetForAction(item);
        EXPECT_EQ(role(page), QAccessible::RadioButton);
        QTest::mouseClick(page, Qt::LeftButton);
        EXPECT_TRUE(item->isChecked());
        QTest::mouseClick(page, Qt::LeftButton); // stays checked
        EXPECT_TRUE(item->isChecked());
    }
    panel->setMode(ColorPanel::colorListMode);
    EXPECT_TRUE(items.at(2)->isChecked());
}

TEST_F(ColorPanelTest, the_hex_field_reads_and_writes_what_the_library_does)
{
    for (const auto text : { u"0000ff", u"#1abc9c", u"fff", u" 12ABcd ", u"8E44AD80" }) {
        panel->setColor(Qt::gray);
        enterHex(QString::fromUtf16(text));
        const NS::Color read = *Pellarvine::colorWithHex(QString::fromUtf16(text).trimmed());
        QColor expected = read.toQColor();
        expected.setAlpha(255);
        EXPECT_EQ(panel->color(), expected) << QString::fromUtf16(text).toStdString();
        EXPECT_EQ(hex()->text(), Pellarvine::hexStringWithoutAlpha(NS::Color(expected)));
    }
    panel->setShowsAlpha(true);
    enterHex(u"#f00a"_s);
    EXPECT_EQ(hex()->text(), u"#FF0000AA"_s);
    EXPECT_EQ(panel->color(), QColor(255, 0, 0, 0xaa));
}

TEST_F(ColorPanelTest, wrong_hex_text_is_marked_and_explained_until_it_is_mended)
{
    panel->setColor(Qt::blue);
    for (const auto text : { u"no colour", u"12zzzz", u"0xff", u"12345", u"#", u"1234567890" }) {
        enterHex(QString::fromUtf16(text));
        EXPECT_EQ(panel->color(), QColor(Qt::blue)) << QString::fromUtf16(text).toStdString();
        EXPECT_EQ(hex()->text(), QString::fromUtf16(text)); // for the user to correct
        EXPECT_FALSE(hex()->toolTip().isEmpty());
        QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(hex());
        EXPECT_EQ(interface->text(QAccessible::Description), hex()->toolTip());
        enterHex(u"00f"_s);
        EXPECT_TRUE(hex()->toolTip().isEmpty());
        EXPECT_EQ(interface->text(QAccessible::Description), QString());
        EXPECT_EQ(hex()->text(), u"#0000FF"_s);
    }
}

TEST_F(ColorPanelTest, escape_takes_back_what_was_typed_before_it_closes_anything)
{
    panel->setColor(Qt::blue);
    hex()->setFocus();
    hex()->selectAll();
    QTest::keyClicks(hex(), u"ff0"_s);
    QTest::keyClick(hex(), Qt::Key_Escape);
    EXPECT_EQ(hex()->text(), u"#0000FF"_s);
    EXPECT_TRUE(panel->isVisible());
    hex()->selectAll();
    QTest::keyClicks(hex(), u"ff0"_s);
    panel->orderOut(); // while the field has an unfinished edit
    EXPECT_EQ(panel->color(), QColor(Qt::blue));
    panel->orderFront();
    EXPECT_EQ(hex()->text(), u"#0000FF"_s);
    QTest::keyClick(hex(), Qt::Key_Escape);
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(ColorPanelTest, the_palette_offers_the_nineteen_colours_and_keeps_the_opacity)
{
    panel->setMode(ColorPanel::colorListMode);
    panel->setShowsAlpha(true);
    panel->setColor(QColor(1, 2, 3, 51));
    auto *const tiles = find<QAbstractItemView>(u"Colours of Pellarvine"_s);
    ASSERT_EQ(tiles->model()->rowCount(), 19);
    const auto nameOf = [&](int row) {
        return tiles->model()->index(row, 0).data(Qt::AccessibleTextRole).toString();
    };
    EXPECT_EQ(nameOf(1), u"Green Sea"_s);
    tiles->setFocus();
    EXPECT_EQ(panel->color(), QColor(1, 2, 3, 51)); // the focus alone selects nothing
    QTest::mouseClick(tiles->viewport(), Qt::LeftButton, {},
                      tiles->visualRect(tiles->model()->index(0, 0)).center());
    EXPECT_EQ(panel->color(), QColor(26, 188, 156, 51));
    QTest::keyClick(tiles, Qt::Key_Right);
    EXPECT_EQ(panel->color(), QColor(22, 160, 133, 51));
    panel->setShowsAlpha(false);
    panel->setColor(QColor(127, 140, 141));
    EXPECT_EQ(nameOf(tiles->currentIndex().row()), u"Asbestos"_s);
    panel->setColor(Qt::red);
    EXPECT_FALSE(tiles->selectionModel()->hasSelection());
}

TEST_F(ColorPanelTest, lists_of_the_programs_own_can_be_chosen_from)
{
    const NS::Color espresso(QColor(75, 54, 33));
    NS::ColorList::add({ u"Café"_s, { { u"Espresso"_s, NS::Color() } } });
    NS::ColorList::add({ u"Café"_s, { { u"Espresso"_s, espresso } } }); // replaces the list
    EXPECT_EQ(NS::ColorList::availableColorLists().size(), 2);
    panel->setMode(ColorPanel::colorListMode);
    QTest::keyClick(panel->contentView()->findChild<QComboBox *>(), Qt::Key_Down);
    auto *const tiles = find<QAbstractItemView>(u"Colours of Café"_s);
    QTest::mouseClick(tiles->viewport(), Qt::LeftButton, {},
                      tiles->visualRect(tiles->model()->index(0, 0)).center());
    EXPECT_EQ(panel->color(), espresso.toQColor());
}

TEST_F(ColorPanelTest, colours_that_were_chosen_are_offered_again_and_so_is_the_default)
{
    auto *const recent = find<QListWidget>(u"Recent colours"_s);
    auto *const reset = find<QAbstractButton>(u"Default"_s);
    EXPECT_FALSE(recent->isVisible());
    EXPECT_FALSE(reset->isVisible());
    QSignalSpy changes(panel, &ColorPanel::recentColorsChanged);
    panel->setColor(Qt::red);
    panel->setColor(Qt::blue); // replaces red before the panel is closed
    panel->orderOut();
    panel->orderFront();
    panel->orderOut(); // nothing was chosen
    EXPECT_EQ(panel->recentColors(), QList<QColor> { Qt::blue });
    EXPECT_EQ(changes.count(), 1);
    panel->orderFront();
    panel->setColor(Qt::red);
    panel->orderOut();
    panel->orderFront();
    panel->setColor(Qt::black);
    ASSERT_EQ(recent->count(), 2);
    EXPECT_TRUE(recent->isVisible());
    QTest::mouseClick(recent->viewport(), Qt::LeftButton, {},
                      recent->visualItemRect(recent->item(1)).center());
    EXPECT_EQ(panel->color(), QColor(Qt::blue));

    panel->setDefaultColor(Qt::green);
    ASSERT_TRUE(reset->isVisible());
    QTest::mouseClick(reset, Qt::LeftButton);
    EXPECT_EQ(panel->color(), QColor(Qt::green));
    panel->setDefaultColor({});
    EXPECT_FALSE(reset->isVisible());

    QList<QColor> many { QColor(), Qt::red, Qt::red };
    for (int i = 0; i < 20; ++i)
        many.append(QColor(i, 0, 0));
    panel->setRecentColors(many);
    EXPECT_EQ(panel->recentColors().size(), 8);
    EXPECT_EQ(panel->recentColors().at(1), QColor(0, 0, 0));
    panel->addRecentColor(QColor(3, 0, 0));
    EXPECT_EQ(panel->recentColors().size(), 8);
    EXPECT_EQ(panel->recentColors().count(QColor(3, 0, 0)), 1);
}

TEST_F(ColorPanelTest, its_content_moves_out_and_back)
{
    QWidget container;
    container.show();
    QWidget *const content = panel->contentView();
    content->setParent(&container);
    EXPECT_FALSE(panel->isVisible()); // the empty panel is hidden
    content->show();
    QTest::keyClick(wheel(), Qt::Key_Up);
    EXPECT_NE(panel->color(), QColor(Qt::white));
    panel->orderFront();
    EXPECT_EQ(panel->contentView(), content);
    EXPECT_EQ(content->parentWidget(), panel);
    EXPECT_TRUE(content->isVisible());
    QTest::keyClick(panel, Qt::Key_Escape);
    EXPECT_FALSE(panel->isVisible());
    content->setParent(&container);
    panel->reclaimContentView();
    EXPECT_EQ(content->parentWidget(), panel);
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(ColorPanelTest, it_stays_above_the_window_that_it_was_asked_for_in)
{
    const auto open = [](QWidget &window) {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    };
    QWidget document;
    open(document);
    QWidget inspector(&document, Qt::Tool); // a window of the type that popovers have
    open(inspector);
    panel->orderFront();
    EXPECT_EQ(panel->windowHandle()->transientParent(), document.windowHandle());
    {
        QWidget other;
        open(other);
        panel->orderFront();
        EXPECT_EQ(panel->windowHandle()->transientParent(), other.windowHandle());
        EXPECT_TRUE(panel->isVisible());
    }
    EXPECT_TRUE(panel->isVisible()); // although that window was destroyed
    panel->orderFront(); // while the panel itself is active
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(ColorPanelTest, content_that_was_destroyed_elsewhere_is_made_anew)
{
    panel->setShowsAlpha(true);
    panel->setColor(QColor(1, 2, 3, 51));
    panel->setMode(ColorPanel::hsbMode);
    const QPointer<QWidget> former = panel->contentView();
    {
        QWidget container;
        former->setParent(&container);
    }
    ASSERT_TRUE(former.isNull());
    panel->orderFront();
    EXPECT_EQ(hex()->text(), u"#01020333"_s);
    EXPECT_TRUE(find<QSlider>(u"Hue"_s)->isVisible());
}

TEST_F(ColorPanelTest, everything_that_takes_the_focus_has_a_name)
{
    panel->setShowsAlpha(true);
    int controls = 0;
    const QList<QWidget *> widgets = panel->contentView()->findChildren<QWidget *>();
    for (QWidget *const widget : widgets) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy())
            continue;
        QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(widget);
        EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty())
                << widget->metaObject()->className();
        ++controls;
    }
    EXPECT_GE(controls, 20);
}

TEST_F(ColorPanelTest, a_colour_dropped_on_the_swatch_is_chosen)
{
    auto *const swatch = find<QWidget>(u"Chosen colour"_s);
    QMimeData data;
    data.setText(u"facade of a house"_s);
    EXPECT_FALSE(isWelcome(*swatch, data));
    data.setText(u"decide"_s); // has the form of a colour, without "#"
    EXPECT_FALSE(isWelcome(*swatch, data));
    data.setText(u" #8e44ad\n"_s);
    EXPECT_TRUE(drop(*swatch, data));
    EXPECT_EQ(panel->color(), QColor(0x8e, 0x44, 0xad));
    data.setColorData(QColor(Qt::yellow)); // preferred over the text
    EXPECT_TRUE(drop(*swatch, data));
    EXPECT_EQ(panel->color(), QColor(Qt::yellow));
}

TEST(ScreenColorPicker, the_loupe_goes_by_pixels_and_picks_the_one_in_its_middle)
{
    QImage screen(40, 20, QImage::Format_RGB32);
    screen.fill(Qt::black);
    screen.setPixelColor(12, 5, Qt::red);
    screen.setPixelColor(13, 6, Qt::green);
    NS::detail::ScreenColorPicker picker(screen, nullptr);
    picker.resize(40, 20);
    QSignalSpy finished(&picker, &NS::detail::ScreenColorPicker::finished);
    QTest::mouseMove(&picker, { 12, 5 });
    QTest::mouseClick(&picker, Qt::LeftButton, {}, { 12, 5 });
    QTest::keyClick(&picker, Qt::Key_Right);
    QTest::keyClick(&picker, Qt::Key_Down);
    QTest::keyClick(&picker, Qt::Key_Return);
    QTest::keyClick(&picker, Qt::Key_Escape);
    ASSERT_EQ(finished.count(), 3);
    EXPECT_EQ(finished.at(0).at(0).value<QColor>(), QColor(Qt::red));
    EXPECT_EQ(finished.at(1).at(0).value<QColor>(), QColor(Qt::green));
    EXPECT_FALSE(finished.at(2).at(0).value<QColor>().isValid());
}

TEST_F(ColorPanelTest, colours_have_sharp_outlines_at_every_scale)
{
    panel->setRecentColors({ Qt::red, Qt::green, Qt::blue });
    QWidget *const content = panel->contentView();
    auto *const recent = find<QListWidget>(u"Recent colours"_s);
    recent->clearSelection();
    const QColor edge = Pellarvine::detail::edgeColor(content->palette());
    for (const double scale : { 1.0, 1.25, 1.5, 1.75, 2.0, 3.0 }) {
        SCOPED_TRACE(scale);
        const QImage image = picture(*content, scale);
        const auto *const swatch = find<QWidget>(u"Chosen colour"_s);
        const QRect place(swatch->mapTo(content, QPoint()), swatch->size());
        expectOutline(image, pixelsOf(place, scale), edge, int(scale));
        for (int i = 0; i < recent->count(); ++i) {
            QRect tile = recent->visualItemRect(recent->item(i)).adjusted(3, 3, -3, -3);
            tile.translate(recent->viewport()->mapTo(content, QPoint()));
            expectOutline(image, pixelsOf(tile, scale), edge, int(scale));
        }
    }
}

TEST_F(ColorPanelTest, fields_are_mirrored_from_right_to_left_and_their_texts_are_not)
{
    wheel()->setFocus();
    panel->setColor(QColor(0x12, 0x34, 0x56));
    const auto textOf = [](QWidget *field) {
        const QImage image = field->grab(field->rect().adjusted(4, 4, -4, -4)).toImage();
        QRect inked;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != image.pixel(0, 0))
                    inked |= QRect(x, y, 1, 1);
            }
        }
        return std::pair(inked.center().x() < image.width() / 2, image.copy(inked));
    };
    auto *const number = find<QSpinBox>(u"Brightness"_s);
    const auto [isNumberLeft, numberText] = textOf(number);
    const auto [isHexLeft, hexText] = textOf(hex());
    EXPECT_FALSE(isNumberLeft);
    EXPECT_TRUE(isHexLeft);
    panel->setLayoutDirection(Qt::RightToLeft);
    QCoreApplication::processEvents();
    EXPECT_EQ(textOf(number), std::pair(true, numberText));
    EXPECT_EQ(textOf(hex()), std::pair(false, hexText));
}

TEST_F(ColorPanelTest, screen_readers_find_no_button_without_a_name)
{
    enterHex(u"12zzzz"_s); // shows the sign of an error
    const auto buttons = panel->contentView()->findChildren<QAbstractButton *>();
    for (QAbstractButton *const button : buttons) {
        QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(button);
        const bool isFound = button->isVisible() || interface->role() == QAccessible::RadioButton;
        EXPECT_TRUE(!isFound || !interface->text(QAccessible::Name).isEmpty())
                << button->metaObject()->className();
    }
}

TEST_F(ColorPanelTest, the_window_grows_and_shrinks_by_the_rows_that_come_and_go)
{
    const QSize wheelSize = wheel()->size();
    const QSize size = panel->size();
    panel->orderOut();
    panel->setRecentColors({ Qt::red });
    panel->orderFront();
    EXPECT_EQ(wheel()->size(), wheelSize);
    panel->setShowsAlpha(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(wheel()->size(), wheelSize);
    panel->resize(panel->size() + QSize(50, 40)); // by the user
    QCoreApplication::processEvents();
    panel->setShowsAlpha(false);
    panel->setRecentColors({});
    QCoreApplication::processEvents();
    EXPECT_EQ(panel->size(), size + QSize(50, 40));
}
