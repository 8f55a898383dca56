// SPDX-License-Identifier: MIT
#include "Window/PopoverPlacement.h"

#include <pellarvine/Platform/NSPopover.h>
#include <pellarvine/Platform/NSView.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>
#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;
using NS::Popover;
using NS::RectEdge;
using namespace Pellarvine::detail;

namespace {

NS::ViewController *controllerOf(QWidget *view)
{
    auto *const controller = new NS::ViewController;
    controller->setView(view);
    return controller;
}

// Handles posted events, and the events that these post.
void settle()
{
    QApplication::processEvents();
    QApplication::processEvents();
}

// A window with an opener in its middle, other things around, and a popover at the opener.
class Scene
{
public:
    explicit Scene(QWidget *content = nullptr, bool staysInWindow = false)
    {
        window.setGeometry(100, 100, 400, 400);
        button.setGeometry(150, 200, 100, 30);
        other.setGeometry(10, 350, 100, 30);
        field.setGeometry(200, 350, 100, 30);
        window.show();
        window.activateWindow();
        field.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        if (!content) {
            content = new QWidget;
            content->setFixedSize(120, 40);
        }
        popover.setContentViewController(controllerOf(content));
        popover.setStaysInWindow(staysInWindow);
        popover.setBehavior(Popover::Behavior::transient);
    }

    void show(RectEdge edge = RectEdge::maxY)
    {
        popover.showRelativeToRect({}, &button, edge);
        settle();
        // The offscreen platform activates each window that is shown, also one that refuses it.
        if (!QApplication::focusWidget())
            window.activateWindow();
        settle();
    }

    // Clicks on the window at the widget's middle, so that a widget above gets the click.
    void click(QWidget *widget)
    {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                          widget->mapTo(&window, widget->rect().center()));
        settle();
    }

    QWidget *content() const { return popover.contentViewController()->view(); }
    QWidget *bubble() const { return content()->parentWidget(); }
    QRect contentOnScreen() const
    {
        return { content()->mapToGlobal(QPoint()), content()->size() };
    }
    QRect buttonOnScreen() const { return { button.mapToGlobal(QPoint()), button.size() }; }

    QWidget window;
    QPushButton button { u"Open"_s, &window };
    QPushButton other { u"Other"_s, &window };
    QLineEdit field { &window };
    Popover popover;
};

class Asking : public Popover
{
public:
    bool mayClose = false;
    int closings = 0;

protected:
    bool popoverShouldClose() override { return mayClose; }
    void popoverDidClose() override { ++closings; }
};

} // namespace

// Placement, y downwards

TEST(PopoverPlacement, takes_the_preferred_edge_where_there_is_room)
{
    const QRectF room(0, 0, 800, 600);
    const QRectF anchor(400, 300, 40, 20);
    const QSizeF size(100, 50);
    EXPECT_EQ(placePopover(anchor, size, room, RectEdge::maxY).body, QRectF(370, 240, 100, 50));
    EXPECT_EQ(placePopover(anchor, size, room, RectEdge::minY).body, QRectF(370, 330, 100, 50));
    EXPECT_EQ(placePopover(anchor, size, room, RectEdge::minX).body, QRectF(290, 285, 100, 50));
    EXPECT_EQ(placePopover(anchor, size, room, RectEdge::maxX).body, QRectF(450, 285, 100, 50));
}

TEST(PopoverPlacement, flips_then_turns_then_covers_what_it_must)
{
    const QSizeF size(100, 50);
    const std::tuple<QRectF, RectEdge, RectEdge> rows[] = {
        { { 380, 280, 400, 300 }, RectEdge::maxY, RectEdge::minY },
        { { 0, 0, 800, 330 }, RectEdge::minY, RectEdge::maxY },
        { { 390, 0, 400, 600 }, RectEdge::minX, RectEdge::maxX },
        { { 0, 290, 800, 40 }, RectEdge::maxY, RectEdge::maxX }, // lower than the body
        { { 0, 270, 450, 70 }, RectEdge::maxY, RectEdge::minX },
        { { 300, 0, 240, 600 }, RectEdge::minX, RectEdge::maxY },
        { { 380, 250, 110, 120 }, RectEdge::maxY, RectEdge::maxY }, // no edge has room
    };
    for (const auto &[room, preferred, expected] : rows) {
        const QRectF anchor(400, 300, 40, 20);
        const auto placement = placePopover(anchor, size, room, preferred);
        EXPECT_EQ(placement.edge, expected) << room.x() << ' ' << room.y();
        EXPECT_TRUE(room.contains(placement.body)) << room.x() << ' ' << room.y();
    }
}

TEST(PopoverPlacement, slides_along_the_edge_and_the_arrow_stays_at_the_anchor)
{
    const QRectF room(0, 0, 800, 600);
    const QRectF anchor(760, 300, 40, 20);
    const auto placement = placePopover(anchor, { 200, 50 }, room, RectEdge::maxY);
    EXPECT_EQ(placement.body.right(), 800);
    EXPECT_EQ(placement.body.left() + *popoverArrow(anchor, placement.body, placement.edge), 780);
    // The arrow keeps its distance from the corner.
    const QRectF corner(798, 300, 2, 20);
    EXPECT_EQ(popoverArrow(corner, placement.body, placement.edge), 182);
    // A popover that was moved away has no arrow.
    EXPECT_FALSE(popoverArrow(anchor, placement.body.translated(0, 20), placement.edge));
    EXPECT_FALSE(popoverEdge(anchor, placement.body.translated(0, 20)));
    EXPECT_FALSE(popoverArrow(anchor, placement.body.translated(0, 200), placement.edge));
}

TEST(PopoverPlacement, the_outline_touches_the_anchor_on_every_edge)
{
    const QRectF anchor(400, 300, 40, 20);
    const QPointF tips[] = { { 400, 310 }, { 420, 320 }, { 440, 310 }, { 420, 300 } };
    for (int edge = 0; edge < 4; ++edge) {
        const auto placement =
                placePopover(anchor, { 100, 60 }, { 0, 0, 800, 600 }, RectEdge(edge));
        const auto outline = popoverOutline(placement.body, placement.edge,
                                            popoverArrow(anchor, placement.body, placement.edge));
        EXPECT_EQ(popoverEdge(anchor, placement.body), RectEdge(edge));
        const QPointF inwards = (placement.body.center() - tips[edge]) / 30.0;
        EXPECT_TRUE(outline.contains(tips[edge] + inwards)) << edge;
        EXPECT_FALSE(outline.contains(tips[edge] - inwards)) << edge;
        EXPECT_FALSE(outline.contains(placement.body.topLeft() + QPointF(1, 1))) << edge;
    }
}

// On the screen

TEST(Popover, shows_its_content_at_its_own_size_beside_the_view)
{
    for (const bool staysInWindow : { false, true }) {
        Scene scene(nullptr, staysInWindow);
        const QSignalSpy willShow(&scene.popover, &Popover::willShow);
        const QSignalSpy didShow(&scene.popover, &Popover::didShow);
        scene.show(RectEdge::maxY);
        EXPECT_TRUE(scene.popover.isShown());
        EXPECT_EQ(willShow.size(), 1);
        EXPECT_EQ(didShow.size(), 1);
        EXPECT_EQ(scene.bubble()->isWindow(), !staysInWindow);
        EXPECT_EQ(scene.contentOnScreen().size(), QSize(120, 40));
        EXPECT_EQ(scene.contentOnScreen().bottom() + 1 + 10, scene.buttonOnScreen().top());
        EXPECT_EQ(scene.contentOnScreen().center().x(), scene.buttonOnScreen().center().x());

        // The rectangle is relative to the view's lower left corner.
        scene.popover.showRelativeToRect(QRectF(0, 0, 20, 10), &scene.button, RectEdge::minY);
        EXPECT_EQ(scene.popover.edge(), RectEdge::minY);
        EXPECT_EQ(scene.contentOnScreen().top(), scene.buttonOnScreen().bottom() + 1 + 10);
        EXPECT_EQ(scene.contentOnScreen().left() + 60, scene.buttonOnScreen().left() + 10);
        EXPECT_EQ(willShow.size(), 1);
    }
}

TEST(Popover, follows_its_view_flips_and_closes_when_that_goes)
{
    for (const bool staysInWindow : { false, true }) {
        Scene scene(nullptr, staysInWindow);
        scene.show();
        scene.button.move(20, 250);
        EXPECT_EQ(scene.contentOnScreen().bottom() + 1 + 10, scene.buttonOnScreen().top());
        scene.window.move(60, 40);
        QApplication::processEvents();
        EXPECT_EQ(scene.contentOnScreen().bottom() + 1 + 10, scene.buttonOnScreen().top());
        scene.button.move(20, 5);
        scene.window.move(60, 0);
        QApplication::processEvents();
        EXPECT_EQ(scene.popover.edge(), RectEdge::minY);
        EXPECT_EQ(scene.contentOnScreen().top(), scene.buttonOnScreen().bottom() + 1 + 10);
        scene.button.hide();
        EXPECT_FALSE(scene.popover.isShown());

        scene.button.show();
        scene.show();
        EXPECT_TRUE(scene.popover.isShown());
        scene.window.close();
        EXPECT_FALSE(scene.popover.isShown());
    }
}

TEST(Popover, survives_the_end_of_what_it_points_at_with_its_content)
{
    for (const bool staysInWindow : { false, true }) {
        auto *const window = new QWidget;
        auto *const button = new QPushButton(window);
        window->show();
        Popover popover;
        popover.setStaysInWindow(staysInWindow);
        const QPointer<QWidget> content = new QLabel(u"Still here"_s);
        popover.setContentViewController(controllerOf(content));
        popover.showRelativeToRect({}, button, RectEdge::minY);
        delete button;
        EXPECT_FALSE(popover.isShown());
        popover.showRelativeToRect({}, window, RectEdge::minY);
        EXPECT_TRUE(popover.isShown());
        delete window;
        EXPECT_FALSE(popover.isShown());
        EXPECT_TRUE(content);
    }
}

TEST(Popover, closes_when_its_place_scrolls_out_of_sight)
{
    QScrollArea area;
    auto *const page = new QWidget;
    page->setFixedSize(200, 2000);
    QPushButton button(page);
    button.setGeometry(20, 100, 100, 30);
    area.setWidget(page);
    area.resize(300, 300);
    area.show();
    Popover popover;
    popover.setContentViewController(controllerOf(new QLabel(u"Here"_s)));
    popover.showRelativeToRect({}, &button, RectEdge::minY);
    const int before = popover.contentViewController()->view()->mapToGlobal(QPoint()).y();
    area.verticalScrollBar()->setValue(60);
    EXPECT_EQ(popover.contentViewController()->view()->mapToGlobal(QPoint()).y(), before - 60);
    area.verticalScrollBar()->setValue(400);
    EXPECT_FALSE(popover.isShown());
}

TEST(Popover, grows_with_what_its_content_asks_for)
{
    auto *const content = new QWidget;
    auto *const layout = new QVBoxLayout(content);
    auto *const label = new QLabel(u"One"_s);
    layout->addWidget(label);
    Scene scene(content);
    scene.show();
    const QSize before = scene.contentOnScreen().size();
    QSignalSpy sizes(&scene.popover, &Popover::contentSizeChanged);
    label->setText(u"One\nTwo\nThree, which is longer than the others were before"_s);
    settle();
    EXPECT_GT(scene.contentOnScreen().width(), before.width());
    EXPECT_GT(scene.contentOnScreen().height(), before.height());
    EXPECT_EQ(scene.popover.contentSize(), QSizeF(content->size()));
    EXPECT_FALSE(sizes.isEmpty());
    EXPECT_EQ(scene.contentOnScreen().bottom() + 1 + 10, scene.buttonOnScreen().top());
    scene.popover.setContentSize({ 90, 20 });
    EXPECT_EQ(scene.contentOnScreen().size(), QSize(90, 20));
}

// Closing

TEST(Popover, a_click_elsewhere_closes_it_and_takes_effect)
{
    for (const bool staysInWindow : { false, true }) {
        Scene scene(nullptr, staysInWindow);
        const QSignalSpy clicks(&scene.other, &QPushButton::clicked);
        scene.show();
        scene.click(&scene.other);
        EXPECT_FALSE(scene.popover.isShown());
        EXPECT_EQ(clicks.size(), 1);
    }
}

TEST(Popover, still_closes_and_follows_once_its_content_was_replaced)
{
    Scene scene;
    scene.show();
    auto *const content = new QWidget;
    content->setFixedSize(60, 40);
    scene.popover.setContentViewController(controllerOf(content));
    settle();
    const QRect before = scene.contentOnScreen();
    scene.button.move(scene.button.pos() + QPoint(20, 0));
    EXPECT_EQ(scene.contentOnScreen(), before.translated(20, 0));
    scene.click(&scene.other);
    EXPECT_FALSE(scene.popover.isShown());
}

TEST(Popover, a_click_in_it_keeps_it_open)
{
    for (const bool staysInWindow : { false, true }) {
        auto *const inner = new QPushButton(u"Apply"_s);
        Scene scene(inner, staysInWindow);
        const QSignalSpy clicks(inner, &QPushButton::clicked);
        scene.show();
        QTest::mouseClick(inner, Qt::LeftButton);
        EXPECT_EQ(clicks.size(), 1);
        EXPECT_TRUE(scene.popover.isShown());
        // A click on the bubble, beside the content, does not close it.
        QTest::mouseClick(scene.bubble(), Qt::LeftButton, {}, { 16, 16 });
        EXPECT_TRUE(scene.popover.isShown());
    }
}

TEST(Popover, a_click_on_its_shadow_goes_to_the_widget_behind)
{
    for (const bool staysInWindow : { false, true }) {
        Scene scene(nullptr, staysInWindow);
        scene.other.setGeometry(20, 145, 110, 30); // reaches below the bubble's left margin
        const QSignalSpy clicks(&scene.other, &QPushButton::clicked);
        scene.show();
        const QPoint inMargin(6, 20);
        ASSERT_TRUE(scene.other.rect()
                            .adjusted(0, 0, 20, 0)
                            .contains(scene.other.mapFromGlobal(
                                    scene.bubble()->mapToGlobal(inMargin))));
        scene.other.setGeometry(20, 145, 130, 30);
        QTest::mouseClick(scene.bubble(), Qt::LeftButton, {}, inMargin);
        settle();
        EXPECT_EQ(clicks.size(), 1) << staysInWindow;
        EXPECT_FALSE(scene.popover.isShown()) << staysInWindow;
    }
}

TEST(Popover, the_click_that_closes_it_on_its_opener_does_not_open_it_again)
{
    Scene scene;
    QObject::connect(&scene.button, &QPushButton::clicked, &scene.popover,
                     [&] { scene.popover.showRelativeToRect({}, &scene.button, RectEdge::maxY); });
    for (int i = 0; i < 3; ++i) { // without an opener, each click shows it
        scene.click(&scene.button);
        EXPECT_TRUE(scene.popover.isShown());
    }
    scene.popover.close();
    scene.popover.setOpener(&scene.button);
    for (const bool isOpen : { true, false, true, false }) {
        scene.click(&scene.button);
        EXPECT_EQ(scene.popover.isShown(), isOpen);
    }
    // The opener can be another widget than the one that the arrow points to.
    QObject::connect(&scene.other, &QPushButton::clicked, &scene.popover,
                     [&] { scene.popover.showRelativeToRect({}, &scene.button, RectEdge::maxY); });
    scene.popover.setOpener(&scene.other);
    for (const bool isOpen : { true, false, true }) {
        scene.click(&scene.other);
        EXPECT_EQ(scene.popover.isShown(), isOpen);
    }
}

TEST(Popover, keys_elsewhere_close_it_and_are_typed_but_modifiers_do_nothing)
{
    Scene scene;
    scene.show();
    EXPECT_TRUE(scene.field.hasFocus());
    QTest::keyClick(&scene.field, Qt::Key_Control);
    EXPECT_TRUE(scene.popover.isShown());
    QTest::keyClick(&scene.field, Qt::Key_A);
    EXPECT_FALSE(scene.popover.isShown());
    EXPECT_EQ(scene.field.text(), u"a"_s);
}

TEST(Popover, a_popover_that_a_key_shows_is_not_closed_by_the_same_key)
{
    Scene scene; // a line edit passes Return on to its parents after the signal
    QObject::connect(&scene.field, &QLineEdit::returnPressed, &scene.popover,
                     [&] { scene.popover.showRelativeToRect({}, &scene.field, RectEdge::maxY); });
    for (int i = 0; i < 2; ++i) {
        QTest::keyClick(&scene.field, Qt::Key_Return);
        EXPECT_TRUE(scene.popover.isShown()) << i;
        QApplication::processEvents();
    }
}

TEST(Popover, escape_closes_it_before_the_window_gets_the_key)
{
    Scene scene;
    const QShortcut shortcut(Qt::Key_Escape, &scene.window);
    const QSignalSpy cancels(&shortcut, &QShortcut::activated);
    scene.show();
    QTest::keyClick(scene.window.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(scene.popover.isShown());
    EXPECT_EQ(cancels.size(), 0);
    QTest::keyClick(scene.window.windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(cancels.size(), 1);
}

TEST(Popover, focus_goes_in_cycles_there_and_returns)
{
    for (const bool staysInWindow : { false, true }) {
        auto *const content = new QWidget;
        auto *const layout = new QVBoxLayout(content);
        auto *const first = new QLineEdit;
        auto *const second = new QPushButton(u"Apply"_s);
        for (QWidget *const widget :
             { static_cast<QWidget *>(new QLabel(u"Name"_s)), static_cast<QWidget *>(first),
               static_cast<QWidget *>(second) })
            layout->addWidget(widget);
        Scene scene(content, staysInWindow);
        scene.popover.setBehavior(Popover::Behavior::applicationDefined);
        scene.show();
        EXPECT_TRUE(first->hasFocus());
        QTest::keyClick(first, Qt::Key_Tab);
        EXPECT_TRUE(second->hasFocus());
        QTest::keyClick(second, Qt::Key_Tab);
        EXPECT_TRUE(first->hasFocus());
        QTest::keyClick(first, Qt::Key_X);
        EXPECT_TRUE(scene.popover.isShown());
        QTest::keyClick(first, Qt::Key_Escape);
        EXPECT_FALSE(scene.popover.isShown());
        settle();
        EXPECT_TRUE(scene.field.hasFocus());
    }
}

TEST(Popover, the_behaviour_decides_what_closes_it)
{
    using enum Popover::Behavior;
    struct Row
    {
        Popover::Behavior behavior;
        bool staysForClickInWindow;
        bool staysForClickInOtherWindow;
        bool staysForOtherProgram;
    };
    for (const Row &row :
         { Row { transient, false, false, false }, Row { semitransient, false, true, true },
           Row { applicationDefined, true, true, true } }) {
        SCOPED_TRACE(int(row.behavior));
        Scene scene;
        QWidget otherWindow;
        otherWindow.setGeometry(600, 600, 50, 50);
        otherWindow.show();
        scene.popover.setBehavior(row.behavior);
        scene.show();
        QTest::mouseClick(otherWindow.windowHandle(), Qt::LeftButton, {}, { 20, 20 });
        EXPECT_EQ(scene.popover.isShown(), row.staysForClickInOtherWindow);
        scene.show();
        Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
        EXPECT_EQ(scene.popover.isShown(), row.staysForOtherProgram);
        scene.show();
        scene.click(&scene.other);
        EXPECT_EQ(scene.popover.isShown(), row.staysForClickInWindow);
    }
}

TEST(Popover, another_in_it_keeps_it_open_and_closes_first)
{
    auto *const inner = new QPushButton(u"More"_s);
    Scene scene(inner);
    scene.show();
    Popover second;
    second.setBehavior(Popover::Behavior::transient);
    auto *const label = new QLabel(u"Details"_s);
    second.setContentViewController(controllerOf(label));
    second.showRelativeToRect({}, inner, RectEdge::maxX);
    QApplication::processEvents();
    QTest::mouseClick(label, Qt::LeftButton);
    EXPECT_TRUE(second.isShown());
    EXPECT_TRUE(scene.popover.isShown());
    QTest::keyClick(inner, Qt::Key_Escape);
    EXPECT_FALSE(second.isShown());
    EXPECT_TRUE(scene.popover.isShown());
    second.showRelativeToRect({}, inner, RectEdge::maxX);
    QApplication::processEvents();
    scene.click(&scene.other);
    EXPECT_FALSE(second.isShown());
    EXPECT_FALSE(scene.popover.isShown());
}

TEST(Popover, asks_before_the_user_closes_it_but_not_before_the_program_does)
{
    Scene scene;
    Asking asking;
    asking.setBehavior(Popover::Behavior::transient);
    QWidget *const content = new QLabel(u"Unsaved"_s);
    asking.setContentViewController(controllerOf(content));
    const auto click = [&] {
        scene.click(&scene.other);
    };
    const auto closeWindow = [&] {
        content->window()->close();
    }; // like a key of the desktop
    for (const std::function<void()> &act : { std::function<void()>(click), { closeWindow } }) {
        asking.mayClose = false;
        asking.closings = 0;
        asking.showRelativeToRect({}, &scene.button, RectEdge::minY);
        QApplication::processEvents();
        act();
        EXPECT_TRUE(asking.isShown());
        EXPECT_TRUE(content->isVisible());
        asking.mayClose = true;
        act();
        EXPECT_FALSE(asking.isShown());
        EXPECT_EQ(asking.closings, 1);
    }
    asking.mayClose = false;
    asking.showRelativeToRect({}, &scene.button, RectEdge::minY);
    asking.close();
    EXPECT_FALSE(asking.isShown());
    EXPECT_EQ(asking.closings, 2);
}

TEST(Popover, one_that_nobody_holds_lives_while_it_is_on_the_screen)
{
    Scene scene;
    const auto make = [] {
        auto *const popover = new Popover;
        popover->setDeletesOnClose(true);
        popover->setContentViewController(controllerOf(new QLabel(u"Saved"_s)));
        return QPointer<Popover>(popover);
    };
    const auto deleteLeftovers = [] {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    const QPointer<Popover> shown = make();
    const QPointer<QWidget> content = shown->contentViewController()->view();
    shown->showRelativeToRect({}, &scene.button, RectEdge::minY);
    deleteLeftovers();
    EXPECT_TRUE(shown);
    shown->close();
    deleteLeftovers();
    EXPECT_FALSE(shown);
    EXPECT_FALSE(content);
    // If the view is not visible, it is not shown.
    scene.button.hide();
    const QPointer<Popover> refused = make();
    refused->showRelativeToRect({}, &scene.button, RectEdge::minY);
    deleteLeftovers();
    EXPECT_FALSE(refused);
}

TEST(Popover, adopts_a_controller_without_a_parent_only)
{
    QObject owner;
    const QPointer<NS::ViewController> adopted = new NS::ViewController;
    const QPointer<NS::ViewController> owned = new NS::ViewController(&owner);
    Popover popover;
    popover.setContentViewController(adopted);
    EXPECT_EQ(adopted->parent(), &popover);
    popover.setContentViewController(owned);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(adopted);
    EXPECT_EQ(owned->parent(), &owner);
    popover.setContentViewController(nullptr);
    EXPECT_TRUE(owned);
}

TEST(Popover, a_screen_reader_hears_a_message_or_finds_a_dialog)
{
    Scene scene(new QLabel(u"The name is taken."_s));
    scene.show();
    QAccessibleInterface *message = QAccessible::queryAccessibleInterface(scene.bubble());
    EXPECT_EQ(message->role(), QAccessible::Notification);
    EXPECT_EQ(message->text(QAccessible::Name), u"The name is taken."_s);

    Scene dialog(new QLineEdit);
    dialog.popover.contentViewController()->setTitle(u"Rename"_s);
    dialog.show();
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(dialog.bubble());
    EXPECT_EQ(accessible->role(), QAccessible::Dialog);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"Rename"_s);
}

TEST(Popover, is_clear_around_its_outline_and_solid_in_it)
{
    Scene scene;
    scene.show();
    const QImage image = scene.bubble()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    const double ratio = image.devicePixelRatio();
    const auto alpha = [&](int x, int y) {
        return qAlpha(image.pixel(int((x + 0.5) * ratio), int((y + 0.5) * ratio)));
    };
    // 120 x 40 with 12 around; the arrow's tip is 10 below the middle.
    EXPECT_EQ(scene.bubble()->size(), QSize(144, 64));
    EXPECT_EQ(alpha(72, 32), 255);
    EXPECT_EQ(alpha(72, 58), 255); // in the arrow
    EXPECT_LT(alpha(40, 58), 60); // beside it
    EXPECT_LT(alpha(12, 12), 100); // a corner
    EXPECT_GT(alpha(40, 53), 0); // its shadow
    EXPECT_EQ(alpha(0, 0), 0);
}
