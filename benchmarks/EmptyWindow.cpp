// SPDX-License-Identifier: MIT
// The smallest program with a window. The start of the gallery is compared with it.
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
