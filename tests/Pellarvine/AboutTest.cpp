// SPDX-License-Identifier: MIT
#include "Drawing/Shades.h"
#include "Pictures.h"
#include "ResourceFile.h"

#include <pellarvine/Ostrevane/App.h>
#include <pellarvine/Pellarvine/AboutWindowController.h>
#include <pellarvine/Pellarvine/Application.h>
#include <pellarvine/Platform/KeyValueCoding.h>
#include <pellarvine/Platform/NSNib.h>
#include <pellarvine/Platform/NSWindow.h>
#include <pellarvine/Platform/Version.h>

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <gmock/gmock.h>

#include <algorithm>
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

const QByteArray identifierAlone = "<plist><dict><key>CFBundleIdentifier</key>"
                                   "<string>org.example.letters</string></dict></plist>";

class About : public ::testing::Test
{
public:
    ~About() override
    {
        AboutWindowController::setInstance(nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    // Without the colours of links.
    static QString text(QWidget *window, const QString &label)
    {
        static const QRegularExpression color(uR"( style="color:#[0-9a-f]{6}")"_s);
        return window->findChild<QLabel *>(label)->text().remove(color);
    }
};

} // namespace

TEST_F(About, texts_are_read_when_the_controller_is_made)
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
    const std::tuple<QString, QString, QString> rows[] = {
        { u"nameLabel"_s, u"applicationName"_s, u"Letters"_s },
        { u"versionLabel"_s, u"applicationVersion"_s, u"Version 2.1"_s },
        { u"copyrightLabel"_s, u"applicationCopyright"_s, u"© 2026 The Letters Company"_s },
    };
    for (const auto &[label, key, shown] : rows) {
        EXPECT_EQ(text(window, label), shown);
        QSignalSpy changes(&controller, QByteArray("2" + key.toUtf8() + "Changed(QString)"));
        NS::setValueForKeyPath(&controller, key, u"new"_s);
        NS::setValueForKeyPath(&controller, key, u"new"_s);
        EXPECT_EQ(changes.count(), 1);
        EXPECT_EQ(text(window, label), u"new"_s);
        const auto flags = window->findChild<QLabel *>(label)->textInteractionFlags();
        EXPECT_TRUE(flags.testFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard));
    }
    EXPECT_EQ(window->findChild<QLabel *>(u"iconLabel"_s)->pixmap().deviceIndependentSize(),
              QSizeF(64, 64));
}

TEST_F(About, a_row_is_shown_only_if_there_is_something_in_it)
{
    const ResourceFile plist(u":/Info.plist"_s, identifierAlone);
    const QString metainfo = u":/org.example.letters.metainfo.xml"_s;
    const struct
    {
        QByteArray metainfo;
        QString authors;
        QString links;
        QString documents; // without the list of libraries, which is always there
    } rows[] = {
        { "", {}, {}, {} },
        { "<developer><name>Ada &amp; Co.</name></developer>", u"By Ada & Co."_s, {}, {} },
        { "<developer_name>Co.</developer_name>"
          "<custom><value key='Pellarvine::Authors'>Ada\n Bo\n</value></custom>",
          u"By "_s + QLocale().createSeparatedList({ u"Ada"_s, u"Bo"_s }),
          {},
          {} },
        { "<url type='homepage'>https://a.example/?a=1&amp;b=2</url>"
          "<url type='bugtracker'>javascript:alert(1)</url>"
          "<url type='vcs-browser'>https://a.example/&quot;b</url>",
          {},
          u"<a href=\"https://a.example/?a=1&amp;b=2\">Website</a>"_s,
          {} },
        { "<project_license>LicenseRef-None</project_license><releases><release version='1'/>"
          "</releases>",
          {},
          {},
          u"<a href=\"about:license\">License: LicenseRef-None</a>"
          " · %1 · <a href=\"about:releases\">Release Notes</a>"_s },
        { "<custom><value key='Pellarvine::Credits'>Cy</value></custom>",
          {},
          {},
          u"<a href=\"about:credits\">Credits</a> · %1"_s },
    };
    for (const auto &row : rows) {
        const ResourceFile file(metainfo, "<component>" + row.metainfo + "</component>");
        AboutWindowController controller;
        controller.showWindow();
        QWidget *const window = controller.window();
        ASSERT_TRUE(window);
        const QString libraries = u"<a href=\"about:libraries\">Libraries</a>"_s;
        const QString documents =
                row.documents.isEmpty() ? libraries : row.documents.arg(libraries);
        for (const auto &[name, expected] :
             { std::pair(u"authorsLabel"_s, row.authors), std::pair(u"linksLabel"_s, row.links),
               std::pair(u"documentsLabel"_s, documents),
               std::pair(u"copyrightLabel"_s, QString()) }) {
            EXPECT_EQ(text(window, name), expected) << row.metainfo.constData();
            EXPECT_EQ(window->findChild<QLabel *>(name)->isVisible(), !expected.isEmpty());
        }
    }
}

TEST_F(About, a_link_shows_its_document_until_escape_or_Ctrl_W)
{
    const ResourceFile plist(u":/Info.plist"_s, identifierAlone);
    const ResourceFile license(u":/LICENSES/MIT.txt"_s, "Permission is granted.\n");
    const ResourceFile other(u":/LICENSES/GPL-3.0-or-later.txt"_s, "Copyleft.\n");
    const ResourceFile metainfo(
            u":/org.example.letters.metainfo.xml"_s,
            "<component><project_license>(MIT OR GPL-3.0-or-later)</project_license><releases>"
            "<release version='2.1' date='2026-11-02'><description><p>Letters can be\nsent.</p>"
            "<ul><li>Quickly</li></ul></description></release><release version='2.0'/></releases>"
            "<custom><value key='Pellarvine::Libraries'>SQLite 3.40, blessing</value></custom>"
            "</component>");
    AboutWindowController controller;
    controller.showWindow();
    auto *const links = controller.window()->findChild<QLabel *>(u"documentsLabel"_s);
    const QString day = QLocale().toString(QDate(2026, 11, 2), QLocale::LongFormat);
    const std::tuple<QString, QString, QKeySequence> rows[] = {
        { u"about:license"_s, u"Permission is granted.\n\n\nCopyleft."_s, Qt::Key_Escape },
        { u"about:releases"_s, u"2.1, "_s + day + u"\n\nLetters can be sent.\n• Quickly\n\n\n2.0"_s,
          Qt::CTRL | Qt::Key_W },
        { u"about:libraries"_s,
          u"Qt %1, LGPL-3.0-only\nPellarvine %2, MIT\nSQLite 3.40, blessing"_s.arg(
                  QString::fromLatin1(qVersion()),
                  QString::fromLatin1(reinterpret_cast<const char *>(PellarvineVersionString))),
          Qt::Key_Escape },
    };
    for (const auto &[link, contents, closing] : rows) {
        Q_EMIT links->linkActivated(link);
        const QPointer<QWidget> dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog) << link.toStdString();
        EXPECT_EQ(dialog->findChild<QPlainTextEdit *>()->toPlainText(), contents);
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
        QTest::keySequence(dialog->windowHandle(), closing);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(dialog);
    }
}

TEST_F(About, a_long_name_wraps)
{
    AboutWindowController controller;
    controller.showWindow();
    QWidget *const window = controller.window();
    const int height = window->height();
    controller.setApplicationName(
            u"The Complete Correspondence of the Letters Company "_s.repeated(4));
    QCoreApplication::sendPostedEvents();
    QTest::qWait(0);
    EXPECT_LE(window->width(), 420);
    EXPECT_GT(window->height(), height + 40);
    const auto *const name = window->findChild<QLabel *>(u"nameLabel"_s);
    EXPECT_GE(name->height(), name->heightForWidth(name->width()));
}

TEST_F(About, links_are_readable_on_every_palette_also_if_it_changes)
{
    AboutWindowController controller;
    controller.showWindow();
    QWidget *const window = controller.window();
    auto *const links = window->findChild<QLabel *>(u"documentsLabel"_s);
    const QPalette light = window->palette();
    QPalette own(QColor(40, 40, 40));
    own.setColor(QPalette::Link, QColor(42, 130, 218));
    for (const QPalette &palette : { QPalette(QColor(40, 40, 40)), light, own }) {
        const auto restore = qScopeGuard(
                [before = QApplication::palette()] { QApplication::setPalette(before); });
        QApplication::setPalette(palette);
        QCoreApplication::processEvents();
        const QColor paper = window->palette().color(QPalette::Window);
        double best = 0;
        const QImage picture = links->grab().toImage();
        for (const QRgb pixel : colorsIn(picture)) {
            if (QColor(pixel).hsvSaturationF() > 0.3)
                best = std::max(best, detail::contrast(pixel, paper));
        }
        EXPECT_GE(best, 3.0) << paper.name().toStdString();
        const QString color = window->palette().color(QPalette::Link).name();
        EXPECT_EQ(links->text().contains(color), palette != QPalette(QColor(40, 40, 40)));
    }
}

TEST_F(About, many_authors_do_not_fit_the_window_and_have_one_that_scrolls)
{
    const ResourceFile plist(u":/Info.plist"_s, identifierAlone);
    const ResourceFile file(u":/org.example.letters.metainfo.xml"_s,
                            "<component><custom><value key='Pellarvine::Authors'>"
                                    + QByteArray("Ada Lovelace\n").repeated(2999)
                                    + "Zoe</value></custom></component>");
    AboutWindowController controller;
    controller.showWindow();
    QWidget *const window = controller.window();
    EXPECT_LE(window->height(), window->screen()->availableGeometry().height());
    EXPECT_THAT(
            text(window, u"authorsLabel"_s).toStdString(),
            testing::AllOf(testing::StartsWith("By Ada Lovelace, "), testing::EndsWith("others")));

    ASSERT_THAT(controller.applicationDocuments().toStdString(),
                testing::AllOf(testing::HasSubstr("<a href=\"about:authors\""),
                               testing::HasSubstr(">Authors</a>")));
    controller.openLink(u"about:authors"_s);
    const auto *const all = window->findChild<QPlainTextEdit *>();
    ASSERT_TRUE(all);
    EXPECT_TRUE(all->toPlainText().endsWith(u"Ada Lovelace\nZoe"_s));
    EXPECT_LE(all->window()->height(), window->screen()->availableGeometry().height());
}

TEST_F(About, Tab_reaches_the_texts_and_Ctrl_W_closes)
{
    const ResourceFile file(u":/Info.plist"_s, "<plist><dict><key>CFBundleName</key>"
                                               "<string>Letters</string></dict></plist>");
    AboutWindowController controller;
    controller.showWindow();
    QWidget *const window = controller.window();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"copyButton"_s)
            << "in a text, it shows a text cursor";
    EXPECT_GE(window->width(), 240) << "without a copyright, too";
    std::set<QString> stops;
    for (int i = 0; i < 8; ++i) {
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
        stops.insert(QApplication::focusWidget() ? QApplication::focusWidget()->objectName()
                                                 : QString());
    }
    EXPECT_EQ(stops,
              std::set({ u"copyButton"_s, u"documentsLabel"_s, u"nameLabel"_s, u"versionLabel"_s }))
            << "an empty copyright is no stop";
    const auto *const icon = window->findChild<QLabel *>(u"iconLabel"_s);
    EXPECT_EQ(icon->accessibleName(), u"Application icon"_s);
    QTest::keySequence(window->windowHandle(), Qt::CTRL | Qt::Key_W);
    EXPECT_FALSE(window->isVisible());
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

    // Neither a window of another class nor a missing window is changed.
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

TEST_F(About, the_shared_controller_can_be_replaced)
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

TEST_F(About, threads_that_ask_at_the_same_time_get_one_controller_of_the_main_thread)
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

// This test has its own main(): it tests the application object, and a process has only one.
int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Pellarvine::Application application(argc, argv);
    return RUN_ALL_TESTS();
}
