// SPDX-License-Identifier: MIT
// A popover whose callbacks and signals close, delete and replace what takes part.
#include <pellarvine/Platform/NSPopover.h>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;
using NS::Popover;
using NS::RectEdge;

namespace {

class Controller : public NS::ViewController
{
public:
    explicit Controller(QWidget *view = new QLineEdit) { setView(view); }

    std::function<void()> whenShown = [] {
    };
    std::function<void()> whenHidden = [] {
    };

protected:
    void viewWillAppear() override { whenShown(); }
    void viewDidDisappear() override { whenHidden(); }
};

class Asking : public Popover
{
public:
    std::function<bool()> answer = [] {
        return true;
    };

protected:
    bool popoverShouldClose() override { return answer(); }
};

// Handles posted events and deferred deletions.
void settle()
{
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// A popover with a text field, a window of its own or, if the parameter is set, part of the window.
class PopoverLifetime : public testing::TestWithParam<bool>
{
protected:
    PopoverLifetime()
    {
        window->setGeometry(100, 100, 400, 400);
        button->setGeometry(150, 200, 100, 30);
        field->setGeometry(200, 350, 100, 30);
        window->show();
        window->activateWindow();
        field->setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window));
        popover->setContentViewController(controller);
        popover->setStaysInWindow(GetParam());
    }
    void TearDown() override
    {
        delete popover;
        delete window;
    }

    void show()
    {
        popover->showRelativeToRect(QRectF(0, 0, 9, 9), button, RectEdge::maxY);
        settle();
    }

    QPointer<QWidget> window { new QWidget };
    QPointer<QPushButton> button { new QPushButton(window) };
    QLineEdit *field = new QLineEdit(window);
    QPointer<Asking> popover { new Asking };
    QPointer<Controller> controller { new Controller };
};

INSTANTIATE_TEST_SUITE_P(, PopoverLifetime, testing::Bool());

} // namespace

TEST_P(PopoverLifetime, its_content_may_close_or_delete_it_while_it_is_shown)
{
    controller->whenShown = [this] {
        popover->close();
    };
    show();
    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(controller->view()->isVisible());

    controller->whenShown = [this] {
        delete popover;
    };
    show();
    EXPECT_FALSE(popover);
    EXPECT_FALSE(controller);
}

TEST_P(PopoverLifetime, its_content_may_delete_it_or_the_window_while_it_is_hidden)
{
    show();
    controller->whenHidden = [this] {
        delete popover;
    };
    popover->close();
    EXPECT_FALSE(popover);

    popover = new Asking;
    popover->setStaysInWindow(GetParam());
    controller = new Controller;
    popover->setContentViewController(controller);
    show();
    QObject::connect(popover, &Popover::didClose, [this] { delete window; });
    controller->view()->parentWidget()->close(); // the bubble
    EXPECT_FALSE(window);
    EXPECT_FALSE(popover->isShown());
}

TEST_P(PopoverLifetime, the_widget_that_gets_the_focus_back_may_delete_it)
{
    show();
    ASSERT_TRUE(controller->view()->hasFocus());
    QObject::connect(qApp, &QApplication::focusChanged, popover, [this](QWidget *, QWidget *now) {
        if (now == field)
            delete popover;
    });
    popover->close();
    settle();
    EXPECT_FALSE(popover);
}

TEST_P(PopoverLifetime, is_not_shown_after_a_receiver_has_taken_the_view_away)
{
    const QSignalSpy didShow(popover, &Popover::didShow);
    const QMetaObject::Connection hiding =
            QObject::connect(popover, &Popover::willShow, [this] { button->hide(); });
    show();
    EXPECT_FALSE(popover->isShown());
    QObject::disconnect(hiding);
    button->show();

    popover->setDeletesOnClose(true);
    QObject::connect(popover, &Popover::positioningRectChanged, [this] { delete button; });
    show();
    EXPECT_FALSE(popover) << "it could not be shown";
    EXPECT_TRUE(didShow.isEmpty());
}

TEST_P(PopoverLifetime, a_receiver_may_show_close_or_delete_it)
{
    const QSignalSpy didShow(popover, &Popover::didShow);
    bool showsIt = true;
    QObject::connect(popover, &Popover::willShow, [&] {
        if (std::exchange(showsIt, false))
            popover->showRelativeToRect({}, field, RectEdge::maxY);
    });
    show();
    EXPECT_EQ(popover->positioningView(), button);
    EXPECT_EQ(didShow.size(), 1);
    popover->close();

    const auto closing =
            QObject::connect(popover, &Popover::contentSizeChanged, [this] { popover->close(); });
    static_cast<QLineEdit *>(controller->view())->setMinimumWidth(200);
    show();
    EXPECT_FALSE(popover->isShown());
    EXPECT_EQ(didShow.size(), 1);
    QObject::disconnect(closing);

    QObject::connect(popover, &Popover::contentSizeChanged, [this] { delete popover; });
    controller->view()->setMinimumWidth(220);
    show();
    EXPECT_FALSE(popover);
}

TEST_P(PopoverLifetime, it_asks_once_at_a_time_and_may_end_while_it_asks)
{
    show();
    int asked = 0;
    popover->answer = [&] {
        ++asked;
        popover->performClose(); // for example by a key in a dialog that asks the user
        return false;
    };
    popover->performClose();
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(popover->isShown());

    popover->answer = [this] {
        delete window;
        delete popover;
        return true;
    };
    Asking *const ended = popover;
    ended->performClose();
    EXPECT_FALSE(popover);
}

TEST_P(PopoverLifetime, closes_without_its_view_and_survives_the_end_of_its_controller)
{
    show();
    delete controller->view();
    settle();
    EXPECT_FALSE(popover->isShown());

    controller = new Controller;
    popover->setContentViewController(controller);
    show();
    QPointer<QWidget> former = controller->view();
    controller->setView(new QLineEdit);
    settle();
    EXPECT_TRUE(controller->view()->isVisible());
    EXPECT_FALSE(former) << "nobody owns it";

    QObject::connect(popover, &Popover::didClose, [this] { delete popover; });
    popover->setContentViewController(nullptr);
    EXPECT_FALSE(popover);
}

TEST_P(PopoverLifetime, its_content_can_replace_itself)
{
    auto *const list = new QListWidget;
    list->addItem(u"Next"_s);
    controller->setView(list);
    show();
    const QPointer<Controller> next = new Controller;
    QObject::connect(list, &QListWidget::itemClicked,
                     [&] { popover->setContentViewController(next); });
    const QPoint item = list->visualItemRect(list->item(0)).center();
    QTest::mouseClick(list->window()->windowHandle(), Qt::LeftButton, {},
                      list->viewport()->mapTo(list->window(), item));
    settle();
    EXPECT_TRUE(next->view()->isVisible());
    EXPECT_FALSE(controller);
}

TEST_P(PopoverLifetime, does_not_point_at_its_own_content)
{
    auto *const content = new QWidget;
    content->setFixedSize(100, 40);
    auto *const inner = new QPushButton(content);
    controller->setView(content);
    show();
    popover->showRelativeToRect({}, inner, RectEdge::maxY);
    EXPECT_TRUE(popover->isShown());
    EXPECT_EQ(popover->positioningView(), button);
}

TEST_P(PopoverLifetime, is_not_shown_if_its_view_cannot_be_made)
{
    class Failing : public NS::ViewController
    {
        void loadView() override { throw std::runtime_error("no view"); }
    };
    popover->setContentViewController(new Failing);
    EXPECT_THROW(show(), std::runtime_error);
    EXPECT_FALSE(popover->isShown());
    popover->setContentViewController(new Controller);
    show();
    EXPECT_TRUE(popover->isShown());
}

TEST_P(PopoverLifetime, turns_with_the_direction_of_its_view)
{
    show();
    window->setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(controller->view()->layoutDirection(), Qt::RightToLeft);
}
