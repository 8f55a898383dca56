// SPDX-License-Identifier: MIT
#include "ResourceFile.h"

#include <pellarvine/Ostrevane/App.h>
#include <pellarvine/Pellarvine/AboutWindowController.h>
#include <pellarvine/Pellarvine/Application.h>
#include <pellarvine/Platform/KeyValueCoding.h>
#include <pellarvine/Platform/NSNib.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <set>
#include <vector>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

const QByteArray facts = R"(<plist><dict>
<key>CFBundleDisplayName</key><string>Letters</string>
<key>CFBundleShortVersionString</key><string>2.1</string>
<key>NSHumanReadableCopyright</key><string>© 2026 The Letters Company</string>
</dict></plist>)";

class About : public ::testing::Test
{
public:
    ~About() override
    {
        AboutWindowController::setInstance(nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static QString text(QWidget *window, const QString &label)
    {
        return window->findChild<QLabel *>(label)->text();
    }
};

} // namespace

TEST_F(About, the_texts_are_those_of_the_moment_in_which_the_controller_is_made)
{
    std::unique_ptr<AboutWindowController> controller;
    {
        const ResourceFile file(u":/Info.plist"_s, facts);
        controller = std::make_unique<AboutWindowController>();
    }
    EXPECT_EQ(controller->applicationName(), u"Letters"_s);
    EXPECT_EQ(controller->applicationVersion(), u"Version 2.1"_s);
    EXPECT_EQ(controller->applicationCopyright(), u"© 2026 The Letters Company"_s);

    const ResourceFile file(u":/Info.plist"_s, "<plist><dict/></plist>");
    const AboutWindowController empty(static_cast<QWidget *>(nullptr));
    EXPECT_EQ(empty.applicationName(), QString());
    EXPECT_EQ(empty.applicationVersion(), u"Version 0"_s);
    EXPECT_EQ(empty.applicationCopyright(), QString());
}

TEST_F(About, the_labels_of_the_window_follow_the_controllers_texts)
{
    const ResourceFile file(u":/Info.plist"_s, facts);
    AboutWindowController controller;
    QWidget *const window = controller.window();
    ASSERT_TRUE(window);
    EXPECT_EQ(window->windowTitle(), u"About Letters"_s);
    const struct
    {
        QString label;
        QString key;
        QString text;
    } rows[] = {
        { u"nameLabel"_s, u"applicationName"_s, u"Letters"_s },
        { u"versionLabel"_s, u"applicationVersion"_s, u"Version 2.1"_s },
        { u"copyrightLabel"_s, u"applicationCopyright"_s, u"© 2026 The Letters Company"_s },
    };
    for (const auto &row : rows) {
        EXPECT_EQ(text(window, row.label), row.text);
        QSignalSpy changes(&controller, QByteArray("2" + row.key.toUtf8() + "Changed(QString)"));
        NS::setValueForKeyPath(&controller, row.key, u"new"_s);
        NS::setValueForKeyPath(&controller, row.key, u"new"_s);
        EXPECT_EQ(changes.count(), 1);
        EXPECT_EQ(text(window, row.label), u"new"_s);
        const auto flags = window->findChild<QLabel *>(row.label)->textInteractionFlags();
        EXPECT_TRUE(flags.testFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard));
    }
    EXPECT_EQ(window->findChild<QLabel *>(u"iconLabel"_s)->pixmap().deviceIndependentSize(),
              QSizeF(64, 64));
}

TEST_F(About, its_window_moves_by_its_background_and_closes_by_escape)
{
    AboutWindowController controller;
    controller.showWindow();
    auto *const window = qobject_cast<NS::Window *>(controller.window());
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->isMovableByWindowBackground());
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());

    // A window of another class gets nothing; and none is nothing to do.
    AboutWindowController other(new QWidget);
    other.windowDidLoad();
    EXPECT_FALSE(other.window()->property("movableByWindowBackground").isValid());
    AboutWindowController none(static_cast<QWidget *>(nullptr));
    none.windowDidLoad();
    none.showWindow();
}

TEST_F(About, its_window_opens_in_the_middle_of_the_screen_and_reopens_where_it_was_left)
{
    AboutWindowController controller;
    controller.showWindow();
    QWidget *const window = controller.window();
    const QPoint away =
            window->geometry().center() - window->screen()->availableGeometry().center();
    EXPECT_LE(away.manhattanLength(), 2);
    window->move(40, 30);
    window->close();
    controller.showWindow();
    EXPECT_EQ(window->pos(), QPoint(40, 30));
}

TEST_F(About, its_window_does_not_keep_a_program_running)
{
    QWidget document;
    document.show();
    AboutWindowController controller;
    controller.showWindow();
    QTimer::singleShot(0, &document, &QWidget::close);
    QTimer::singleShot(5000, &document, [] { QApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0) << "it ran until it was stopped";
}

TEST_F(About, the_details_for_a_bug_report_go_to_the_clipboard)
{
    const ResourceFile file(u":/Info.plist"_s, facts);
    AboutWindowController controller;
    controller.window()->findChild<QPushButton *>(u"copyButton"_s)->click();
    const QString details = QGuiApplication::clipboard()->text();
    EXPECT_EQ(details, controller.details());
    EXPECT_THAT(details.toStdString(),
                ::testing::AllOf(::testing::StartsWith("Letters, Version 2.1\nQt "),
                                 ::testing::HasSubstr(App::deviceModel().toStdString())));
}

TEST_F(About, a_hosts_own_file_of_the_name_replaces_the_librarys)
{
    EXPECT_EQ(NS::Nib::path(u"AboutWindowController"_s),
              u":/pellarvine/AboutWindowController.ui"_s);
    const ResourceFile file(u":/forms/AboutWindowController.ui"_s,
                            R"(<ui version="4.0"><widget class="QDialog" name="Mine">
<widget class="QLabel" name="l">
<property name="bindings" stdset="0"><string>text = owner.applicationVersion</string></property>
</widget></widget></ui>)");
    AboutWindowController controller;
    ASSERT_TRUE(controller.window());
    EXPECT_EQ(controller.window()->objectName(), u"Mine"_s);
    EXPECT_EQ(text(controller.window(), u"l"_s), controller.applicationVersion());
}

TEST_F(About, showing_twice_makes_one_controller_and_brings_its_window_back)
{
    AboutWindowController::show();
    AboutWindowController *const controller = AboutWindowController::instance();
    QWidget *const window = controller->window();
    EXPECT_TRUE(window->isVisible());
    window->close();
    AboutWindowController::show();
    EXPECT_EQ(AboutWindowController::instance(), controller);
    EXPECT_EQ(controller->window(), window);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(About, another_controller_takes_the_shared_ones_place)
{
    const QPointer<AboutWindowController> first = AboutWindowController::instance();
    auto *const second = new AboutWindowController(new QWidget);
    AboutWindowController::setInstance(second);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(first);
    AboutWindowController::show();
    EXPECT_EQ(AboutWindowController::instance(), second);
    EXPECT_TRUE(second->window()->isVisible());
}

TEST_F(About, threads_that_come_first_at_once_get_the_same_controller_of_the_main_thread)
{
    std::vector<AboutWindowController *> seen(8);
    std::vector<std::unique_ptr<QThread>> threads;
    for (auto &controller : seen) {
        threads.emplace_back(
                QThread::create([&controller] { controller = AboutWindowController::instance(); }));
        threads.back()->start();
    }
    for (const auto &thread : threads)
        thread->wait();
    EXPECT_EQ(std::set(seen.begin(), seen.end()).size(), 1U);
    EXPECT_EQ(seen.front()->thread(), QThread::currentThread());
    AboutWindowController::show();
    EXPECT_TRUE(seen.front()->window()->isVisible());
}

TEST_F(About, the_about_command_shows_the_shared_window_whoever_sends_it)
{
    auto *const application = qobject_cast<Application *>(NS::Application::sharedApplication());
    ASSERT_TRUE(application);
    QWidget *const window = AboutWindowController::instance()->window();
    const std::function<void()> commands[] = {
        [&] { application->aboutAction()->trigger(); },
        [&] { application->orderFrontStandardAboutPanel(); },
        [&] { static_cast<NS::Application *>(application)->orderFrontStandardAboutPanel(12); },
        [&] { QMetaObject::invokeMethod(application, "orderFrontStandardAboutPanel"); },
    };
    for (const auto &command : commands) {
        command();
        EXPECT_TRUE(window->isVisible());
        EXPECT_TRUE(QApplication::topLevelWidgets().contains(window));
        for (const QWidget *const other : QApplication::topLevelWidgets())
            EXPECT_FALSE(qobject_cast<const QMessageBox *>(other));
        window->close();
    }
    EXPECT_EQ(application->aboutAction(), application->aboutAction());
    EXPECT_EQ(application->aboutAction()->menuRole(), QAction::AboutRole);
    QGuiApplication::setApplicationDisplayName(u"Post"_s);
    EXPECT_EQ(application->aboutAction()->text(), u"&About Post"_s);
    QGuiApplication::setApplicationDisplayName({});
}

TEST_F(About, the_plain_application_shows_the_standard_panel)
{
    const ResourceFile file(u":/Info.plist"_s, facts);
    auto *const application = NS::Application::sharedApplication();
    application->NS::Application::orderFrontStandardAboutPanel();
    const QPointer<QMessageBox> panel =
            qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    ASSERT_TRUE(panel);
    EXPECT_EQ(panel->informativeText(), u"© 2026 The Letters Company"_s);
    panel->accept();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(panel);
}

} // namespace Pellarvine

// The application object is what is tested, and there is one in a process.
int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Pellarvine::Application application(argc, argv);
    return RUN_ALL_TESTS();
}
