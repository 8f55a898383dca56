// SPDX-License-Identifier: MIT
// The least that a program with a window does: what the gallery's start is measured against.
#include "../examples/gallery/ExitWhenShown.h"

#include <QMainWindow>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const ExitWhenShown exitWhenShown(application);
    QMainWindow window;
    window.resize(1000, 760);
    window.show();
    return QApplication::exec();
}
