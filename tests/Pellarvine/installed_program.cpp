// SPDX-License-Identifier: MIT
// A QMainWindow with our title bar, for tests/desktops.
#include <pellarvine/Platform/NSTitleBar.h>

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QTextEdit>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Installed"));
    auto *const fullScreen = new QAction(QStringLiteral("Full screen"), &window);
    fullScreen->setShortcut(Qt::Key_F11);
    QObject::connect(fullScreen, &QAction::triggered, &window,
                     [&] { window.setWindowState(window.windowState() ^ Qt::WindowFullScreen); });
    window.menuBar()->addMenu(QStringLiteral("View"))->addAction(fullScreen);
    window.setCentralWidget(new QTextEdit);
    window.resize(1000, 700);
    NS::TitleBar::install(&window);
    window.show();
    return QApplication::exec();
}
