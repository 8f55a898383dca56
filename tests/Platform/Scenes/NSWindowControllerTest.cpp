// SPDX-License-Identifier: MIT
#include "ResourceFile.h"

#include <pellarvine/Platform/NSWindowController.h>

#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

const QByteArray form = R"(<ui version="4.0"><widget class="QWidget" name="Preferences">
<widget class="QLineEdit" name="field">
<property name="outlets" stdset="0"><string>owner.field</string></property>
</widget></widget></ui>)";

class Controller : public NS::WindowController
{
    Q_OBJECT
    Q_PROPERTY(QLineEdit *field MEMBER field)

public:
    using NS::WindowController::WindowController;

    void windowDidLoad() override
    {
        ++loads;
        hadField = field;
        hadWindow = window();
        if (whenLoaded)
            whenLoaded();
    }
    bool windowShouldClose() override { return !whenClosing || whenClosing(); }

    QPointer<QLineEdit> field;
    int loads = 0;
    bool hadField = false;
    bool hadWindow = false;
    std::function<void()> whenLoaded;
    std::function<bool()> whenClosing;
};

} // namespace

TEST(WindowController, the_window_is_loaded_once_when_it_is_first_asked_for)
{
    const ResourceFile file(u":/Preferences.ui"_s, form);
    auto controller = std::make_unique<Controller>(u"Preferences"_s);
    const QSignalSpy changes(controller.get(), &NS::WindowController::windowChanged);
    EXPECT_FALSE(controller->isWindowLoaded());
    controller->close();
    EXPECT_EQ(controller->loads, 0);

    const QPointer<QWidget> window = controller->window();
    ASSERT_TRUE(window);
    EXPECT_EQ(controller->window(), window);
    EXPECT_EQ(controller->loads, 1);
    EXPECT_TRUE(controller->hadField);
    EXPECT_TRUE(controller->hadWindow);
    EXPECT_TRUE(controller->isWindowLoaded());
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(changes.count(), 1);
    controller.reset();
    EXPECT_FALSE(window);
}

TEST(WindowController, showing_brings_the_same_window_back)
{
    const ResourceFile file(u":/Preferences.ui"_s, form);
    Controller controller(u"Preferences"_s);
    controller.showWindow();
    QWidget *const window = controller.window();
    EXPECT_TRUE(window->isVisible());
    window->setWindowState(Qt::WindowMinimized);
    controller.showWindow();
    EXPECT_FALSE(window->isMinimized());
    controller.close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(QMetaObject::invokeMethod(&controller, "showWindow"));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(controller.loads, 1);
}

TEST(WindowController, a_file_that_cannot_be_loaded_is_one_warning_and_no_window)
{
    const ResourceFile file(u":/Preferences.ui"_s,
                            QByteArray(form).replace("owner.field", "owner.x"));
    Controller controller(u"Preferences"_s);
    ::testing::internal::CaptureStdout();
    controller.showWindow();
    controller.showWindow();
    EXPECT_EQ(
            ::testing::internal::GetCapturedStdout(),
            "Warning: Preferences.ui:3:45: field: Controller has no key \"x\" (key path \"x\")\n");
    EXPECT_FALSE(controller.isWindowLoaded());
    EXPECT_EQ(controller.loads, 0);
}

TEST(WindowController, a_window_that_is_handed_over_is_owned)
{
    QWidget parent;
    const QPointer<QWidget> owned = new QWidget;
    auto *const lent = new QWidget(&parent);
    {
        Controller controller(owned);
        EXPECT_EQ(controller.window(), owned);
        EXPECT_EQ(controller.loads, 0);
        controller.setWindow(lent);
        EXPECT_FALSE(owned);
    }
    EXPECT_EQ(parent.children().size(), 1);

    Controller empty(static_cast<QWidget *>(nullptr));
    EXPECT_FALSE(empty.window());
    empty.showWindow();
    EXPECT_EQ(empty.loads, 0);
}

TEST(WindowController, a_window_that_owns_its_controller_is_not_owned_by_it)
{
    for (const bool endsWithWindow : { false, true }) {
        const QPointer<QWidget> window = new QWidget;
        const QPointer<Controller> controller = new Controller(window, window);
        controller->showWindow();
        if (endsWithWindow)
            delete window;
        else
            delete controller;
        EXPECT_FALSE(controller);
        EXPECT_EQ(window.isNull(), endsWithWindow);
        delete window;
    }
}

TEST(WindowController, escape_in_a_dialog_asks_before_the_window_closes)
{
    Controller controller(new QDialog);
    auto *const field = new QLineEdit(controller.window());
    controller.showWindow();
    int asked = 0;
    bool mayClose = false;
    controller.whenClosing = [&] {
        ++asked;
        return mayClose;
    };
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(controller.window()->isVisible());
    const QSignalSpy rejections(static_cast<QDialog *>(controller.window()), &QDialog::rejected);
    mayClose = true;
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(asked, 2);
    EXPECT_FALSE(controller.window()->isVisible());
    EXPECT_EQ(rejections.count(), 1);
}

TEST(WindowController, an_exception_is_a_warning_and_keeps_the_window_open)
{
    const ResourceFile file(u":/Preferences.ui"_s, form);
    Controller controller(u"Preferences"_s);
    controller.whenLoaded = [] {
        throw std::runtime_error("no account");
    };
    controller.whenClosing = []() -> bool {
        throw std::runtime_error("disk full");
    };
    ::testing::internal::CaptureStdout();
    controller.showWindow();
    EXPECT_FALSE(controller.window()->close());
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Warning: no account\nWarning: disk full\n");
    EXPECT_TRUE(controller.window()->isVisible());
    controller.whenClosing = {};
    EXPECT_TRUE(controller.window()->close());
    EXPECT_FALSE(controller.window()->isVisible());
}

TEST(WindowController, callbacks_may_delete_the_controller_with_its_window)
{
    const ResourceFile file(u":/Preferences.ui"_s, form);
    QPointer<Controller> controller = new Controller(u"Preferences"_s);
    controller->whenLoaded = [&] {
        delete controller;
    };
    controller->showWindow();
    EXPECT_FALSE(controller);
    for (const bool mayClose : { false, true }) {
        controller = new Controller(new QWidget);
        const QPointer<QWidget> window = controller->window();
        controller->showWindow();
        // A question has an event loop of its own, in which anything can happen.
        controller->whenClosing = [&controller, mayClose] {
            const bool result = mayClose;
            delete controller;
            return result;
        };
        window->close();
        EXPECT_FALSE(controller);
        EXPECT_FALSE(window);
    }
}

TEST(WindowController, the_end_of_the_window_is_told)
{
    Controller controller(new QWidget);
    const QSignalSpy changes(&controller, &NS::WindowController::windowChanged);
    delete controller.window();
    EXPECT_FALSE(controller.isWindowLoaded());
    EXPECT_EQ(changes.count(), 1);
    controller.setWindow(new QWidget);
    controller.setWindow(new QDialog(controller.window())); // is deleted with the previous one
    EXPECT_EQ(controller.window(), nullptr);
    EXPECT_EQ(changes.count(), 3);
}

#include "NSWindowControllerTest.moc"
