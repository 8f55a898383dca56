// SPDX-License-Identifier: MIT
#include "LoopbackServer.h"
#include "TemporaryFolder.h"

#include <pellarvine/Ostrevane/TicketDialog.h>
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSStoryboard.h>
#include <pellarvine/Platform/NSTitleBar.h>
#include <pellarvine/Platform/NSViewController.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QNetworkProxy>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QTest>
#include <QVBoxLayout>
#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace Pellarvine {

namespace {

const NS::URLError refused { NS::URLError::cannotConnectToHost, u"Connection refused."_s };

// Keeps the tickets that are sent. The test sets the result.
struct Outbox
{
    QStringList sent;
    CodebaseTicket::Callback callback;

    TicketDialog::Sender sender()
    {
        return [this](const QString &summary, const QString &description,
                      CodebaseTicket::Callback whenDone) {
            sent.append(summary + "\n\n"_L1 + description);
            callback = std::move(whenDone);
        };
    }
    // Answers from another thread, as the network does.
    void answer(const std::optional<NS::URLError> &error = std::nullopt)
    {
        std::thread(std::exchange(callback, {}), error).join();
        QCoreApplication::processEvents();
    }
};

class TicketDialogTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }

    template <typename Field>
    static Field *named(const QWidget *dialog, const QString &name)
    {
        const auto fields = dialog->findChildren<Field *>();
        for (Field *const field : fields) {
            const QAccessibleInterface *const reader = QAccessible::queryAccessibleInterface(field);
            if (field->isVisible() && reader && reader->text(QAccessible::Name) == name)
                return field;
        }
        return nullptr;
    }
    template <typename Field>
    Field *named(const QString &name) const
    {
        return named<Field>(dialog.get(), name);
    }
    QString preview() const { return named<QPlainTextEdit>(u"What is sent:"_s)->toPlainText(); }
    bool isShown(const QString &text) const { return named<QLabel>(text) != nullptr; }

    Outbox outbox;
    std::unique_ptr<TicketDialog> dialog = std::make_unique<TicketDialog>(outbox.sender());
};

} // namespace

TEST_F(TicketDialogTest, the_preview_is_what_is_sent_with_or_without_the_facts)
{
    const QString facts = TicketDialog::facts();
    EXPECT_THAT(facts.toStdString(), HasSubstr(std::string("Qt ") + qVersion()));
    EXPECT_EQ(preview(), facts);

    const std::tuple<QString, bool, QString> rows[] = {
        { u"1. Open <draft> & save"_s, true,
          u"It crashes\n\n1. Open <draft> & save\n\n"_s + facts },
        { u"1. Open <draft> & save"_s, false, u"It crashes\n\n1. Open <draft> & save"_s },
        { QString(), true, u"It crashes\n\n"_s + facts },
        { QString(), false, u"It crashes\n\n"_s },
    };
    for (const auto &[description, includesFacts, sent] : rows) {
        dialog->setSummary(u"It crashes"_s);
        dialog->setDescription(description);
        QCheckBox *const box =
                named<QCheckBox>(u"Include facts about the program and this computer"_s);
        box->setChecked(includesFacts);
        EXPECT_EQ(isShown(u"The program’s name and version are always sent."_s), !includesFacts);
        EXPECT_EQ(preview(), sent);
        dialog->send();
        EXPECT_EQ(outbox.sent.constLast(), sent);
        outbox.answer();
    }
}

TEST_F(TicketDialogTest, a_report_that_was_not_sent_stays_and_is_sent_again)
{
    auto *const summary = named<QLineEdit>(u"Summary:"_s);
    auto *const description = named<QPlainTextEdit>(u"Description:"_s);
    QPushButton *const send = named<QPushButton>(u"Send"_s);
    const QSignalSpy sent(dialog.get(), &TicketDialog::sent);
    const QSignalSpy failed(dialog.get(), &TicketDialog::failed);
    QTest::keyClicks(summary, u"It crashes"_s);
    QTest::keyClicks(description, u"On opening"_s);
    QTest::mouseClick(send, Qt::LeftButton);
    EXPECT_TRUE(dialog->isSending());
    EXPECT_TRUE(isShown(u"Sending…"_s));
    EXPECT_TRUE(named<QProgressBar>(u"Sending"_s));
    // While it is sending, the dialog sends nothing else, and its fields cannot be changed.
    dialog->send();
    QTest::keyClicks(summary, u"?"_s);
    EXPECT_EQ(outbox.sent.size(), 1);

    outbox.answer(refused);
    EXPECT_TRUE(isShown(u"The report was not sent. Connection refused."_s));
    EXPECT_FALSE(named<QProgressBar>(u"Sending"_s));
    EXPECT_EQ(failed.size(), 1);
    EXPECT_EQ(dialog->summary(), u"It crashes"_s);
    EXPECT_EQ(dialog->description(), u"On opening"_s);
    EXPECT_EQ(QApplication::focusWidget(), named<QPushButton>(u"Send Again"_s));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    ASSERT_EQ(outbox.sent.size(), 2);
    EXPECT_EQ(outbox.sent[0], outbox.sent[1]);

    outbox.answer({ { NS::URLError::networkConnectionLost, u"The connection was lost."_s } });
    EXPECT_TRUE(isShown(u"The report may not have arrived. The connection was lost. If you send it "
                        "again, the report may arrive twice."_s));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    outbox.answer();
    EXPECT_TRUE(isShown(u"The report was sent. Thank you."_s));
    EXPECT_EQ(sent.size(), 1);
    EXPECT_EQ(dialog->summary() + dialog->description(), QString());
    EXPECT_FALSE(named<QPushButton>(u"Send"_s)->isEnabled());
}

TEST_F(TicketDialogTest, the_keyboard_does_everything)
{
    auto *const summary = named<QLineEdit>(u"Summary:"_s);
    EXPECT_TRUE(summary->hasFocus());
    QTest::keyClick(summary, Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClicks(summary, u"  "_s);
    QTest::keyClick(summary, Qt::Key_Return);
    EXPECT_TRUE(outbox.sent.isEmpty()) << "a report needs a summary";
    QTest::keyClicks(summary, u"It crashes"_s);

    QList<QWidget *> stops;
    for (QWidget *stop = summary; !stops.contains(stop) && stops.size() < 9;
         stop = QApplication::focusWidget()) {
        stops.append(stop);
        QTest::keyClick(stop, Qt::Key_Tab);
    }
    QStringList names;
    for (QWidget *const stop : std::as_const(stops))
        names.append(QAccessible::queryAccessibleInterface(stop)->text(QAccessible::Name));
    EXPECT_EQ(names, QStringList({ u"Summary:"_s, u"Description:"_s,
                                   u"Include facts about the program and this computer"_s,
                                   u"What is sent:"_s, u"Send"_s, u"Close"_s }));

    auto *const description = named<QPlainTextEdit>(u"Description:"_s);
    QTest::keyClicks(description, u"a"_s);
    QTest::keyClick(description, Qt::Key_Return);
    QTest::keyClicks(description, u"b"_s);
    QTest::keyClick(description, Qt::Key_Return, Qt::ControlModifier);
    ASSERT_EQ(outbox.sent.size(), 1);
    EXPECT_THAT(outbox.sent[0].toStdString(), ::testing::StartsWith("  It crashes\n\na\nb\n\n"));
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    outbox.answer(refused);
    dialog->show();
    EXPECT_TRUE(isShown(u"The report was not sent. Connection refused."_s));
}

TEST_F(TicketDialogTest, an_answer_may_come_after_the_dialog_is_destroyed)
{
    dialog->setSummary(u"It crashes"_s);
    dialog->send();
    dialog.reset();
    outbox.answer();
}

TEST_F(TicketDialogTest, the_action_opens_one_dialog_that_keeps_its_text)
{
    QWidget window;
    window.show();
    QAction *const action = TicketDialog::makeAction(&window, outbox.sender());
    EXPECT_EQ(action->parent(), &window);
    action->trigger();
    auto *const first = window.findChild<TicketDialog *>();
    ASSERT_TRUE(first && first->isVisible());
    first->setSummary(u"It crashes"_s);
    first->reject();
    action->trigger();
    EXPECT_EQ(window.findChildren<TicketDialog *>(), QList { first });
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(first->summary(), u"It crashes"_s);
}

TEST_F(TicketDialogTest, the_dialog_of_an_action_has_the_title_bar_of_its_window)
{
    const auto hasTitleBar = [](QWidget *window) {
        QWidget content(window);
        TicketDialog::makeAction(&content, {})->trigger();
        auto *const made = content.findChild<TicketDialog *>();
        EXPECT_TRUE(made && made->isVisible());
        return made && made->windowFlags().testFlag(Qt::FramelessWindowHint);
    };
    QDialog plain;
    EXPECT_FALSE(hasTitleBar(&plain));
    QDialog installed;
    QVBoxLayout layout(&installed);
    NS::TitleBar::install(&installed);
    EXPECT_TRUE(hasTitleBar(&installed));
    NS::Window window;
    EXPECT_TRUE(hasTitleBar(&window));
}

TEST_F(TicketDialogTest, properties_tell_their_changes_once)
{
    const QSignalSpy summary(dialog.get(), &TicketDialog::summaryChanged);
    const QSignalSpy description(dialog.get(), &TicketDialog::descriptionChanged);
    const QSignalSpy facts(dialog.get(), &TicketDialog::includesFactsChanged);
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(dialog->setProperty("summary", u"It crashes"_s));
        EXPECT_TRUE(dialog->setProperty("description", u"On opening"_s));
        EXPECT_TRUE(dialog->setProperty("includesFacts", false));
    }
    EXPECT_EQ(summary.size(), 1);
    EXPECT_EQ(description.size(), 1);
    EXPECT_EQ(facts.size(), 1);
}

TEST(TicketDialog, is_a_scene_of_a_storyboard)
{
    const TemporaryFolder folder;
    folder.file(u"Window.ui"_s, R"(<ui version="4.0"><widget class="QWidget" name="window">
            <addaction name="reportAction"/><action name="reportAction"/></widget></ui>)");
    folder.file(u"Report.ui"_s,
                R"(<ui version="4.0"><widget class="Pellarvine::TicketDialog" name="report">
            <property name="includesFacts"><bool>false</bool></property></widget></ui>)");
    const QString help = folder.file(u"Help.storyboard"_s, R"(<storyboard initialScene="window">
            <scene identifier="window" class="ViewController" interface="Window.ui"/>
            <scene identifier="report" class="ViewController" interface="Report.ui"/>
            <segue class="StoryboardSegue" source="window" destination="report"
                   object="reportAction" signal="triggered"/></storyboard>)");
    NS::registerClass<TicketDialog>();
    const auto storyboard = NS::Storyboard::storyboardWithContentsOfFile(help);
    const std::unique_ptr<QObject> first(storyboard->instantiateInitialController());
    QWidget *const window = qobject_cast<NS::ViewController *>(first.get())->view();
    window->show();
    window->findChild<QAction *>(u"reportAction"_s)->trigger();
    const QPointer<TicketDialog> dialog = window->findChild<TicketDialog *>();
    ASSERT_TRUE(dialog && dialog->isVisible() && dialog->isWindow());
    EXPECT_EQ(dialog->windowTitle(), u"Report a Problem"_s);
    EXPECT_FALSE(dialog->includesFacts());

    QSignalSpy failed(dialog, &TicketDialog::failed); // no tracker is set
    dialog->setSummary(u"It crashes"_s);
    dialog->send();
    ASSERT_TRUE(failed.wait(30000));
    EXPECT_EQ(dialog->summary(), u"It crashes"_s);
    QTest::keyClick(dialog, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(dialog) << "the scene ends with its window";
}

TEST(TicketDialog, a_ticket_goes_to_the_programs_tracker_and_stays_if_that_rejects_it)
{
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    const auto restore = qScopeGuard([&] {
        CodebaseTicket::setTracker({}, {});
        QSslConfiguration::setDefaultConfiguration(before);
    });
    const std::tuple<QByteArray, QString, QString> cases[] = {
        { "201 Created", u"letters"_s, u"The report was sent."_s },
        { "401 Unauthorized", u"letters"_s, u"The report was not sent. The server"_s },
        { "500 Internal Server Error", u"letters"_s, u"The report was not sent. The server"_s },
        { "201 Created", u"a b?"_s, u"The report was not sent. The address"_s },
    };
    for (const auto &[status, project, outcome] : cases) {
        SCOPED_TRACE(status.constData() + project.toStdString());
        const LoopbackServer server(LoopbackServer::answer(status));
        QSslConfiguration configuration = before;
        configuration.setCaCertificates({ server.certificate() });
        QSslConfiguration::setDefaultConfiguration(configuration);
        const QString address = server.baseUrl();
        CodebaseTicket::setTracker(address.chopped(1), project); // without its slash

        TicketDialog dialog(nullptr);
        QSignalSpy ended(&dialog, &TicketDialog::sendingChanged);
        dialog.setSummary(u"It <crashes>"_s);
        dialog.setIncludesFacts(false);
        dialog.setDescription(u"On opening"_s);
        dialog.send();
        ASSERT_TRUE(ended.wait(30000));
        const bool isSent = outcome == "The report was sent."_L1;
        EXPECT_EQ(dialog.summary(), isSent ? u""_s : u"It <crashes>"_s);
        EXPECT_EQ(dialog.description(), isSent ? u""_s : u"On opening"_s);
        const auto labels = dialog.findChildren<QLabel *>();
        EXPECT_TRUE(
                std::any_of(labels.begin(), labels.end(), [&text = outcome](const QLabel *label) {
                    return label->text().startsWith(text);
                }));
        if (project != "letters"_L1)
            continue;
        ASSERT_EQ(server.requests().size(), 1);
        EXPECT_THAT(server.requests().constFirst().toStdString(),
                    ::testing::AllOf(::testing::StartsWith("POST /letters/tickets "),
                                     HasSubstr("<summary>It &lt;crashes&gt;</summary><description>"
                                               "On opening</description>")));
    }
}

} // namespace Pellarvine
