// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/PassphraseDialog.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

#include <cstring>
#include <functional>
#include <malloc.h>

using namespace Qt::StringLiterals;

#if !defined(PELLARVINE_SANITIZED) // the sanitizers replace free()

namespace {

// A text, and its first characters at the moment when its memory is freed.
const QChar *watchedText = nullptr;
char16_t freedText[8];

} // namespace

// NOLINTNEXTLINE(bugprone-reserved-identifier): glibc's name
extern "C" void __libc_free(void *block);

// Replaces the C library's function in the whole process.
extern "C" Q_DECL_EXPORT void free(void *block) noexcept
{
    const auto *const text = reinterpret_cast<const char *>(watchedText);
    const auto *const begin = static_cast<const char *>(block);
    if (text && text > begin && text < begin + malloc_usable_size(block)) {
        std::memcpy(freedText, watchedText, sizeof freedText);
        watchedText = nullptr;
    }
    __libc_free(block);
}

#endif

namespace Pellarvine {

namespace {

class PassphraseDialogTest : public testing::Test
{
protected:
    void open(PassphraseDialog::Purpose purpose)
    {
        dialog = std::make_unique<PassphraseDialog>(purpose);
        fields = dialog->findChildren<QLineEdit *>();
        accept = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }

    QStringList shownTexts() const
    {
        QStringList texts;
        const auto labels = dialog->findChildren<QLabel *>();
        for (const QLabel *const label : labels) {
            if (label->isVisible() && !label->buddy() && !label->text().isEmpty())
                texts.append(label->text());
        }
        return texts;
    }

    std::unique_ptr<PassphraseDialog> dialog;
    QList<QLineEdit *> fields;
    QPushButton *accept = nullptr;
};

} // namespace

TEST_F(PassphraseDialogTest, a_new_passphrase_is_typed_twice_alike)
{
    open(PassphraseDialog::Purpose::create);
    ASSERT_EQ(fields.size(), 2);
    QTest::keyClicks(fields[0], u"kitchen saddle"_s);
    EXPECT_FALSE(accept->isEnabled());
    QTest::keyClick(fields[0], Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());
    QTest::keyClicks(fields[1], u"kitchen"_s); // the beginning of the right text
    EXPECT_THAT(shownTexts(), testing::Not(testing::Contains(u"The two passphrases differ."_s)));
    QTest::keyClicks(fields[1], u"s"_s);
    EXPECT_THAT(shownTexts(), testing::Contains(u"The two passphrases differ."_s));
    QTest::keyClick(fields[1], Qt::Key_Backspace);
    QTest::keyClicks(fields[1], u" saddle"_s);
    EXPECT_TRUE(accept->isEnabled());

    QTest::keyClick(fields[1], Qt::Key_Return);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_TRUE(fields[0]->text().isEmpty());
    EXPECT_EQ(dialog->takePassphrase(), u"kitchen saddle"_s);
    EXPECT_EQ(dialog->takePassphrase(), QString());
}

TEST_F(PassphraseDialogTest, texts_that_others_hold_are_not_overwritten)
{
    open(PassphraseDialog::Purpose::unlock);
    QString held = u"kitchen saddle"_s;
    held.detach();
    for (const QString &text : { u"in read-only memory"_s, held }) {
        const QString expected(text.constData(), text.size());
        fields[0]->setText(text);
        dialog->done(QDialog::Rejected);
        EXPECT_EQ(text, expected);
        EXPECT_EQ(fields[0]->text(), QString());

        fields[0]->setText(text);
        dialog->done(QDialog::Accepted);
        EXPECT_EQ(text, expected);
        EXPECT_EQ(dialog->takePassphrase(), expected);
    }
}

#if !defined(PELLARVINE_SANITIZED)
TEST_F(PassphraseDialogTest, a_typed_passphrase_is_overwritten_before_its_memory_is_freed)
{
    open(PassphraseDialog::Purpose::unlock);
    const std::function<void()> ways[] = {
        [this] { dialog->reject(); },
        [this] { // an accepted text that the program does not take
            dialog->accept();
            dialog.reset();
        },
    };
    for (const auto &close : ways) {
        dialog->show();
        QTest::keyClicks(fields[0], u"kitchen saddle"_s);
        watchedText = fields[0]->text().constData();
        close();
        EXPECT_EQ(watchedText, nullptr) << "its memory has not been freed";
        EXPECT_EQ(QString::fromUtf16(freedText, std::size(freedText)), u"00000000"_s);
    }
}
#endif

TEST_F(PassphraseDialogTest, a_suggestion_is_shown_and_strong)
{
    open(PassphraseDialog::Purpose::create);
    const auto *const strength = dialog->findChild<QProgressBar *>();
    QTest::keyClicks(fields[0], u"password"_s);
    EXPECT_EQ(strength->accessibleDescription(), u"Weak"_s);
    const auto buttons = dialog->findChildren<QPushButton *>();
    const auto suggest = std::find_if(buttons.begin(), buttons.end(), [](QPushButton *button) {
        return button->text() == u"Ma&ke One Up"_s;
    });
    ASSERT_NE(suggest, buttons.end());
    QTest::mouseClick(*suggest, Qt::LeftButton);
    EXPECT_EQ(strength->accessibleDescription(), u"Strong"_s);
    EXPECT_EQ(fields[0]->echoMode(), QLineEdit::Normal);
    EXPECT_EQ(fields[0]->text(), fields[1]->text());
    const QString suggested(fields[0]->text().constData(), fields[0]->text().size());
    QTest::keyClick(fields[0], Qt::Key_Return);
    EXPECT_EQ(dialog->takePassphrase(), suggested);
    EXPECT_EQ(fields[0]->echoMode(), QLineEdit::Password); // hidden the next time
}

TEST_F(PassphraseDialogTest, an_existing_passphrase_is_asked_for_again_after_an_error)
{
    open(PassphraseDialog::Purpose::unlock);
    ASSERT_EQ(fields.size(), 1);
    EXPECT_TRUE(fields[0]->hasFocus());
    EXPECT_FALSE(accept->isEnabled());
    QTest::keyClicks(fields[0], u"wrong"_s);
    QTest::keyClick(fields[0], Qt::Key_Escape);
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_EQ(dialog->takePassphrase(), QString());

    const QSignalSpy changes(dialog.get(), &PassphraseDialog::errorChanged);
    dialog->setError(u"Wrong passphrase"_s);
    dialog->setError(u"Wrong passphrase"_s);
    EXPECT_EQ(changes.size(), 1);
    dialog->show();
    EXPECT_THAT(shownTexts(), testing::ElementsAre(u"Wrong passphrase"_s));
    QTest::keyClicks(fields[0], u"r"_s);
    EXPECT_EQ(dialog->error(), QString());
    EXPECT_THAT(shownTexts(), testing::IsEmpty());
}

TEST_F(PassphraseDialogTest, tells_that_caps_lock_is_on)
{
    open(PassphraseDialog::Purpose::unlock);
    const auto type = [&](Qt::Key key, const QString &text, Qt::KeyboardModifiers modifiers) {
        QTest::sendKeyEvent(QTest::Click, fields[0], key, text, modifiers);
        return shownTexts().contains(u"Caps Lock is on."_s);
    };
    EXPECT_FALSE(type(Qt::Key_A, u"a"_s, {}));
    EXPECT_FALSE(type(Qt::Key_A, u"A"_s, Qt::ShiftModifier));
    EXPECT_TRUE(type(Qt::Key_A, u"A"_s, {}));
    EXPECT_TRUE(type(Qt::Key_1, u"1"_s, {}));
    EXPECT_FALSE(type(Qt::Key_CapsLock, QString(), {}));
    EXPECT_TRUE(type(Qt::Key_A, u"a"_s, Qt::ShiftModifier));
}

TEST_F(PassphraseDialogTest, everything_that_takes_the_focus_has_a_name)
{
    open(PassphraseDialog::Purpose::create);
    const auto children = dialog->findChildren<QWidget *>();
    for (QWidget *const child : children) {
        if (child->focusPolicy() == Qt::NoFocus)
            continue;
        QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(child);
        EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty())
                << child->metaObject()->className();
    }
}

} // namespace Pellarvine
