// SPDX-License-Identifier: MIT
// Windows that are deleted, filled and moved while they are in use.
#include "Window/ShownWindow.h"

#include <pellarvine/Platform/NSTitleBar.h>
#include <pellarvine/Platform/NSTitlebarAccessoryViewController.h>

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QListWidget>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;
using NS::Window;
using NS::WindowButton;

namespace {

constexpr int barHeight = 22;

template <typename Base>
struct Closing : Base
{
    std::function<void()> whenClosed = [] {
    };

protected:
    void closeEvent(QCloseEvent *event) override
    {
        event->accept();
        whenClosed();
    }
};

// Handles posted events and deferred deletions.
void settle()
{
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

NS::TitlebarAccessoryViewController *accessory(QWidget *view, int height)
{
    view->resize(10, height);
    auto *const controller = new NS::TitlebarAccessoryViewController;
    controller->setView(view);
    return controller;
}

void clickAt(QWidget *window, QPoint place)
{
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, place);
}

} // namespace

TEST(WindowLifetime, a_window_may_be_deleted_by_its_closing)
{
    auto *const window = new Closing<Window>;
    const QPointer<QWidget> kept(window);
    window->whenClosed = [=] {
        delete window;
    };
    window->show();
    window->performClose();
    EXPECT_FALSE(kept);

    auto *const other = new Window;
    auto *const content = new Closing<QMainWindow>;
    const QPointer<QWidget> keptOther(other);
    content->whenClosed = [=] {
        delete other;
    };
    other->setContentView(content);
    other->show();
    other->close();
    EXPECT_FALSE(keptOther);
}

TEST(WindowLifetime, a_window_may_give_up_its_content_while_that_closes)
{
    Closing<Window> window;
    window.whenClosed = [&] {
        window.setContentView(nullptr);
    };
    auto *const content = new QMainWindow;
    window.setContentView(content);
    window.show();
    EXPECT_TRUE(content->close());
    EXPECT_FALSE(window.isVisible());
}

TEST(WindowLifetime, the_menu_of_the_document_ends_with_the_window)
{
    auto *const window = new Window;
    window->setRepresentedURL(QUrl::fromLocalFile(u"/tmp/letters/first.txt"_s));
    window->show();
    bool wasOpen = false;
    QTimer::singleShot(0, [&] {
        wasOpen = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        delete window;
    });
    window->standardWindowButton(WindowButton::documentIcon)->click();
    settle();
    EXPECT_TRUE(wasOpen);
    EXPECT_FALSE(QApplication::activePopupWidget());
}

TEST(WindowLifetime, a_new_content_may_come_from_the_previous_one_and_its_events)
{
    ShownWindow shown;
    Window &window = shown.window;
    auto *const list = new QListWidget;
    list->addItem(u"Next"_s);
    window.setContentView(list);
    NS::layoutSubtreeIfNeeded(&window);
    auto *const page = new QWidget;
    const QPointer<QWidget> part = new QWidget(page);
    QObject::connect(list, &QListWidget::itemClicked, [&] { window.setContentView(page); });
    clickAt(&window, list->viewport()->mapTo(&window, QPoint(10, 5)));
    ASSERT_EQ(window.contentView(), page);
    window.setContentView(part);
    settle();
    ASSERT_TRUE(part);
    NS::layoutSubtreeIfNeeded(&window);
    EXPECT_EQ(part->geometry(), QRect(0, barHeight, 400, 300));
}

TEST(WindowLifetime, says_that_its_content_has_left)
{
    Window window;
    const QSignalSpy views(&window, &Window::contentViewChanged);
    window.setContentView(new QWidget);
    delete window.contentView();
    EXPECT_EQ(views.size(), 2);
    QWidget content;
    window.setContentView(&content);
    content.setParent(nullptr);
    EXPECT_EQ(views.size(), 4);
    EXPECT_EQ(window.contentView(), nullptr);
}

TEST(WindowLifetime, an_animation_ends_when_the_window_is_maximised)
{
    ShownWindow shown;
    shown.window.setFrame(QRectF(50, 60, 310, 240), true, true);
    shown.window.showMaximized();
    QTest::qWait(250);
    EXPECT_TRUE(shown.window.isMaximized());
    EXPECT_EQ(shown.window.size(), shown.window.screen()->availableSize());
}

TEST(WindowLifetime, is_a_plain_view_inside_another_window_and_a_window_again_outside)
{
    for (const bool isInstalled : { false, true }) {
        QPointer<QWidget> inner;
        auto *const content = new QWidget;
        if (isInstalled) {
            auto *const window = new QMainWindow;
            window->setCentralWidget(content);
            NS::TitleBar::install(window);
            inner = window;
        } else {
            auto *const window = new Window;
            window->setContentView(content);
            inner = window;
        }
        const auto place = [&] {
            settle();
            return content->mapTo(inner, QPoint());
        };
        QMainWindow around;
        auto *const dock = new QDockWidget;
        dock->setWidget(inner);
        around.addDockWidget(Qt::LeftDockWidgetArea, dock);
        around.show();
        EXPECT_EQ(place(), QPoint(0, 0));

        QMdiArea area;
        area.addSubWindow(inner)->resize(200, 150);
        area.show();
        EXPECT_EQ(place(), QPoint(0, 0));

        Window outer;
        outer.setContentView(inner);
        outer.show();
        outer.activateWindow();
        EXPECT_EQ(place(), QPoint(0, 0));
        ASSERT_TRUE(QTest::qWaitForWindowActive(&outer));
        QTest::keyClick(outer.windowHandle(), Qt::Key_Space, Qt::AltModifier);
        EXPECT_TRUE(QApplication::activePopupWidget()) << "the menu is that of the outer window";
        QApplication::activePopupWidget()->close();

        inner->setParent(nullptr, Qt::Window);
        inner->show();
        EXPECT_EQ(place(), QPoint(0, barHeight));
        EXPECT_TRUE(inner->windowHandle()->flags() & Qt::FramelessWindowHint);
        delete inner;
    }
}

TEST(WindowLifetime, other_window_flags_do_not_bring_back_the_frame_of_the_desktop)
{
    ShownWindow shown;
    shown.window.setWindowFlags(Qt::Window | Qt::WindowStaysOnTopHint);
    shown.window.show();
    for (const Qt::WindowFlags flags :
         { shown.window.windowFlags(), shown.window.windowHandle()->flags() })
        EXPECT_TRUE(flags & Qt::FramelessWindowHint && flags & Qt::WindowStaysOnTopHint);
}

TEST(WindowLifetime, the_title_bar_leaves_the_views_that_accessories_have_lost)
{
    ShownWindow shown;
    const auto height = [&] {
        settle();
        return shown.titleBar()->height();
    };
    const QPointer<QWidget> first = new QWidget;
    NS::TitlebarAccessoryViewController *const controller = accessory(first, 40);
    shown.window.addTitlebarAccessoryViewController(controller);
    EXPECT_EQ(height(), barHeight + 40);
    auto *const second = new QWidget;
    second->resize(10, 30);
    controller->setView(second);
    EXPECT_EQ(height(), barHeight + 30);
    EXPECT_FALSE(first) << "it would still be in the title bar";

    QWidget other;
    second->setParent(&other);
    second->setGeometry(1, 2, 3, 4);
    EXPECT_EQ(height(), barHeight);
    EXPECT_EQ(second->geometry(), QRect(1, 2, 3, 4));
    delete second;
    EXPECT_EQ(height(), barHeight);
}

TEST(WindowLifetime, what_lies_over_a_handle_gets_its_clicks)
{
    ShownWindow shown;
    auto *const handle = new QWidget;
    handle->setProperty("mouseDownCanMoveWindow", true);
    shown.window.addTitlebarAccessoryViewController(accessory(handle, 40));
    QPushButton above(&shown.window);
    above.setGeometry(20, 20, 100, 50);
    above.show();
    above.raise();
    const QSignalSpy clicks(&above, &QPushButton::clicked);
    clickAt(&shown.window, { 60, 45 });
    EXPECT_EQ(clicks.size(), 1);
}
