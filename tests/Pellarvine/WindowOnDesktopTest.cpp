// SPDX-License-Identifier: MIT
// A real window on a real X server with a window manager, operated by pointer and keys from
// outside.
#include "Program.h"

#include <QProcess>
#include <QRect>
#include <QStandardPaths>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestWait = 30'000; // milliseconds, until the test fails

bool waitFor(const std::function<bool()> &condition)
{
    return QTest::qWaitFor(condition, longestWait);
}

// A program that ends with the object.
class Running : public QProcess
{
public:
    ~Running() override
    {
        if (state() == NotRunning)
            return;
        terminate();
        if (!waitForFinished(5'000)) {
            kill();
            waitForFinished(5'000);
        }
    }
};

class WindowOnDesktop : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const char *const program : { "Xvfb", "openbox", "xdotool", "xprop" }) {
            if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty())
                GTEST_SKIP() << program << " is not installed";
        }
        // With -displayfd, the server writes the number of a free display. Without -noreset, it
        // restarts when its last client leaves, and drops a client that is connecting.
        m_server.start(u"Xvfb"_s, { u"-displayfd"_s, u"1"_s, u"-noreset"_s, u"-screen"_s, u"0"_s,
                                    u"1280x800x24"_s, u"-nolisten"_s, u"tcp"_s });
        QByteArray display;
        waitFor([&] {
            display += m_server.readAllStandardOutput();
            return display.endsWith('\n') || m_server.state() == QProcess::NotRunning;
        });
        if (!display.endsWith('\n'))
            GTEST_SKIP() << "no X server can start here: " << m_server.readAll().toStdString();
        m_environment.insert(u"DISPLAY"_s, u':' + QString::fromLatin1(display.trimmed()));
        m_environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        m_environment.remove(u"WAYLAND_DISPLAY"_s);
        m_environment.remove(u"XDG_CURRENT_DESKTOP"_s);
        m_environment.remove(u"QT_SCALE_FACTOR"_s);

        m_windowManager.setProcessEnvironment(m_environment);
        m_windowManager.start(u"openbox"_s, QStringList());
        ASSERT_TRUE(waitFor([&] {
            return run(u"xprop"_s, { u"-root"_s, u"_NET_SUPPORTING_WM_CHECK"_s }).contains("0x");
        })) << "the window manager does not start: "
            << m_windowManager.readAllStandardError().toStdString();

        point(10, 700); // outside of the window, which opens later
        // libxkbcommon passes texts without a terminating zero to strndup. That is allowed, but
        // the address sanitizer reports it. It also reports leaks of the X libraries.
        QProcessEnvironment environment = m_environment;
        environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0:strict_string_checks=0"_s);
        m_subject.setProcessEnvironment(environment);
        m_subject.start(programPath(u"window_program"_s), QStringList());
        ASSERT_TRUE(waitFor([&] {
            return run(u"xdotool"_s, { u"getactivewindow"_s, u"getwindowname"_s })
                           .startsWith("Subject")
                   && !frame().isNull();
        })) << "the window does not come up: "
            << m_subject.readAllStandardError().toStdString();
    }

    QByteArray run(const QString &program, const QStringList &arguments) const
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.start(program, arguments);
        process.waitForFinished(longestWait);
        return process.readAllStandardOutput();
    }

    void point(int x, int y) { input({ u"mousemove"_s, QString::number(x), QString::number(y) }); }
    void input(const QStringList &arguments) { run(u"xdotool"_s, arguments); }

    // The lines that the program has printed.
    const QList<QByteArray> &told()
    {
        m_output += m_subject.readAllStandardOutput();
        for (qsizetype end = 0; (end = m_output.indexOf('\n')) >= 0; m_output.remove(0, end + 1))
            m_told.append(m_output.left(end));
        return m_told;
    }

    QList<QByteArray> lastFrame()
    {
        const QList<QByteArray> &lines = told();
        for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
            if (line->startsWith("frame "))
                return line->split(' ');
        }
        return {};
    }

    QRect frame()
    {
        const QList<QByteArray> parts = lastFrame();
        if (parts.isEmpty())
            return {};
        return { parts[1].toInt(), parts[2].toInt(), parts[3].toInt(), parts[4].toInt() };
    }

    QByteArray state()
    {
        const QList<QByteArray> parts = lastFrame();
        return parts.isEmpty() ? QByteArray() : parts[5];
    }

    // The window manager grabs the pointer after the first motion. Waits for that before the rest.
    void drag(QPoint from, QPoint by)
    {
        // The X server's geometry: the window gets its new position only after the move.
        const QStringList askForGeometry { u"search"_s, u"--name"_s, u"^Subject$"_s,
                                           u"getwindowgeometry"_s };
        const QByteArray before = run(u"xdotool"_s, askForGeometry);
        point(from.x(), from.y());
        input({ u"mousedown"_s, u"1"_s });
        int percent = 10;
        waitFor([&] {
            percent = std::min(percent + 5, 60);
            point(from.x() + by.x() * percent / 100, from.y() + by.y() * percent / 100);
            return run(u"xdotool"_s, askForGeometry) != before;
        });
        point(from.x() + by.x(), from.y() + by.y());
        input({ u"mouseup"_s, u"1"_s });
    }

    // A motion may be shorter than the pointer's way by the drag distance.
    static bool isNear(QRect one, QRect other)
    {
        constexpr int distance = 12;
        return (one.topLeft() - other.topLeft()).manhattanLength() <= distance
               && (one.bottomRight() - other.bottomRight()).manhattanLength() <= distance;
    }

    Running m_server;
    Running m_windowManager;
    Running m_subject;

private:
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    QByteArray m_output;
    QList<QByteArray> m_told;
};

} // namespace

TEST_F(WindowOnDesktop, is_moved_by_its_title_bar)
{
    const QRect before = frame();
    drag(before.topLeft() + QPoint(400, 20), { 120, 90 });
    EXPECT_TRUE(waitFor([&] { return isNear(frame(), before.translated(120, 90)); }));
    EXPECT_EQ(frame().size(), before.size());
}

TEST_F(WindowOnDesktop, is_resized_by_an_edge_and_a_corner_and_stops_at_its_minimum)
{
    const QRect before = frame();
    drag({ before.right() - 4, before.center().y() }, { 80, 30 });
    EXPECT_TRUE(waitFor([&] { return isNear(frame(), before.adjusted(0, 0, 80, 0)); }));
    EXPECT_EQ(frame().topLeft(), before.topLeft());
    EXPECT_EQ(frame().height(), before.height());

    const QRect wide = frame();
    drag(wide.topLeft() + QPoint(3, 3), { -60, -40 });
    EXPECT_TRUE(waitFor([&] { return isNear(frame(), wide.adjusted(-60, -40, 0, 0)); }));

    const QRect large = frame();
    drag({ large.right() - 4, large.center().y() }, { -large.width() + 20, 0 });
    EXPECT_TRUE(waitFor([&] { return frame().width() == 300; }));
    EXPECT_EQ(frame().left(), large.left());
}

TEST_F(WindowOnDesktop, is_zoomed_by_a_double_click_and_comes_back)
{
    const QRect before = frame();
    const QStringList doubleClick {
        u"click"_s, u"--repeat"_s, u"2"_s, u"--delay"_s, u"30"_s, u"1"_s
    };
    point(before.left() + 400, before.top() + 20);
    input(doubleClick);
    EXPECT_TRUE(waitFor([&] { return frame() == QRect(0, 0, 1280, 800) && state() == "zoomed"; }));
    point(800, 20);
    input(doubleClick);
    EXPECT_TRUE(waitFor([&] { return frame() == before && state() == "normal"; }));
}

TEST_F(WindowOnDesktop, is_closed_by_a_press_of_its_button_that_ends_inside)
{
    const QPoint button = frame().topLeft() + QPoint(60 + 7, 20);
    point(button.x(), button.y());
    input({ u"mousedown"_s, u"1"_s });
    point(button.x() + 200, button.y() + 100);
    input({ u"mouseup"_s, u"1"_s });
    // The window prints this click after the effects of the release.
    const QPoint seal = frame().topLeft() + QPoint(150, 20);
    point(seal.x(), seal.y());
    input({ u"click"_s, u"1"_s });
    ASSERT_TRUE(waitFor([&] { return told().contains("clicked"); }))
            << "a button in the title bar has its clicks";
    EXPECT_FALSE(told().contains("closed"));

    point(button.x(), button.y());
    input({ u"click"_s, u"1"_s });
    EXPECT_TRUE(waitFor([&] { return told().contains("closed"); }));
    EXPECT_TRUE(m_subject.state() == QProcess::NotRunning || m_subject.waitForFinished());
}

TEST_F(WindowOnDesktop, is_closed_and_miniaturised_by_the_desktop_too)
{
    const QPoint button = frame().topLeft() + QPoint(60 + 20 + 7, 20);
    point(button.x(), button.y());
    input({ u"click"_s, u"1"_s });
    EXPECT_TRUE(waitFor([&] { return state() == "miniaturized"; }));
    input({ u"search"_s, u"--name"_s, u"^Subject$"_s, u"windowactivate"_s });
    EXPECT_TRUE(waitFor([&] { return state() == "normal"; }));
    // The first key changes the server's keyboard. The window manager then grabs its keys again,
    // and may miss that first key.
    EXPECT_TRUE(waitFor([&] {
        input({ u"key"_s, u"alt+F4"_s });
        return told().contains("closed");
    }));
}
