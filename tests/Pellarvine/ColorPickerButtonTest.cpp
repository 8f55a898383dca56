// SPDX-License-Identifier: MIT
#include "DragAndDrop.h"
#include "Named.h"

#include <pellarvine/Pellarvine/ColorPickerButton.h>
#include <pellarvine/Pellarvine/ColorPickerButtonCell.h>
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSGraphicsContext.h>
#include <pellarvine/Platform/NSPopover.h>
#include <pellarvine/Platform/NSView.h>
#include <pellarvine/Shared/Binding.h>

#include <QAction>
#include <QClipboard>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

#include <set>

using namespace Qt::StringLiterals;
using Pellarvine::ColorPickerButton;
using Pellarvine::ColorPickerButtonCell;

static_assert(!std::is_constructible_v<ColorPickerButton, QRectF>);

namespace {

class Shape : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QColor fill MEMBER fill NOTIFY changed)

public:
    QColor fill;

Q_SIGNALS:
    void changed();
};

// Counts the changes that it observes.
class Button : public ColorPickerButton
{
public:
    using ColorPickerButton::ColorPickerButton;

    void observeValue(const QString &keyPath, QObject *object,
                      const NS::KeyValueChange *change) override
    {
        ++observations;
        ColorPickerButton::observeValue(keyPath, object, change);
    }

    int observations = 0;
};

class ColorPickerButtonTest : public testing::Test
{
public:
    ColorPickerButtonTest()
    {
        window.resize(600, 500);
        button->setGeometry(20, 200, 48, 32);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    ~ColorPickerButtonTest() override
    {
        delete button;
        delete panel();
    }

    static NS::ColorPanel *panel() { return NS::ColorPanel::sharedColorPanel(); }
    static QWidget *wheel()
    {
        return named<QWidget>(panel()->contentView(), u"Hue and saturation"_s);
    }
    NS::Popover *popover() const
    {
        const auto all = button->findChildren<NS::Popover *>();
        for (NS::Popover *const each : all) {
            if (each->isShown())
                return each;
        }
        return nullptr;
    }
    void press() { QTest::mouseClick(button, Qt::LeftButton); }
    // Clicks on the window beside the popover, which closes a transient popover.
    void clickElsewhere()
    {
        QTest::qWait(10); // the popover ignores the click that has opened it
        QTest::mouseClick(&window, Qt::LeftButton, {}, { 590, 490 });
    }
    static void clickWheel(QPoint fromMiddle)
    {
        QTest::mouseClick(wheel(), Qt::LeftButton, {}, wheel()->rect().center() + fromMiddle);
    }

    QWidget window;
    Button *button = new Button(&window);
};

QImage drawnCell(ColorPickerButton &button, double scale)
{
    QImage image(QSize(40, 22) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const NS::GraphicsContext context(painter);
    button.cell()->drawInterior(QRectF(0, 0, 40, 22), &button);
    return image;
}

} // namespace

TEST_F(ColorPickerButtonTest, one_from_an_interface_file_shows_a_green_swatch)
{
    const std::unique_ptr<QObject> made(NS::makeObject(u"ColorPickerButton"_s));
    auto *const fromFile = qobject_cast<ColorPickerButton *>(made.get());
    ASSERT_TRUE(fromFile);
    EXPECT_EQ(fromFile->color(), QColor(0, 255, 0));
    fromFile->resize(fromFile->sizeHint());
    const QImage picture = fromFile->grab().toImage();
    EXPECT_EQ(picture.pixelColor(picture.rect().center()), QColor(0, 255, 0));
    EXPECT_FALSE(fromFile->viewController()->isViewLoaded());
    EXPECT_EQ(fromFile->viewController()->colorPanel(), nullptr);
}

TEST_F(ColorPickerButtonTest, a_press_opens_a_popover_with_the_wheel_and_the_opacity)
{
    button->setColor(QColor(10, 20, 30, 40));
    panel()->setMode(NS::ColorPanel::rgbMode);
    press();
    ASSERT_TRUE(popover());
    EXPECT_EQ(popover()->behavior(), NS::Popover::Behavior::transient);
    EXPECT_EQ(popover()->edge(), NS::RectEdge::maxX);
    EXPECT_EQ(popover()->positioningView(), &window);
    EXPECT_EQ(panel()->color(), QColor(10, 20, 30, 40));
    EXPECT_TRUE(panel()->showsAlpha());
    EXPECT_EQ(panel()->mode(), NS::ColorPanel::wheelMode);
    EXPECT_TRUE(wheel()->isVisible());
    EXPECT_NE(panel()->contentView()->window(), panel());
    EXPECT_EQ(button->viewController()->view(), panel()->contentView());
}

TEST_F(ColorPickerButtonTest, a_colour_chosen_in_the_popover_reaches_the_shape_at_once)
{
    Shape shape;
    const Pellarvine::Binding binding(button, u"color"_s, &shape, u"fill"_s);
    EXPECT_EQ(shape.fill, QColor(Qt::green));
    press();
    QSignalSpy changes(&shape, &Shape::changed);
    const QPoint middle = wheel()->rect().center();
    QTest::mousePress(wheel(), Qt::LeftButton, {}, middle + QPoint(500, 0));
    EXPECT_EQ(shape.fill.name(), u"#ff0000"_s);
    QTest::mouseMove(wheel(), middle + QPoint(-500, 0));
    EXPECT_EQ(shape.fill.name(), u"#00ffff"_s);
    QTest::mouseRelease(wheel(), Qt::LeftButton);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(ColorPickerButtonTest, after_closing_a_second_press_opens_a_new_popover)
{
    press();
    clickWheel({ 500, 0 });
    EXPECT_EQ(button->color().name(), u"#ff0000"_s);
    clickElsewhere();
    ASSERT_FALSE(popover());
    panel()->setColor(Qt::blue);
    EXPECT_EQ(button->color().name(), u"#ff0000"_s);
    EXPECT_EQ(button->observations, 1);
    EXPECT_EQ(panel()->contentView()->parentWidget(), panel());

    press();
    ASSERT_TRUE(popover());
    EXPECT_EQ(panel()->color(), button->color()); // not the colour that was chosen meanwhile
    button->observations = 0;
    clickWheel({ -500, 0 });
    EXPECT_EQ(button->color().name(), u"#00ffff"_s);
    EXPECT_EQ(button->observations, 1); // a press registers the button once, and closing removes it
    QTest::qWait(0);
    EXPECT_EQ(button->findChildren<NS::Popover *>().size(), 1); // the first popover was deleted
}

TEST_F(ColorPickerButtonTest, a_press_while_it_is_open_closes_it_and_leaves_nothing_behind)
{
    press();
    QTest::qWait(10);
    press();
    EXPECT_FALSE(popover());
    panel()->setColor(Qt::blue);
    EXPECT_EQ(button->observations, 0);
    QTest::qWait(10);
    press();
    EXPECT_TRUE(popover());
}

TEST_F(ColorPickerButtonTest, without_a_parent_it_follows_the_panel_and_opens_nothing)
{
    Button alone;
    alone.show();
    alone.buttonPressed();
    EXPECT_TRUE(alone.findChildren<NS::Popover *>().isEmpty());
    panel()->setColor(Qt::blue);
    EXPECT_EQ(alone.color(), QColor(Qt::blue));
    alone.popoverDidClose();
    panel()->setColor(Qt::red);
    EXPECT_EQ(alone.color(), QColor(Qt::blue));
}

TEST_F(ColorPickerButtonTest, the_floating_panel_gives_its_content_and_gets_it_back)
{
    panel()->orderFront();
    ASSERT_TRUE(panel()->isVisible());
    press();
    EXPECT_FALSE(panel()->isVisible());
    clickElsewhere();
    panel()->orderFront();
    EXPECT_EQ(panel()->contentView()->window(), panel());
    EXPECT_TRUE(wheel()->isVisible());
    press(); // the popover takes the content, although its view is already loaded
    EXPECT_TRUE(popover());
    EXPECT_FALSE(panel()->isVisible());
}

TEST_F(ColorPickerButtonTest, buttons_share_the_panel_but_not_their_colours)
{
    auto *const other = new Button(&window);
    other->setGeometry(20, 300, 48, 32);
    other->setColor(Qt::blue);
    other->show();
    press();
    QTest::qWait(10);
    QTest::mouseClick(other, Qt::LeftButton);
    EXPECT_FALSE(popover());
    clickWheel({ 500, 0 });
    EXPECT_EQ(button->color(), QColor(Qt::green));
    EXPECT_EQ(other->color().name(), u"#ff0000"_s);
    QPointer<QWidget> content = panel()->contentView();
    delete other; // while its popover is open
    EXPECT_TRUE(content);
    QTest::qWait(10);
    press();
    EXPECT_TRUE(popover());
    EXPECT_EQ(panel()->contentView(), content);
    EXPECT_TRUE(wheel()->isVisible());
}

TEST_F(ColorPickerButtonTest, the_swatch_keeps_three_units_from_the_frame)
{
    EXPECT_EQ(ColorPickerButtonCell::swatchRect({ 0, 0, 40, 22 }, {}), QRectF(3.5, 3, 33, 15));
    // left, top, right, bottom
    EXPECT_EQ(ColorPickerButtonCell::swatchRect({ 10, 20, 40, 32 }, { 1, 2, 3, 4 }),
              QRectF(14.5, 25, 29, 19));
}

TEST_F(ColorPickerButtonTest, the_swatch_is_as_wide_as_it_should_be_at_either_scale)
{
    button->setColor(QColor(200, 100, 50));
    ASSERT_TRUE(NS::alignmentRectInsets(button).isNull());
    const QImage plain = drawnCell(*button, 1);
    EXPECT_EQ(plain.pixelColor(20, 10), QColor(200, 100, 50));
    EXPECT_EQ(plain.pixelColor(2, 10).alpha(), 0);
    EXPECT_NEAR(plain.pixelColor(3, 10).alpha(), 127, 20); // half of the pixel
    EXPECT_NEAR(plain.pixelColor(36, 10).alpha(), 127, 20);
    EXPECT_EQ(plain.pixelColor(37, 10).alpha(), 0);
    EXPECT_EQ(plain.pixelColor(20, 2).alpha(), 0);
    EXPECT_EQ(plain.pixelColor(20, 3).alpha(), 255);
    EXPECT_EQ(plain.pixelColor(20, 17).alpha(), 255);
    EXPECT_EQ(plain.pixelColor(20, 18).alpha(), 0);
    EXPECT_LT(plain.pixelColor(3, 3).alpha(), 30); // round

    // The rim is half a unit wide, 20 % darker, and inside of the swatch.
    const QImage dense = drawnCell(*button, 2);
    EXPECT_EQ(dense.pixelColor(40, 20), QColor(200, 100, 50));
    EXPECT_EQ(dense.pixelColor(6, 20).alpha(), 0);
    EXPECT_NEAR(dense.pixelColor(7, 20).red(), 160, 2);
    EXPECT_EQ(dense.pixelColor(8, 20), QColor(200, 100, 50));
    EXPECT_NEAR(dense.pixelColor(72, 20).red(), 160, 2);
    EXPECT_EQ(dense.pixelColor(73, 20).alpha(), 0);
    EXPECT_NEAR(dense.pixelColor(40, 6).red(), 160, 2);
    EXPECT_EQ(dense.pixelColor(40, 5).alpha(), 0);
}

TEST_F(ColorPickerButtonTest, a_checkerboard_shows_through_a_transparent_colour)
{
    const auto tones = [this](const QColor &color) {
        button->setColor(color);
        const QImage picture = drawnCell(*button, 1);
        std::set<QRgb> found;
        for (int x = 6; x < 34; ++x)
            found.insert(picture.pixel(x, 10));
        return found;
    };
    EXPECT_EQ(tones(QColor(255, 0, 0)).size(), 1U);
    EXPECT_GE(tones(QColor(255, 0, 0, 128)).size(), 2U);
    const auto clear = tones(QColor(255, 0, 0, 0));
    EXPECT_EQ(clear.count(qRgb(255, 255, 255)), 1U);
    for (const QRgb tone : clear)
        EXPECT_EQ(qRed(tone), qBlue(tone));
}

TEST_F(ColorPickerButtonTest, a_cell_in_another_button_draws_nothing_and_warns_each_time)
{
    NS::Button other(u"Save"_s);
    other.resize(80, 32);
    const QImage withText = other.grab().toImage();
    other.setCell(new ColorPickerButtonCell);
    testing::internal::CaptureStdout();
    const QImage without = other.grab().toImage();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Warning: ColorPickerButtonCell without ColorPickerButton as control view!\n");
    other.setCell(new NS::ButtonCell);
    EXPECT_EQ(other.grab().toImage(), withText);
    EXPECT_NE(without, withText);
    QPushButton bare; // the style draws the bezel
    bare.resize(80, 32);
    EXPECT_EQ(without, bare.grab().toImage());
    bare.setText(u"Save"_s);
    EXPECT_EQ(withText, bare.grab().toImage());
}

TEST_F(ColorPickerButtonTest, colours_are_copied_pasted_and_dropped)
{
    QSignalSpy changes(button, &ColorPickerButton::colorChanged);
    QApplication::clipboard()->setText(u"#8e44ad80"_s);
    QTest::keySequence(button, QKeySequence::Paste);
    EXPECT_EQ(button->color(), QColor(0x8e, 0x44, 0xad, 0x80));
    QTest::keySequence(button, QKeySequence::Copy);
    EXPECT_EQ(QApplication::clipboard()->text(), u"#8E44AD80"_s);
    EXPECT_EQ(QApplication::clipboard()->mimeData()->colorData().value<QColor>(), button->color());
    QApplication::clipboard()->setText(u"violet, more or less"_s);
    QTest::keySequence(button, QKeySequence::Paste);
    QMimeData data;
    EXPECT_FALSE(isWelcome(*button, data));
    data.setColorData(QColor(Qt::yellow));
    EXPECT_TRUE(drop(*button, data));
    EXPECT_EQ(button->color(), QColor(Qt::yellow));
    EXPECT_TRUE(drop(*button, data)); // no change
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(ColorPickerButtonTest, the_default_colour_can_be_restored)
{
    button->resetColor(); // no default colour is set
    EXPECT_EQ(button->color(), QColor(Qt::green));
    button->setDefaultColor(Qt::blue);
    press();
    ASSERT_TRUE(popover());
    QTest::mouseClick(named<QAbstractButton>(panel()->contentView(), u"Default"_s), Qt::LeftButton);
    EXPECT_EQ(button->color(), QColor(Qt::blue));
    clickElsewhere();
    EXPECT_FALSE(panel()->defaultColor().isValid()); // it belonged to the button
    button->setColor(Qt::red);
    button->resetColor();
    EXPECT_EQ(button->color(), QColor(Qt::blue));
    EXPECT_EQ(panel()->recentColors(), QList<QColor> { Qt::blue });
}

TEST_F(ColorPickerButtonTest, style_sheets_change_its_bevel_and_not_the_swatch)
{
    button->setColor(Qt::red);
    button->setStyleSheet(u"background: yellow; border: 2px solid blue"_s);
    const QImage seen = button->grab().toImage();
    EXPECT_EQ(seen.pixelColor(24, 0), QColor(Qt::blue));
    EXPECT_EQ(seen.pixelColor(2, 16), QColor(Qt::yellow));
    EXPECT_EQ(seen.pixelColor(24, 16), QColor(Qt::red));
}

TEST_F(ColorPickerButtonTest, a_press_without_a_click_closes_another_buttons_popover_first)
{
    auto *const other = new Button(&window);
    other->setGeometry(20, 300, 48, 32);
    other->setColor(Qt::blue);
    other->show();
    button->click(); // like a screen reader, without a click that closes the popover
    ASSERT_TRUE(popover());
    other->click();
    EXPECT_FALSE(popover());
    EXPECT_EQ(button->color(), QColor(Qt::green));
    EXPECT_EQ(other->color(), QColor(Qt::blue));
    clickWheel({ 500, 0 });
    EXPECT_EQ(button->color(), QColor(Qt::green));
    EXPECT_EQ(other->color().name(), u"#ff0000"_s);
    other->click(); // opens its own popover
    other->observations = 0;
    clickWheel({ -500, 0 });
    EXPECT_EQ(other->observations, 1);
    clickElsewhere();
    panel()->setColor(Qt::black);
    EXPECT_EQ(other->color().name(), u"#00ffff"_s);
    delete other;
}

TEST_F(ColorPickerButtonTest, escape_in_the_hex_field_keeps_the_colour)
{
    press();
    auto *const hex = named<QLineEdit>(panel()->contentView(), u"Hexadecimal colour"_s);
    hex->setFocus();
    hex->selectAll();
    QTest::keyClicks(hex, u"ff0"_s);
    QTest::keyClick(hex, Qt::Key_Escape);
    ASSERT_TRUE(popover()); // the first Esc only restores the text
    QTest::keyClicks(hex, u"ff"_s);
    popover()->close();
    EXPECT_EQ(button->color(), QColor(Qt::green));
}

TEST_F(ColorPickerButtonTest, keys_and_screen_readers_press_it)
{
    QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(button);
    EXPECT_EQ(interface->role(), QAccessible::ButtonDropDown);
    EXPECT_EQ(interface->text(QAccessible::Name), u"Colour"_s);
    EXPECT_EQ(interface->text(QAccessible::Value), u"#00FF00"_s);
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(popover());
    popover()->close();
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_TRUE(popover());
}

TEST_F(ColorPickerButtonTest, screen_readers_and_tool_tips_tell_the_colour)
{
    QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(button);
    const auto toolTip = [this] {
        QHelpEvent event(QEvent::ToolTip, { 4, 4 }, button->mapToGlobal(QPoint(4, 4)));
        QApplication::sendEvent(button, &event);
        return QToolTip::text();
    };
    EXPECT_EQ(interface->text(QAccessible::Description), u"#00FF00"_s);
    button->setColor(QColor(0x2e, 0xcc, 0x71));
    EXPECT_EQ(interface->text(QAccessible::Description), u"Emerald, #2ECC71"_s);
    EXPECT_EQ(toolTip(), u"Emerald, #2ECC71"_s);
    button->setAccessibleDescription(u"Of the shape"_s);
    button->setToolTip(u"Choose a colour"_s);
    button->setColor(QColor(1, 2, 3, 4));
    EXPECT_EQ(interface->text(QAccessible::Description), u"Of the shape, #01020304"_s);
    EXPECT_EQ(toolTip(), u"Choose a colour"_s); // the program's tool tip is kept
    QToolTip::hideText();
}

TEST_F(ColorPickerButtonTest, functions_that_need_the_panel_stop_the_program_before_it_is_made)
{
    EXPECT_DEATH(button->popoverDidClose(), "no color panel");
    EXPECT_DEATH(button->observeValue({}, nullptr, nullptr), "no color panel");
}

#include "ColorPickerButtonTest.moc"
