// SPDX-License-Identifier: MIT
// Views in a title bar, and the events that the bar leaves to them.
#include "ShownWindow.h"

#include <pellarvine/Platform/NSTitlebarAccessoryViewController.h>
#include <pellarvine/Platform/NSView.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QGuiApplication>
#include <QMenuBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using NS::Window;
using NS::WindowButton;

namespace {

struct Shown : ShownWindow
{
    using ShownWindow::ShownWindow;

    // Drags from that point. Returns the distance that the window has moved.
    QPoint drag(QPoint from)
    {
        const QPoint origin = window.pos();
        const QPoint start = window.mapToGlobal(from);
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, from);
        const QPoint to = start + QPoint(40, 30);
        QMouseEvent move(QEvent::MouseMove, window.mapFromGlobal(to), to, Qt::NoButton,
                         Qt::LeftButton, {});
        QCoreApplication::sendEvent(window.windowHandle(), &move);
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, window.mapFromGlobal(to));
        return window.pos() - origin;
    }
};

class Handle : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
    Q_INVOKABLE bool mouseDownCanMoveWindow(QPoint position) { return position.x() < 20; }

protected:
    void mousePressEvent(QMouseEvent *event) override { event->accept(); }
};

} // namespace

TEST(TitleBar, empty_parts_of_its_menus_and_tabs_move_the_window)
{
    Shown shown;
    NS::TitlebarAccessoryViewController accessory;
    auto *const bars = new QWidget;
    bars->resize(10, 60);
    auto *const menus = new QMenuBar(bars);
    menus->setGeometry(0, 0, 200, 30);
    menus->addMenu(u"Edit"_s)->addAction(u"Copy"_s);
    auto *const tabs = new QTabBar(bars);
    tabs->setGeometry(0, 30, 200, 30);
    tabs->setExpanding(false);
    tabs->addTab(u"One"_s);
    accessory.setView(bars);
    shown.window.addTitlebarAccessoryViewController(&accessory);
    QApplication::processEvents();
    const auto placeIn = [&](QWidget *widget, QPoint position) {
        return widget->mapTo(&shown.window, position);
    };
    EXPECT_EQ(shown.drag(placeIn(menus, { 190, 15 })), QPoint(40, 30));
    EXPECT_EQ(shown.drag(placeIn(tabs, { 190, 15 })), QPoint(40, 30));
    EXPECT_EQ(shown.drag(placeIn(tabs, tabs->tabRect(0).center())), QPoint());
    const QPoint empty = placeIn(tabs, { 190, 15 });
    QMouseEvent doubleClick(QEvent::MouseButtonDblClick, empty, shown.window.mapToGlobal(empty),
                            Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(shown.window.windowHandle(), &doubleClick);
    EXPECT_TRUE(shown.window.isMaximized()) << "so does a double click what it does on the bar";
}

TEST(TitleBar, a_view_in_it_says_which_of_its_parts_move_the_window)
{
    Shown shown;
    auto *const handle = new Handle;
    NS::addSubview(shown.titleBar(), handle);
    handle->setGeometry(200, 0, 60, 22);
    EXPECT_EQ(shown.drag({ 210, 11 }), QPoint(40, 30));
    EXPECT_EQ(shown.drag({ 240, 11 }), QPoint());
    auto *const button = new QPushButton;
    NS::addSubview(shown.titleBar(), button);
    button->setGeometry(100, 0, 60, 22);
    EXPECT_EQ(shown.drag({ 130, 11 }), QPoint());
    button->setProperty("mouseDownCanMoveWindow", true);
    EXPECT_EQ(shown.drag({ 130, 11 }), QPoint(40, 30));
}

TEST(TitleBar, keeps_the_window_wide_enough_for_its_views)
{
    Shown shown;
    NS::TitlebarAccessoryViewController accessory;
    auto *const view = new QWidget;
    view->setMinimumSize(260, 30);
    accessory.setView(view);
    shown.window.resize(10, 300);
    EXPECT_EQ(shown.window.width(), 47 + 14 + 7) << "the buttons alone";
    shown.window.addTitlebarAccessoryViewController(&accessory);
    QApplication::processEvents();
    EXPECT_EQ(shown.window.width(), 260);
    view->setMinimumWidth(280);
    QApplication::processEvents();
    shown.window.resize(10, 300);
    EXPECT_EQ(shown.window.width(), 280);

    // The minimum widths of the content and of the program apply too.
    auto *const content = new QWidget;
    content->setMinimumWidth(350);
    shown.window.setContentView(content);
    QApplication::processEvents();
    EXPECT_EQ(shown.window.minimumWidth(), 350);
    content->setMinimumWidth(0);
    QApplication::processEvents();
    EXPECT_EQ(shown.window.minimumWidth(), 280);
    shown.window.setMinimumWidth(500);
    QApplication::processEvents();
    EXPECT_EQ(shown.window.minimumWidth(), 500);
}

TEST(TitleBar, leaves_content_behind_it_the_clicks_beside_its_controls)
{
    Shown shown(whole | Window::fullSizeContentView);
    auto *const content = new QWidget;
    auto *const button = new QPushButton(content);
    button->setGeometry(0, 0, 400, 22);
    shown.window.setContentView(content);
    NS::layoutSubtreeIfNeeded(&shown.window);
    QSignalSpy clicks(button, &QPushButton::clicked);
    QTest::mouseClick(shown.window.windowHandle(), Qt::LeftButton, {}, { 150, 11 });
    EXPECT_EQ(clicks.size(), 1);
    QTest::mouseClick(shown.window.windowHandle(), Qt::LeftButton, {}, { 54, 11 });
    EXPECT_EQ(clicks.size(), 1);
    EXPECT_TRUE(shown.window.isMaximized()) << "the zoom button lies above";
    shown.window.zoom();
    button->hide();
    EXPECT_EQ(shown.drag({ 150, 11 }), QPoint(40, 30)) << "what nobody takes is the title bar";
    EXPECT_EQ(shown.drag({ 150, 100 }), QPoint());
}

TEST(TitleBar, a_window_is_a_window_to_screen_readers_and_its_border_nothing)
{
    Shown shown;
    shown.window.setWindowTitle(u"Letters"_s);
    shown.window.setContentView(new QPushButton(u"Send"_s));
    QAccessibleInterface *const window = QAccessible::queryAccessibleInterface(&shown.window);
    EXPECT_EQ(window->role(), QAccessible::Window);
    EXPECT_EQ(window->text(QAccessible::Name), u"Letters"_s);
    ASSERT_EQ(window->childCount(), 2);
    QStringList names;
    for (int i = 0; i < window->childCount(); ++i) {
        names.append(window->child(i)->text(QAccessible::Name));
        EXPECT_EQ(window->indexOfChild(window->child(i)), i);
    }
    names.sort();
    EXPECT_EQ(names, QStringList({ u"Send"_s, u"Title bar"_s }));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(shown.titleBar())->role(),
              QAccessible::TitleBar);
}

TEST(TitleBar, the_bundle_identifier_is_the_application_id_unless_the_program_has_set_one)
{
    const QString domain = QCoreApplication::organizationDomain();
    const QString name = QCoreApplication::applicationName();
    const auto restore = qScopeGuard([&] {
        QCoreApplication::setOrganizationDomain(domain);
        QCoreApplication::setApplicationName(name);
        QGuiApplication::setDesktopFileName({});
    });
    QCoreApplication::setOrganizationDomain(u"lab.example.org"_s);
    QCoreApplication::setApplicationName(u"mail"_s);
    QGuiApplication::setDesktopFileName(u"own"_s);
    {
        const Window window;
    }
    EXPECT_EQ(QGuiApplication::desktopFileName(), u"own"_s);
    QGuiApplication::setDesktopFileName({});
    {
        const Window window;
    }
    EXPECT_EQ(QGuiApplication::desktopFileName(), u"org.example.lab.mail"_s);
}

#include "TitleBarTest.moc"
