// SPDX-License-Identifier: MIT
#include "ShownWindow.h"
#include "Window/WindowEdges.h"
#include "Window/WindowFrame.h"
#include "Window/WindowManager.h"
#include "Window/WindowMenu.h"

#include <pellarvine/Platform/NSTitlebarAccessoryViewController.h>
#include <pellarvine/Platform/NSView.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using NS::Window;
using NS::WindowButton;

namespace {

struct Shown : ShownWindow
{
    using ShownWindow::ShownWindow;

    void press(QPoint at) { QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, at); }
    // Not by QTest, which remembers pressed buttons from earlier tests.
    void move(QPoint to)
    {
        QMouseEvent event(QEvent::MouseMove, to, window.mapToGlobal(to), Qt::NoButton, Qt::NoButton,
                          {});
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    }
    void release(QPoint at) { QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, at); }
    // Drags in steps. Each position is in the window's coordinates at that time.
    void drag(QPoint from, QPoint by)
    {
        const QPoint start = window.mapToGlobal(from);
        press(from);
        for (int step = 1; step <= 10; ++step)
            dragTo(start + by * step / 10);
        release(window.mapFromGlobal(start + by));
    }
    void dragTo(QPoint global)
    {
        const QPoint at = window.mapFromGlobal(global);
        QMouseEvent event(QEvent::MouseMove, at, global, Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    }
};

NS::TitlebarAccessoryViewController *makeAccessory(int height)
{
    auto *const controller = new NS::TitlebarAccessoryViewController;
    controller->setView(new QWidget);
    controller->view()->resize(10, height);
    return controller;
}

QMenu *windowMenuOf(const Window &window)
{
    return Pellarvine::detail::makeWindowMenu(Pellarvine::detail::WindowFrame::of(&window));
}

} // namespace

// Frames

TEST(NSWindow, content_lies_below_the_title_bar_unless_it_is_full_size_or_there_is_none)
{
    const QRectF frame(10, 20, 800, 600);
    EXPECT_EQ(Window::contentRectForFrameRect(frame, Window::titled), QRectF(10, 20, 800, 578));
    EXPECT_EQ(Window::contentRectForFrameRect(frame, Window::borderless), frame);
    EXPECT_EQ(Window::contentRectForFrameRect(frame, Window::titled | Window::fullSizeContentView),
              frame);
    for (const Window::StyleMask style : { whole, Window::StyleMask(Window::borderless) })
        EXPECT_EQ(Window::contentRectForFrameRect(Window::frameRectForContentRect(frame, style),
                                                  style),
                  frame);
}

TEST(NSWindow, a_frame_is_what_was_set_with_y_upwards_and_within_the_limits)
{
    Shown shown;
    EXPECT_EQ(shown.window.frame(), QRectF(100, 200, 400, 322));
    QSignalSpy changes(&shown.window, &Window::frameChanged);
    shown.window.setFrame(QRectF(20, 30, 300, 250));
    EXPECT_EQ(shown.window.frame(), QRectF(20, 30, 300, 250));
    EXPECT_EQ(shown.window.geometry().bottom() + 1,
              QApplication::primaryScreen()->size().height() - 30);
    EXPECT_FALSE(changes.isEmpty());

    shown.window.setMaximumSize(320, 260);
    shown.window.setFrame(QRectF(0, 0, 500, 500));
    EXPECT_EQ(shown.window.size(), QSize(320, 260));

    shown.window.setFrame(QRectF(50, 60, 310, 240), true, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.window.frame() == QRectF(50, 60, 310, 240); }));
}

TEST(NSWindow, a_view_or_a_layout_gets_the_room_below_the_title_bar)
{
    Shown shown;
    const QPointer<QWidget> first = new QWidget;
    shown.window.setContentView(first);
    auto *const view = new QWidget(nullptr, Qt::Window);
    shown.window.setContentView(view);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(first);
    EXPECT_FALSE(view->isWindow());
    NS::layoutSubtreeIfNeeded(&shown.window);
    EXPECT_EQ(view->geometry(), QRect(0, 22, 400, 300));
    shown.window.setStyleMask(whole | Window::fullSizeContentView);
    NS::layoutSubtreeIfNeeded(&shown.window);
    EXPECT_EQ(view->geometry(), QRect(0, 0, 400, 322));
    EXPECT_EQ(shown.window.childAt(200, 10)->window(), &shown.window);
    EXPECT_NE(shown.window.childAt(200, 10), view) << "the title bar lies above it";

    Window other(QRectF(0, 0, 200, 100), whole);
    auto *const layout = new QVBoxLayout(&other);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *const label = new QWidget;
    label->setMinimumHeight(150);
    layout->addWidget(label);
    other.show();
    EXPECT_EQ(label->geometry().top(), 22);
    EXPECT_GE(other.height(), 172);
}

// Accessories

TEST(NSWindow, accessories_grow_the_window_at_the_bottom)
{
    Shown shown;
    shown.window.setContentView(new QWidget);
    NS::TitlebarAccessoryViewController *const upper = makeAccessory(30);
    NS::TitlebarAccessoryViewController *const lower = makeAccessory(10);
    shown.window.addTitlebarAccessoryViewController(upper);
    shown.window.addTitlebarAccessoryViewController(lower);
    EXPECT_EQ(shown.window.frame(), QRectF(100, 160, 400, 362));
    EXPECT_EQ(shown.titleBar()->height(), 62);
    EXPECT_EQ(upper->view()->geometry(), QRect(0, 22, 400, 30));
    EXPECT_EQ(lower->view()->geometry(), QRect(0, 52, 400, 10));
    NS::layoutSubtreeIfNeeded(&shown.window);
    EXPECT_EQ(shown.window.contentView()->geometry(), QRect(0, 62, 400, 300));

    upper->view()->resize(400, 20);
    EXPECT_EQ(shown.window.frame(), QRectF(100, 170, 400, 352)) << "it follows the view";
    shown.window.removeTitlebarAccessoryViewControllerAtIndex(0);
    EXPECT_EQ(shown.window.frame(), QRectF(100, 190, 400, 332));
    EXPECT_THAT(shown.window.titlebarAccessoryViewControllers(), testing::ElementsAre(lower));
    EXPECT_EQ(upper->view()->parentWidget(), nullptr);
    delete upper;
    delete lower;
    EXPECT_EQ(shown.window.frame(), QRectF(100, 200, 400, 322));

    shown.window.contentView()->setMinimumHeight(300);
    QCoreApplication::processEvents();
    NS::TitlebarAccessoryViewController *const only = makeAccessory(30);
    shown.window.addTitlebarAccessoryViewController(only);
    QCoreApplication::processEvents();
    EXPECT_EQ(shown.window.frame(), QRectF(100, 170, 400, 352));
    delete only;
    EXPECT_EQ(shown.window.frame(), QRectF(100, 200, 400, 322)) << "as low as the content can be";
}

TEST(NSWindow, full_screen_keeps_as_much_of_the_title_bar_as_the_accessories_ask_for)
{
    Shown shown;
    NS::TitlebarAccessoryViewController *const accessory = makeAccessory(30);
    shown.window.addTitlebarAccessoryViewController(accessory);
    const QRectF frame = shown.window.frame();
    shown.window.toggleFullScreen();
    EXPECT_TRUE(shown.window.isFullScreen());
    EXPECT_EQ(shown.titleBar()->height(), 22);
    accessory->setFullScreenMinHeight(40);
    EXPECT_EQ(shown.titleBar()->height(), 40);
    shown.window.zoom();
    EXPECT_TRUE(shown.window.isFullScreen()) << "full screen does not zoom";
    shown.window.toggleFullScreen();
    EXPECT_EQ(shown.titleBar()->height(), 52);
    EXPECT_EQ(shown.window.frame(), frame);
}

TEST(NSWindow, an_accessory_is_in_one_title_bar_once)
{
    Shown shown;
    NS::TitlebarAccessoryViewController *const accessory = makeAccessory(30);
    {
        Shown other;
        other.window.addTitlebarAccessoryViewController(accessory);
        EXPECT_EQ(other.titleBar()->height(), 52);
        shown.window.addTitlebarAccessoryViewController(accessory);
        EXPECT_TRUE(other.window.titlebarAccessoryViewControllers().isEmpty());
        EXPECT_EQ(other.titleBar()->height(), 22);
    }
    ASSERT_EQ(shown.titleBar()->height(), 52);
    shown.window.addTitlebarAccessoryViewController(accessory);
    EXPECT_EQ(shown.window.titlebarAccessoryViewControllers().size(), 1);
    EXPECT_EQ(shown.titleBar()->height(), 52);
    accessory->view()->resize(10, 40);
    EXPECT_EQ(shown.titleBar()->height(), 62);
}

// Buttons

TEST(NSWindow, has_the_buttons_of_its_style_and_document)
{
    Shown shown;
    const auto has = [&](WindowButton kind) {
        const QAbstractButton *const button = shown.window.standardWindowButton(kind);
        return button && button->isVisible();
    };
    EXPECT_TRUE(has(WindowButton::close));
    EXPECT_FALSE(has(WindowButton::documentIcon));
    shown.window.setRepresentedURL(QUrl(u"file:///home/ada/letters.txt"_s));
    EXPECT_TRUE(has(WindowButton::documentIcon));
    EXPECT_FALSE(has(WindowButton::documentVersions)) << "nobody shows versions";
    auto versions = std::make_unique<QSignalSpy>(&shown.window, &Window::documentVersionsRequested);
    EXPECT_TRUE(has(WindowButton::documentVersions));
    shown.window.standardWindowButton(WindowButton::documentVersions)->click();
    EXPECT_EQ(versions->size(), 1);
    versions.reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(has(WindowButton::documentVersions)) << "nobody shows them any more";
    shown.window.setStyleMask(Window::titled | Window::closable);
    EXPECT_FALSE(has(WindowButton::miniaturize));
    EXPECT_FALSE(has(WindowButton::zoom));
    shown.window.zoom();
    EXPECT_FALSE(shown.window.isMaximized());
    shown.window.setStyleMask(Window::borderless);
    EXPECT_FALSE(has(WindowButton::close));
}

TEST(NSWindow, buttons_do_what_they_are_for_and_say_so)
{
    Shown shown;
    QAbstractButton *const zoom = shown.window.standardWindowButton(WindowButton::zoom);
    EXPECT_EQ(zoom->accessibleName(), u"Maximise"_s);
    zoom->click();
    EXPECT_TRUE(shown.window.isMaximized());
    EXPECT_EQ(zoom->accessibleName(), u"Restore"_s);
    shown.window.toggleFullScreen();
    EXPECT_EQ(zoom->accessibleName(), u"Leave full screen"_s);
    shown.window.toggleFullScreen();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(zoom)->role(), QAccessible::Button);
    zoom->click();
    EXPECT_FALSE(shown.window.isMaximized());
    shown.window.standardWindowButton(WindowButton::miniaturize)->click();
    EXPECT_TRUE(shown.window.isMinimized());

    class Refusing : public Window
    {
    public:
        int asked = 0;

    protected:
        void closeEvent(QCloseEvent *event) override
        {
            ++asked;
            event->ignore();
        }
    } refusing;
    refusing.show();
    refusing.performClose();
    EXPECT_EQ(refusing.asked, 1);
    EXPECT_TRUE(refusing.isVisible());
    refusing.setStyleMask(Window::titled);
    refusing.performClose();
    EXPECT_EQ(refusing.asked, 1);
}

TEST(NSWindow, tab_reaches_the_buttons_with_full_keyboard_access_alone)
{
    Shown shown;
    auto *const field = new QLineEdit;
    shown.window.setContentView(field);
    field->setFocus();
    QTest::keyClick(&shown.window, Qt::Key_Tab);
    EXPECT_EQ(shown.window.focusWidget(), field);
    shown.window.setFullKeyboardAccess(true);
    QTest::keyClick(field, Qt::Key_Tab);
    QWidget *const close = shown.window.standardWindowButton(WindowButton::close);
    EXPECT_EQ(shown.window.focusWidget(), close);
    QTest::keyClick(close, Qt::Key_Tab);
    QTest::keyClick(shown.window.focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.window.isMinimized(); }));
}

TEST(NSWindow, opens_with_the_focus_in_its_content)
{
    for (const bool hasField : { true, false }) {
        Window window;
        window.setFullKeyboardAccess(true);
        auto *const content = new QWidget;
        QLineEdit *const field = hasField ? new QLineEdit(content) : nullptr;
        window.setContentView(content);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        EXPECT_FALSE(qobject_cast<QAbstractButton *>(QApplication::focusWidget()));
        EXPECT_TRUE(!hasField || QApplication::focusWidget() == field);
        QTest::keyClick(window.windowHandle(), Qt::Key_Space);
        QTest::qWait(150); // a button that is clicked by a key stays down less long
        EXPECT_TRUE(window.isVisible());

        // The same if it is activated again and no widget has the focus.
        if (field)
            field->clearFocus();
        QWidget other;
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        EXPECT_FALSE(qobject_cast<QAbstractButton *>(QApplication::focusWidget()));
    }
}

TEST(NSWindow, corners_are_round_unless_it_is_maximised_or_snapped)
{
    Shown shown;
    const auto corner = [&] {
        return qAlpha(shown.window.grab().toImage().pixel(0, 0));
    };
    EXPECT_EQ(corner(), 0);
    shown.window.zoom();
    EXPECT_EQ(corner(), 255);
    shown.window.zoom();
    EXPECT_EQ(corner(), 0);
    const QRect screen = shown.window.screen()->availableGeometry();
    shown.window.setGeometry(0, 0, screen.width() / 2, screen.height());
    EXPECT_EQ(corner(), 255);

    EXPECT_FALSE(
            Pellarvine::detail::WindowManager::isSnapped({ 0, 0, 500, 400 }, { 0, 0, 1000, 800 }));
    EXPECT_TRUE(Pellarvine::detail::WindowManager::isSnapped({ 500, 0, 500, 800 },
                                                             { 0, 0, 1000, 800 }));
}

// The pointer

TEST(NSWindow, the_empty_title_bar_moves_it_once_the_pointer_has_gone_far_enough)
{
    Shown shown;
    const QPoint origin = shown.window.pos();
    shown.drag({ 300, 11 }, { QApplication::startDragDistance() - 2, 0 });
    EXPECT_EQ(shown.window.pos(), origin);
    shown.drag({ 300, 11 }, { 70, 40 });
    EXPECT_EQ(shown.window.pos(), origin + QPoint(70, 40));

    shown.window.setContentView(new QWidget);
    shown.drag({ 300, 150 }, { 70, 40 });
    EXPECT_EQ(shown.window.pos(), origin + QPoint(70, 40));
    shown.window.setMovableByWindowBackground(true);
    shown.drag({ 300, 150 }, { -70, -40 });
    EXPECT_EQ(shown.window.pos(), origin);
}

TEST(NSWindow, children_of_the_title_bar_keep_their_clicks)
{
    Shown shown;
    auto *const button = new QPushButton(u"Seal"_s);
    NS::addSubview(shown.titleBar(), button);
    button->setGeometry(200, 0, 60, 22);
    QSignalSpy clicks(button, &QPushButton::clicked);
    const QPoint origin = shown.window.pos();
    shown.drag({ 210, 11 }, { 30, 0 });
    EXPECT_EQ(clicks.size(), 1);
    EXPECT_EQ(shown.window.pos(), origin);
}

TEST(NSWindow, a_double_click_zooms_what_can_be_resized)
{
    Shown shown;
    QTest::mouseDClick(shown.titleBar(), Qt::LeftButton, {}, { 300, 11 });
    EXPECT_TRUE(shown.window.isMaximized());
    QTest::mouseDClick(shown.titleBar(), Qt::LeftButton, {}, { 300, 11 });
    EXPECT_FALSE(shown.window.isMaximized());
    shown.window.setStyleMask(whole & ~Window::resizable);
    QTest::mouseDClick(shown.titleBar(), Qt::LeftButton, {}, { 300, 11 });
    EXPECT_FALSE(shown.window.isMaximized());
}

TEST(NSWindow, each_edge_and_corner_resizes_with_its_cursor)
{
    struct EdgeDrag
    {
        QPoint from; // in a window of 400 x 322
        Qt::CursorShape cursor;
        QMargins grown; // by a drag of (20, 10)
    };
    const EdgeDrag rows[] = {
        { { 7, 150 }, Qt::SizeHorCursor, { -20, 0, 0, 0 } },
        { { 392, 150 }, Qt::SizeHorCursor, { 0, 0, 20, 0 } },
        { { 200, 7 }, Qt::SizeVerCursor, { 0, -10, 0, 0 } },
        { { 200, 314 }, Qt::SizeVerCursor, { 0, 0, 0, 10 } },
        { { 2, 2 }, Qt::SizeFDiagCursor, { -20, -10, 0, 0 } },
        { { 397, 2 }, Qt::SizeBDiagCursor, { 0, -10, 20, 0 } },
        { { 2, 310 }, Qt::SizeBDiagCursor, { -20, 0, 0, 10 } },
        { { 397, 319 }, Qt::SizeFDiagCursor, { 0, 0, 20, 10 } },
    };
    for (const auto &[from, cursor, grown] : rows) {
        SCOPED_TRACE(testing::Message() << from.x() << ", " << from.y());
        Shown shown;
        shown.window.setContentView(new QWidget);
        const QRect before = shown.window.geometry();
        shown.move({ 200, 150 });
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        shown.move(from);
        ASSERT_NE(QApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QApplication::overrideCursor()->shape(), cursor);
        shown.drag(from, { 20, 10 });
        EXPECT_EQ(shown.window.geometry(), before + grown);
        shown.move({ 200, 150 });
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
}

TEST(NSWindow, edges_are_eight_deep_but_leave_controls_most_of_their_own)
{
    Shown shown;
    auto *const bar = new QScrollBar;
    auto *const content = new QWidget;
    bar->setParent(content);
    shown.window.setContentView(content);
    NS::layoutSubtreeIfNeeded(&shown.window);
    bar->setGeometry(386, 100, 14, 100);
    const auto isEdge = [&](QPoint at) {
        shown.move(at);
        return QApplication::overrideCursor() != nullptr;
    };
    EXPECT_FALSE(isEdge({ 391, 50 }));
    EXPECT_TRUE(isEdge({ 392, 50 }));
    EXPECT_FALSE(isEdge({ 396, 150 })) << "over the scroll bar";
    EXPECT_TRUE(isEdge({ 397, 150 }));
    shown.window.zoom();
    EXPECT_FALSE(isEdge({ 1, 50 }));
    shown.window.zoom();
    shown.window.setStyleMask(whole & ~Window::resizable);
    EXPECT_FALSE(isEdge({ 1, 50 }));
}

TEST(NSWindow, edges_keep_to_the_size_limits_and_the_opposite_edge_stays)
{
    const QRect before(100, 100, 400, 300);
    const auto edges = Qt::LeftEdge | Qt::TopEdge;
    EXPECT_EQ(Pellarvine::detail::resizedByEdges(before, edges, { 500, 500 }, { 200, 150 },
                                                 { 600, 600 }),
              QRect(300, 250, 200, 150));
    EXPECT_EQ(Pellarvine::detail::resizedByEdges(before, edges, { -500, -500 }, { 200, 150 },
                                                 { 600, 600 }),
              QRect(-100, -200, 600, 600));
    EXPECT_EQ(Pellarvine::detail::resizedByEdges(before, Qt::RightEdge, { -500, 0 }, { 200, 150 },
                                                 { 600, 600 }),
              QRect(100, 100, 200, 300));
}

// The window menu

TEST(NSWindow, the_menu_offers_what_can_be_done)
{
    Shown shown;
    const auto enabled = [&] {
        const std::unique_ptr<QMenu> menu(windowMenuOf(shown.window));
        QStringList names;
        for (const QAction *const action : menu->actions()) {
            if (action->isEnabled() && !action->isSeparator())
                names += action->text().remove(u'&');
        }
        return names.join(u' ');
    };
    EXPECT_EQ(enabled(), u"Move Size Minimise Maximise Close"_s);
    shown.window.zoom();
    EXPECT_EQ(enabled(), u"Restore Minimise Close"_s);
    shown.window.zoom();
    shown.window.setStyleMask(Window::titled | Window::closable);
    EXPECT_EQ(enabled(), u"Move Close"_s);
}

TEST(NSWindow, arrow_keys_move_and_size_it_from_the_menu)
{
    Shown shown;
    const QRect before = shown.window.geometry();
    const auto choose = [&](int index) {
        const std::unique_ptr<QMenu> menu(windowMenuOf(shown.window));
        menu->actions().at(index)->trigger();
    };
    choose(1);
    QTest::keyClick(&shown.window, Qt::Key_Right);
    QTest::keyClick(&shown.window, Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(shown.window.geometry(), before.translated(8, -1));
    QTest::keyClick(&shown.window, Qt::Key_Escape);
    EXPECT_EQ(shown.window.geometry(), before);
    QTest::keyClick(&shown.window, Qt::Key_Right);
    EXPECT_EQ(shown.window.geometry(), before) << "it has ended";
    choose(2);
    QTest::keyClick(&shown.window, Qt::Key_Down);
    QTest::keyClick(&shown.window, Qt::Key_Return);
    EXPECT_EQ(shown.window.geometry(), before.adjusted(0, 0, 0, 8));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(NSWindow, native_decorations_leave_title_and_buttons_to_the_desktop)
{
    Shown shown;
    shown.window.setNativeDecorations(true);
    EXPECT_TRUE(shown.window.isVisible());
    EXPECT_FALSE(shown.window.windowFlags() & Qt::FramelessWindowHint);
    EXPECT_FALSE(shown.titleBar()->isVisible());
    shown.window.addTitlebarAccessoryViewController(makeAccessory(30));
    EXPECT_TRUE(shown.titleBar()->isVisible());
    EXPECT_FALSE(shown.window.standardWindowButton(WindowButton::close)->isVisible());
    shown.window.setNativeDecorations(false);
    EXPECT_TRUE(shown.window.standardWindowButton(WindowButton::close)->isVisible());
    EXPECT_TRUE(shown.window.windowFlags() & Qt::FramelessWindowHint);
}
