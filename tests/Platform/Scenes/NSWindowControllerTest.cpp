// SPDX-License-Identifier: MIT
#include "ResourceFile.h"

#include <pellarvine/Platform/NSWindowController.h>

#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <gmock/gmock.h>

#include <memory>

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
    }

    QPointer<QLineEdit> field;
    int loads = 0;
    bool hadField = false;
    bool hadWindow = false;
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

#include "NSWindowControllerTest.moc"
