// SPDX-License-Identifier: MIT
// A main window that is the content of a window keeps its properties of a window.
#include <pellarvine/Platform/NSWindow.h>
#include <pellarvine/Platform/NSWindowController.h>

#include <QAbstractButton>
#include <QAction>
#include <QCloseEvent>
#include <QEventLoop>
#include <QMainWindow>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using NS::Window;

namespace {

class Editor : public QMainWindow
{
public:
    bool mayClose = true;
    int asked = 0;

protected:
    void closeEvent(QCloseEvent *event) override
    {
        ++asked;
        event->setAccepted(mayClose);
    }
};

struct Opened
{
    Opened()
    {
        window.setContentView(editor);
        window.show();
    }

    Window window;
    QPointer<Editor> editor = new Editor;
};

} // namespace

TEST(WindowContent, is_asked_before_the_window_closes)
{
    Opened opened;
    opened.editor->mayClose = false;
    opened.window.standardWindowButton(NS::WindowButton::close)->click();
    EXPECT_TRUE(opened.window.isVisible()) << "unsaved work is lost";
    EXPECT_FALSE(opened.window.close());
    EXPECT_EQ(opened.editor->asked, 2);

    opened.editor->mayClose = true;
    EXPECT_TRUE(opened.window.close());
    EXPECT_EQ(opened.editor->asked, 3);
    opened.window.show();
    EXPECT_TRUE(opened.editor->isVisible());
}

TEST(WindowContent, takes_the_window_with_it_when_it_closes_itself)
{
    Opened opened;
    opened.editor->mayClose = false;
    EXPECT_FALSE(opened.editor->close());
    EXPECT_TRUE(opened.editor->isVisible());
    opened.editor->mayClose = true;
    EXPECT_TRUE(opened.editor->close());
    EXPECT_FALSE(opened.window.isVisible()) << "an empty shell stays";
    EXPECT_EQ(opened.editor->asked, 2);
    QCoreApplication::processEvents();
    opened.window.show();
    EXPECT_TRUE(opened.editor->isVisible());

    opened.editor->setAttribute(Qt::WA_DeleteOnClose);
    opened.window.close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(opened.editor);
}

TEST(WindowContent, stays_with_a_window_that_does_not_close)
{
    class Refusing : public Window
    {
        void closeEvent(QCloseEvent *event) override { event->ignore(); }
    } window;
    auto *const editor = new Editor;
    editor->setAttribute(Qt::WA_DeleteOnClose);
    const QPointer<QWidget> kept = editor;
    window.setContentView(editor);
    window.show();
    EXPECT_FALSE(window.close());
    EXPECT_FALSE(editor->close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_TRUE(kept);
    EXPECT_TRUE(editor->isVisible());
}

TEST(WindowContent, gives_the_window_its_title_mark_icon_and_document)
{
    Window window;
    auto *const editor = new Editor;
    editor->setWindowTitle(u"Draft[*]"_s);
    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    editor->setWindowIcon(picture);
    window.setContentView(editor);
    EXPECT_EQ(window.windowTitle(), u"Draft[*]"_s);
    EXPECT_EQ(window.windowIcon().cacheKey(), editor->windowIcon().cacheKey());
    editor->setWindowModified(true);
    EXPECT_TRUE(window.isWindowModified());
    editor->setWindowTitle(u"Letter[*]"_s);
    EXPECT_EQ(window.windowTitle(), u"Letter[*]"_s);

    // The properties that programs set after saving.
    editor->setWindowModified(false);
    editor->setWindowFilePath(u"/home/ada/letter.txt"_s);
    EXPECT_FALSE(window.isWindowModified());
    QCoreApplication::processEvents();
    EXPECT_EQ(window.representedURL(), QUrl::fromLocalFile(u"/home/ada/letter.txt"_s));
    editor->setWindowTitle({});
    EXPECT_EQ(window.windowTitle(), u"letter.txt[*]"_s);

    // A content that is removed leaves its last title and document to the window.
    editor->setParent(nullptr);
    editor->setWindowTitle(u"Elsewhere"_s);
    EXPECT_EQ(window.windowTitle(), u"letter.txt[*]"_s);
    delete editor;
}

TEST(WindowContent, gives_a_shown_window_each_document_that_it_saves_as)
{
    Opened opened;
    for (const QString &name : { u"draft.txt"_s, u"letter.txt"_s }) {
        opened.editor->setWindowFilePath(u"/home/ada/"_s + name);
        QCoreApplication::processEvents();
        EXPECT_EQ(opened.window.representedURL(), QUrl::fromLocalFile(u"/home/ada/"_s + name));
        EXPECT_EQ(opened.window.windowTitle(), name + u"[*]"_s);
    }
    opened.editor->setWindowFilePath({});
    QCoreApplication::processEvents();
    EXPECT_TRUE(opened.window.representedURL().isEmpty());

    // The path is set on the content and on the window, while the event loop runs.
    for (QWidget *const widget :
         { static_cast<QWidget *>(opened.editor), static_cast<QWidget *>(&opened.window) }) {
        const QString path = u"/home/ada/"_s + QLatin1String(widget->metaObject()->className());
        QTimer::singleShot(0, widget, [&] { widget->setWindowFilePath(path); });
        QEventLoop loop;
        QObject::connect(&opened.window, &Window::representedURLChanged, &loop, &QEventLoop::quit);
        QTimer::singleShot(std::chrono::seconds(5), &loop, &QEventLoop::quit);
        loop.exec();
        EXPECT_EQ(opened.window.representedURL(), QUrl::fromLocalFile(path));
    }
}

TEST(WindowContent, without_a_title_leaves_the_one_that_the_window_has)
{
    Window window;
    window.setWindowTitle(u"Letters"_s);
    window.setRepresentedURL(QUrl(u"file:///home/ada/letters.txt"_s));
    auto *const editor = new Editor;
    window.setContentView(editor);
    editor->setWindowModified(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.windowTitle(), u"Letters"_s);
    EXPECT_EQ(window.representedURL(), QUrl(u"file:///home/ada/letters.txt"_s));
}

TEST(WindowContent, enters_and_leaves_full_screen_through_the_window)
{
    Opened opened;
    auto *const fullScreen = new QAction(opened.editor);
    fullScreen->setShortcut(Qt::Key_F11);
    opened.editor->addAction(fullScreen);
    QObject::connect(fullScreen, &QAction::triggered, opened.editor, [&] {
        opened.editor->setWindowState(opened.editor->windowState() ^ Qt::WindowFullScreen);
    });
    opened.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&opened.window));
    QTest::keyClick(opened.window.windowHandle(), Qt::Key_F11);
    EXPECT_TRUE(opened.window.isFullScreen());
    EXPECT_TRUE(opened.editor->isFullScreen()) << opened.editor->windowState();
    opened.window.toggleFullScreen();
    EXPECT_FALSE(opened.editor->isFullScreen());
    opened.editor->showMaximized();
    EXPECT_TRUE(opened.window.isMaximized());
    opened.editor->showNormal();
    EXPECT_FALSE(opened.window.isMaximized());
    opened.editor->showMinimized();
    EXPECT_TRUE(opened.window.isMinimized());
}

TEST(WindowContent, is_asked_after_the_window_controller)
{
    class Controller : public NS::WindowController
    {
    public:
        using WindowController::WindowController;
        bool windowShouldClose() override { return mayClose; }
        bool mayClose = false;
    };
    auto *const window = new Window;
    auto *const editor = new Editor;
    window->setContentView(editor);
    window->show();
    Controller controller(window); // owns it
    controller.close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(editor->asked, 0);
    controller.mayClose = true;
    window->performClose();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(editor->asked, 1);
}
