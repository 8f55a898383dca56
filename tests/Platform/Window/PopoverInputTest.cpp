// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSPopover.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using NS::Popover;

// When a key closes a list, a Wayland compositor may take the focus from the program.
TEST(PopoverInput, a_key_that_closes_a_list_in_a_popover_does_not_close_that_too)
{
    QWidget window;
    window.setGeometry(100, 100, 400, 400);
    window.show();
    auto *const choice = new QComboBox;
    choice->addItems({ u"Everything"_s, u"Something"_s });
    auto *const controller = new NS::ViewController;
    controller->setView(choice);
    Popover popover;
    popover.setContentViewController(controller);
    popover.setBehavior(Popover::Behavior::transient);
    for (const Qt::Key key : { Qt::Key_Escape, Qt::Key_Return }) {
        popover.showRelativeToRect({}, &window, NS::RectEdge::maxY);
        QTest::qWait(0);
        choice->showPopup();
        QTest::keyClick(window.windowHandle(), Qt::Key_Down);
        QTest::keyClick(window.windowHandle(), key);
        EXPECT_FALSE(choice->view()->isVisible());
        EXPECT_TRUE(popover.isShown());
        QTest::qWait(0);
        Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
        EXPECT_TRUE(popover.isShown());
        Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
        Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
        EXPECT_TRUE(popover.isShown()) << "it comes and goes";
        QTest::mousePress(choice->window()->windowHandle(), Qt::LeftButton);
        QTest::mouseRelease(choice->window()->windowHandle(), Qt::LeftButton);
        Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
        EXPECT_FALSE(popover.isShown()) << "the user has left";
    }
}

TEST(PopoverInput, the_window_of_a_popover_with_the_keyboard_still_looks_active)
{
    NS::Window window;
    window.setContentView(new QWidget);
    window.resize(400, 300);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto closeButtonIsColored = [&] {
        QWidget *const button = window.standardWindowButton(NS::WindowButton::close);
        return button->grab().toImage().pixelColor(4, 8).saturation() > 100;
    };
    auto *const controller = new NS::ViewController;
    controller->setView(new QComboBox);
    Popover popover;
    popover.setContentViewController(controller);
    popover.showRelativeToRect({}, window.contentView(), NS::RectEdge::minY);
    ASSERT_TRUE(QTest::qWaitForWindowActive(controller->view()->window()));
    EXPECT_TRUE(closeButtonIsColored());
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_FALSE(closeButtonIsColored());
}
