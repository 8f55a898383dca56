// SPDX-License-Identifier: MIT
#include "Named.h"
#include "Notebook.h"
#include "NotesController.h"
#include "TemporaryFolder.h"

#include <pellarvine/Pellarvine/MarkupLabel.h>
#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <gmock/gmock.h>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

const QString passphrase = u"six random words"_s;

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

// Clicks on that button of the next message box.
void answer(QMessageBox::StandardButton button)
{
    auto *const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        if (auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            timer->stop();
            timer->deleteLater();
            box->button(button)->click();
        }
    });
    timer->start(0);
}

// The folder of the program's settings during a test.
class SettingsFolder
{
public:
    SettingsFolder()
    {
        QCoreApplication::setOrganizationName(u"org.example"_s);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.path());
    }

private:
    QTemporaryDir m_folder;
};

class Notes : public testing::Test
{
public:
    Notes()
    {
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    }
    // Replaced screens are deleted later, by the event loop.
    ~Notes() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    // Sent to the widget with the keyboard focus.
    void type(const QString &text)
    {
        ASSERT_TRUE(window->focusWidget());
        QTest::keyClicks(window->focusWidget(), text);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        window->activateWindow(); // a desktop does that when a message is closed
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        ASSERT_TRUE(window->focusWidget());
        QTest::keyClick(window->focusWidget(), key, modifiers);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void createNotebook()
    {
        type(passphrase);
        press(Qt::Key_Tab);
        type(passphrase);
        press(Qt::Key_Return);
        ASSERT_TRUE(notebook.isOpen()) << qPrintable(notebook.problem());
    }
    template <typename Widget>
    Widget *find(const QString &name) const
    {
        auto *const found = window->findChild<Widget *>(name);
        if (!found)
            throw std::runtime_error("no screen has a " + name.toStdString());
        return found;
    }
    QStringList listed() const
    {
        QStringList titles;
        const auto *const list = find<QListWidget>(u"list"_s);
        for (int row = 0; row < list->count(); ++row)
            titles.append(list->item(row)->text());
        return titles;
    }

    SettingsFolder settings;
    QTemporaryDir folder;
    QString path = folder.filePath(u"mine.sealed"_s);
    Notebook notebook { path };
    std::unique_ptr<NotesController> controller = NotesController::make(&notebook);
    QWidget *window = controller->view();
};

} // namespace

TEST_F(Notes, are_written_sealed_and_opened_again_by_keyboard_alone)
{
    type(passphrase);
    press(Qt::Key_Tab);
    type(u"something else"_s);
    press(Qt::Key_Return);
    EXPECT_FALSE(notebook.isOpen()) << "the two passphrases differ";
    find<QLineEdit>(u"repetitionField"_s)->clear();
    type(passphrase);
    press(Qt::Key_Return);
    ASSERT_TRUE(notebook.isOpen());

    press(Qt::Key_N, Qt::ControlModifier);
    type(u"**Bread** rises"_s);
    const auto *const preview = find<Pellarvine::MarkupLabel>(u"preview"_s);
    EXPECT_EQ(preview->stringValue(), u"Bread rises"_s);
    auto *const editor = find<QPlainTextEdit>(u"editor"_s);
    editor->setPlainText(u"Bread rises"_s); // like an undo that removes the markup at once
    EXPECT_EQ(preview->attributedStringValue().runs().size(), 1);
    editor->setPlainText(u"**Bread** rises\nfor an hour"_s);

    press(Qt::Key_Escape);
    EXPECT_EQ(listed(), QStringList { u"Bread rises"_s });
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_FALSE(notebook.isOpen());
    EXPECT_TRUE(notebook.notes().isEmpty());
    EXPECT_FALSE(contentsOf(path).contains("Bread"));

    EXPECT_FALSE(find<QLineEdit>(u"repetitionField"_s)->isVisible());
    type(u"six random worms"_s);
    press(Qt::Key_Return);
    EXPECT_FALSE(notebook.isOpen());
    EXPECT_THAT(find<QLabel>(u"problemLabel"_s)->text().toStdString(),
                testing::HasSubstr("passphrase is wrong"));
    type(passphrase); // replaces the wrong one, which is selected
    press(Qt::Key_Return);
    ASSERT_TRUE(notebook.isOpen());
    ASSERT_EQ(listed().size(), 1);
    press(Qt::Key_Return);
    EXPECT_EQ(find<QPlainTextEdit>(u"editor"_s)->toPlainText(), u"**Bread** rises\nfor an hour"_s);
}

TEST_F(Notes, are_searched_and_deleted_when_the_user_confirms)
{
    createNotebook();
    for (const QString &text : { u"Bread"_s, u"Butter"_s, u"Milk\nand butter"_s }) {
        press(Qt::Key_N, Qt::ControlModifier);
        type(text.section(u'\n', 0, 0));
        find<QPlainTextEdit>(u"editor"_s)->setPlainText(text);
        press(Qt::Key_Escape);
    }
    EXPECT_EQ(listed(), QStringList({ u"Milk"_s, u"Butter"_s, u"Bread"_s }));
    press(Qt::Key_F, Qt::ControlModifier);
    type(u"BUTTER"_s);
    EXPECT_TRUE(named<QToolButton>(window, u"Clear"_s));
    EXPECT_EQ(listed(), QStringList({ u"Milk"_s, u"Butter"_s }));
    EXPECT_EQ(find<QListWidget>(u"list"_s)->currentItem()->text(), u"Milk"_s);
    press(Qt::Key_Return); // to the list
    press(Qt::Key_Down);

    // The search text and the selection are unchanged after each way back.
    for (const int way : { 0, 1, 2 }) {
        press(Qt::Key_Return);
        auto *const editor = find<QPlainTextEdit>(u"editor"_s);
        if (way == 0)
            press(Qt::Key_Escape);
        else if (way == 1)
            press(Qt::Key_Left, Qt::AltModifier);
        else
            QTest::mouseClick(editor->viewport(), Qt::BackButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(find<QLineEdit>(u"searchField"_s)->text(), u"BUTTER"_s);
        EXPECT_EQ(listed(), QStringList({ u"Milk"_s, u"Butter"_s }));
        EXPECT_EQ(window->focusWidget(), find<QListWidget>(u"list"_s));
        EXPECT_EQ(find<QListWidget>(u"list"_s)->currentItem()->text(), u"Butter"_s);
    }

    answer(QMessageBox::No);
    press(Qt::Key_Delete);
    EXPECT_EQ(notebook.notes().size(), 3);
    answer(QMessageBox::Yes);
    press(Qt::Key_Delete);
    EXPECT_EQ(listed(), QStringList { u"Milk"_s });
    ASSERT_EQ(notebook.notes().size(), 2);
    EXPECT_EQ(notebook.notes().at(1)->text(), u"Bread"_s);
}

TEST_F(Notes, that_cannot_be_saved_keep_the_window_until_they_are_or_the_user_gives_them_up)
{
    createNotebook();
    press(Qt::Key_N, Qt::ControlModifier);
    type(u"Not to be lost"_s);
    ASSERT_TRUE(QFile::rename(folder.path(), folder.path() + u".away"_s));

    answer(QMessageBox::Cancel);
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(notebook.isEdited());
    EXPECT_THAT(notebook.state().toStdString(), testing::StartsWith("Not saved: "));
    answer(QMessageBox::Discard);
    EXPECT_TRUE(window->close());

    window->show();
    ASSERT_TRUE(QFile::rename(folder.path() + u".away"_s, folder.path()));
    EXPECT_TRUE(window->close());
    const QByteArray saved = Pellarvine::Decryptor::decrypt(contentsOf(path), passphrase);
    EXPECT_THAT(saved.toStdString(), testing::HasSubstr("Not to be lost"));
}

TEST_F(Notes, that_were_changed_are_saved_without_being_asked_for)
{
    createNotebook();
    const QByteArray before = contentsOf(path);
    press(Qt::Key_N, Qt::ControlModifier);
    type(u"By itself"_s);
    EXPECT_EQ(notebook.state(), u"Edited"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !notebook.isEdited(); }));
    EXPECT_EQ(notebook.state(), u"Saved"_s);
    EXPECT_NE(contentsOf(path), before);
}

TEST_F(Notes, are_sealed_under_a_new_passphrase_once_it_is_chosen)
{
    createNotebook();
    notebook.addNote()->setText(u"Bread"_s);
    ASSERT_TRUE(notebook.save());
    const auto typeIntoDialog = [](const QString &text) {
        QTimer::singleShot(0, qApp, [text] {
            QWidget *const dialog = QApplication::activeModalWidget();
            ASSERT_TRUE(dialog);
            for (auto *const field : dialog->findChildren<QLineEdit *>())
                QTest::keyClicks(field, text);
            QTest::keyClick(dialog, text.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
    };
    auto *const action = find<QAction>(u"passphraseAction"_s);
    typeIntoDialog({});
    action->trigger();
    EXPECT_NO_THROW(Pellarvine::Decryptor::decrypt(contentsOf(path), passphrase));

    typeIntoDialog(u"another one"_s);
    action->trigger();
    EXPECT_TRUE(Pellarvine::Decryptor::decrypt(contentsOf(path), u"another one").contains("Bread"));
    EXPECT_THROW(Pellarvine::Decryptor::decrypt(contentsOf(path), passphrase),
                 Pellarvine::CryptorError);
}

TEST_F(Notes, are_shown_in_the_chosen_font_and_in_the_window_of_the_last_time)
{
    createNotebook();
    press(Qt::Key_N, Qt::ControlModifier);
    const auto *const editor = find<QPlainTextEdit>(u"editor"_s);
    const int size = editor->font().pointSize();
    const auto choose = [&](int pointSize, Qt::Key key) {
        QTimer::singleShot(0, qApp, [=] {
            auto *const dialog = qobject_cast<QFontDialog *>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            QFont font = dialog->currentFont();
            font.setPointSize(pointSize);
            dialog->setCurrentFont(font);
            EXPECT_EQ(editor->font().pointSize(), pointSize);
            QTest::keyClick(dialog, key);
        });
        find<QAction>(u"fontAction"_s)->trigger();
    };
    choose(size + 10, Qt::Key_Escape);
    EXPECT_EQ(editor->font().pointSize(), size);
    choose(size + 7, Qt::Key_Return);
    EXPECT_EQ(editor->font().pointSize(), size + 7);
    window->resize(611, 433);
    testing::internal::CaptureStdout();
    controller->lock();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(window->close());

    Notebook sameNotebook(path);
    ASSERT_TRUE(sameNotebook.open(passphrase));
    const std::unique_ptr<NotesController> second = NotesController::make(&sameNotebook);
    second->view()->show();
    EXPECT_EQ(second->view()->size(), QSize(611, 433));
    const QSettings stored;
    EXPECT_EQ(stored.value(u"window/font"_s).value<QFont>().pointSize(), size + 7);
}

TEST(Notebook, that_cannot_be_opened_says_why_and_leaves_the_file_alone)
{
    using Pellarvine::Encryptor;
    const QByteArray sealed = Encryptor::encrypt(R"({"notes":["a","b"]})", passphrase);
    QByteArray flipped = sealed;
    flipped[50] = char(flipped[50] ^ 1);
    const struct
    {
        const char *what;
        QByteArray file;
        QString passphrase;
        const char *problem;
    } rows[] = {
        { "another passphrase", sealed, u"six random worms"_s, "The passphrase is wrong, or" },
        { "a flipped bit", flipped, passphrase, "is damaged" },
        { "a cut", sealed.chopped(1), passphrase, "is damaged" },
        { "nearly nothing", sealed.first(20), passphrase, "is incomplete" },
        { "nothing", {}, passphrase, "is incomplete" },
        { "a picture", "\x89PNG\r\n" + QByteArray(100, 'x'), passphrase, "not a sealed notebook" },
        { "a sealed letter", Encryptor::encrypt("Dear", passphrase), passphrase,
          "does not contain notes" },
        { "other JSON", Encryptor::encrypt("[\"a\"]", passphrase), passphrase,
          "does not contain notes" },
        { "numbers for notes", Encryptor::encrypt(R"({"notes":["a",2]})", passphrase), passphrase,
          "does not contain notes" },
    };
    const TemporaryFolder folder;
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const QString path = folder.file(u"a.sealed"_s, row.file);
        Notebook notebook(path);
        EXPECT_FALSE(notebook.open(row.passphrase));
        EXPECT_FALSE(notebook.isOpen());
        EXPECT_TRUE(notebook.notes().isEmpty());
        EXPECT_THAT(notebook.problem().toStdString(), testing::HasSubstr(row.problem));
        EXPECT_EQ(contentsOf(path), row.file);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "something is left over";
    }
    Notebook notebook(folder.file(u"a.sealed"_s, sealed));
    ASSERT_TRUE(notebook.open(passphrase)) << qPrintable(notebook.problem());
    ASSERT_EQ(notebook.notes().size(), 2);
    EXPECT_EQ(notebook.notes().at(1)->text(), u"b"_s);
}

TEST(Notebook, is_written_by_one_program_at_a_time_and_never_over_another_file)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.sealed"_s);
    Notebook first(path);
    ASSERT_TRUE(first.create(passphrase));
    Notebook second(path);
    EXPECT_FALSE(second.open(passphrase));
    EXPECT_THAT(second.problem().toStdString(), testing::HasSubstr("open elsewhere"));
    first.close();
    EXPECT_TRUE(second.open(passphrase));
    second.close();

    EXPECT_FALSE(first.create(u"another one"_s));
    EXPECT_TRUE(first.open(passphrase)) << "the file that was there is the one that is there";

    Notebook nowhere(folder.filePath(u"missing/a.sealed"_s));
    EXPECT_FALSE(nowhere.create(passphrase));
    EXPECT_FALSE(nowhere.problem().isEmpty());
}
