// SPDX-License-Identifier: MIT
// Prints the frame of a window in several situations, for desktops where the window has a margin
// for its shadow.
#include <pellarvine/Platform/NSTitleBar.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QLabel>
#include <QTimer>

#include <cstdio>

namespace {

void wait() // gives the desktop time to react
{
    QEventLoop loop;
    QTimer::singleShot(700, &loop, &QEventLoop::quit);
    loop.exec();
}

void tell(const char *situation, const QWidget &window)
{
    wait();
    const int margin = window.contentsMargins().left();
    std::printf("%s: %d x %d%s\n", situation, window.width() - 2 * margin,
                window.height() - 2 * margin, margin > 0 ? ", shadow" : "");
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    NS::Window window;
    window.setMinimumSize(300, 200);
    window.resize(500, 400);
    window.show();
    tell("shown", window);
    window.showMaximized();
    wait();
    window.showNormal();
    tell("restored", window);
    window.hide();
    window.show();
    tell("shown again", window);
    window.setFrame(QRectF(100, 100, 600, 450));
    tell("framed", window);

    const QByteArray state = window.saveState();
    NS::Window other;
    other.restoreState(state);
    other.show();
    tell("from a state", other);
    other.setFrame(QRectF(100, 100, 400, 300));
    other.restoreState(state);
    tell("back to the state", other);
    other.showMaximized();
    wait();
    other.restoreState(state);
    tell("from maximised to the state", other);
    other.hide();

    window.setNativeDecorations(true);
    wait();
    std::printf("native: margin %d\n", window.shadowMargin());
    window.setNativeDecorations(false);
    tell("with its own decorations", window);
    window.hide();

    NS::Window fixed;
    fixed.setFixedSize(400, 300);
    fixed.show();
    tell("fixed", fixed);
    fixed.hide();

    NS::Window laidOut;
    auto *const content = new QLabel;
    content->setMinimumSize(300, 200);
    laidOut.setContentView(content);
    laidOut.show();
    tell("laid out", laidOut);
    content->setMinimumHeight(260);
    tell("laid out anew", laidOut);
    laidOut.hide();

    NS::Window large;
    large.resize(450, 350);
    large.showMaximized();
    wait();
    large.showNormal();
    tell("maximised first", large);
    large.hide();

    QDialog dialog;
    dialog.resize(400, 300);
    NS::TitleBar::install(&dialog);
    dialog.show();
    tell("dialog", dialog);
    const QByteArray dialogState = NS::TitleBar::saveState(&dialog);
    dialog.resize(600, 500);
    dialog.hide();
    dialog.show();
    wait();
    NS::TitleBar::restoreState(&dialog, dialogState);
    tell("dialog again", dialog);
}
