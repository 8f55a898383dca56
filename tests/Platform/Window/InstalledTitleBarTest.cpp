// SPDX-License-Identifier: MIT
// Windows of other classes keep their behaviour with our title bar.
#include <pellarvine/Platform/NSTextField.h>
#include <pellarvine/Platform/NSTitleBar.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QCloseEvent>
#include <QDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int barHeight = 22;

template <typename Base>
class Asking : public Base
{
public:
    bool mayClose = false;
    int asked = 0;

protected:
    void closeEvent(QCloseEvent *event) override
    {
        ++asked;
        mayClose ? Base::closeEvent(event) : event->ignore();
    }
};

// Null if the window has no visible button of that name.
QAbstractButton *button(const QWidget &window, const QString &name)
{
    for (auto *const candidate : window.findChildren<QAbstractButton *>()) {
        if (candidate->accessibleName() == name && candidate->isVisible())
            return candidate;
    }
    return nullptr;
}

const QWidget *titleBar(const QWidget &window)
{
    return button(window, u"Close"_s)->parentWidget();
}

struct Dialog : Asking<QDialog>
{
    Dialog()
    {
        setWindowTitle(u"Letters"_s);
        auto *const layout = new QVBoxLayout(this);
        layout->setContentsMargins(10, 10, 10, 10);
        layout->addWidget(field);
    }
    QLineEdit *const field = new QLineEdit;
};

void drag(QWidget &window, QPoint from, QPoint by)
{
    const QPoint start = window.mapToGlobal(from);
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, from + by, start + by, Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window.windowHandle(), &move);
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {},
                        window.mapFromGlobal(start + by));
}

} // namespace

TEST(InstalledTitleBar, stands_above_the_content_and_follows_the_title)
{
    for (const Qt::LayoutDirection direction : { Qt::LeftToRight, Qt::RightToLeft }) {
        Dialog dialog;
        dialog.setLayoutDirection(direction);
        dialog.resize(300, 200);
        NS::TitleBar::install(&dialog);
        NS::TitleBar::install(&dialog); // the second call does nothing
        dialog.show();
        EXPECT_EQ(dialog.size(), QSize(300, 200 + barHeight));
        ASSERT_TRUE(button(dialog, u"Close"_s));
        EXPECT_EQ(titleBar(dialog)->geometry(), QRect(0, 0, 300, barHeight));
        EXPECT_EQ(dialog.contentsMargins(), QMargins(0, barHeight, 0, 0));
        EXPECT_EQ(dialog.field->geometry().left(), 10);
        EXPECT_EQ(dialog.field->geometry().right(), 289);
        EXPECT_EQ(button(dialog, u"Close"_s)->pos(), QPoint(7, 3)) << direction;
        EXPECT_FALSE(button(dialog, u"Minimise"_s)) << "its flags have none";
        EXPECT_FALSE(button(dialog, u"Maximise"_s));
        const auto *const title = titleBar(dialog)->findChild<NS::TextField *>();
        EXPECT_EQ(title->stringValue(), u"Letters"_s);
        dialog.setWindowTitle(u"Drafts"_s);
        EXPECT_EQ(title->stringValue(), u"Drafts"_s);
        EXPECT_EQ(qAlpha(dialog.grab().toImage().pixel(0, 0)), 0) << "a square corner";
    }
}

TEST(InstalledTitleBar, counts_the_sizes_set_before_as_those_of_the_content)
{
    Dialog fixed;
    fixed.setFixedSize(300, 200);
    NS::TitleBar::install(&fixed);
    fixed.show();
    EXPECT_EQ(fixed.size(), QSize(300, 200 + barHeight));
    EXPECT_EQ(fixed.minimumSize(), fixed.maximumSize());

    Dialog visible;
    visible.show();
    const QSize before = visible.size();
    NS::TitleBar::install(&visible);
    EXPECT_TRUE(visible.isVisible());
    EXPECT_EQ(visible.size(), before + QSize(0, barHeight));
}

TEST(InstalledTitleBar, moves_resizes_and_closes_the_dialog_that_it_is_in)
{
    Dialog dialog;
    dialog.setGeometry(100, 100, 300, 200);
    NS::TitleBar::install(&dialog);
    dialog.open();
    drag(dialog, { 200, 11 }, { 40, 30 });
    EXPECT_EQ(dialog.geometry(), QRect(140, 130, 300, 200 + barHeight));
    drag(dialog, { 297, 100 }, { 50, 0 });
    EXPECT_EQ(dialog.size(), QSize(350, 200 + barHeight));
    QTest::mouseDClick(dialog.windowHandle(), Qt::LeftButton, {}, { 200, 11 });
    EXPECT_FALSE(dialog.isMaximized());

    dialog.setResult(QDialog::Accepted);
    button(dialog, u"Close"_s)->click();
    EXPECT_EQ(dialog.asked, 1);
    EXPECT_TRUE(dialog.isVisible());
    dialog.mayClose = true;
    button(dialog, u"Close"_s)->click();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST(InstalledTitleBar, opens_a_dialog_at_the_centre_of_its_parent)
{
    QWidget parent;
    parent.setGeometry(100, 100, 500, 400);
    parent.show();
    Dialog dialog;
    dialog.setParent(&parent, dialog.windowFlags());
    dialog.resize(200, 100);
    NS::TitleBar::install(&dialog);
    const auto distance = [&] {
        dialog.show();
        QCoreApplication::processEvents();
        return (dialog.geometry().center() - parent.geometry().center()).manhattanLength();
    };
    EXPECT_LE(distance(), 1);
    dialog.hide();
    parent.move(150, 90);
    EXPECT_LE(distance(), 1) << "where the parent is now";
    dialog.hide();
    dialog.move(20, 30);
    dialog.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(dialog.pos(), QPoint(20, 30)) << "where the program has placed it";
}

TEST(InstalledTitleBar, leaves_a_message_box_its_answers)
{
    const auto answerTo = [](const auto &act) {
        QMessageBox box(QMessageBox::Question, u"Letters"_s, u"Send the letter?"_s,
                        QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        NS::TitleBar::install(&box);
        QTimer::singleShot(0, &box, [&] {
            EXPECT_EQ(titleBar(box)->width(), box.width());
            for (const QAbstractButton *const answer : box.buttons()) {
                const QRect place(answer->mapTo(&box, QPoint()), answer->size());
                EXPECT_TRUE(box.contentsRect().contains(place));
            }
            act(box);
        });
        return box.exec();
    };
    EXPECT_EQ(answerTo([](QWidget &box) { QTest::keyClick(&box, Qt::Key_Return); }),
              QMessageBox::Yes);
    EXPECT_EQ(answerTo([](QWidget &box) { QTest::keyClick(&box, Qt::Key_Escape); }),
              QMessageBox::No);
    EXPECT_EQ(answerTo([](QWidget &box) { button(box, u"Close"_s)->click(); }), QMessageBox::No);
}

TEST(InstalledTitleBar, a_main_window_keeps_its_menus_its_closing_and_its_state)
{
    Asking<QMainWindow> window;
    window.menuBar()->addMenu(u"Edit"_s)->addAction(u"Copy"_s);
    window.menuBar()->setNativeMenuBar(false);
    window.setCentralWidget(new QLineEdit);
    window.setGeometry(100, 100, 400, 300);
    NS::TitleBar::install(&window);
    window.show();
    EXPECT_EQ(window.menuBar()->geometry().topLeft(), QPoint(0, barHeight));
    button(window, u"Close"_s)->click();
    EXPECT_EQ(window.asked, 1);
    EXPECT_TRUE(window.isVisible());
    button(window, u"Maximise"_s)->click();
    EXPECT_TRUE(window.isMaximized());
    EXPECT_TRUE(button(window, u"Restore"_s));

    const QByteArray state = NS::TitleBar::saveState(&window);
    QMainWindow other;
    NS::TitleBar::install(&other);
    EXPECT_FALSE(NS::TitleBar::restoreState(&other, state.chopped(1)));
    EXPECT_TRUE(NS::TitleBar::restoreState(&other, state));
    other.show();
    EXPECT_TRUE(other.isMaximized());
    other.showNormal();
    EXPECT_EQ(other.size(), QSize(400, 300 + barHeight));
}

// The title bar replaces the window's accessible interface, to exclude the shadow.
TEST(InstalledTitleBar, screen_readers_find_the_window_as_before)
{
    const auto told = [](QWidget &window) {
        const QAccessibleInterface *const item = QAccessible::queryAccessibleInterface(&window);
        QStringList texts = { QString::number(item->role()) };
        for (const auto text :
             { QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help })
            texts.append(item->text(text));
        return texts;
    };
    QMainWindow mainWindow;
    mainWindow.setWindowTitle(u"Letters"_s);
    Dialog dialog;
    QMessageBox box(QMessageBox::Question, {}, u"Send the letter?"_s);
    box.setInformativeText(u"It is long."_s);
    box.setAccessibleDescription(u"A question"_s);
    for (QWidget *const window : QWidgetList { &mainWindow, &dialog, &box }) {
        const QStringList before = told(*window);
        NS::TitleBar::install(window);
        EXPECT_EQ(told(*window), before) << window->metaObject()->className();
    }
    QWidget plain;
    NS::TitleBar::install(&plain);
    EXPECT_EQ(told(plain).first().toInt(), QAccessible::Window);
}

TEST(InstalledTitleBar, warns_of_a_dialog_without_a_layout_whose_widgets_it_covers)
{
    const auto warningOf = [](QRect place, bool hasLayout) {
        QDialog dialog;
        dialog.setObjectName(u"letters"_s);
        dialog.setFixedSize(300, 200);
        auto *const field = new QLineEdit(&dialog);
        field->setGeometry(place);
        if (hasLayout)
            (new QVBoxLayout(&dialog))->addWidget(field);
        NS::TitleBar::install(&dialog);
        testing::internal::CaptureStdout();
        dialog.show();
        QCoreApplication::processEvents();
        dialog.hide();
        dialog.show();
        QCoreApplication::processEvents();
        return testing::internal::GetCapturedStdout();
    };
    EXPECT_EQ(
            warningOf({ 10, 10, 200, 30 }, false),
            "Warning: the title bar of the QDialog \"letters\" covers a QLineEdit: the window needs"
            " a layout\n");
    EXPECT_EQ(warningOf({ 10, 50, 200, 30 }, false), "");
    EXPECT_EQ(warningOf({ 10, 10, 200, 30 }, true), "");
}
