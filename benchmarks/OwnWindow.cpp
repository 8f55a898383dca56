// SPDX-License-Identifier: MIT
// The same with a window of ours, for what the library itself adds to a program's start.
#include "../examples/gallery/ExitWhenShown.h"

#include <pellarvine/Pellarvine/Window.h>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const ExitWhenShown exitWhenShown(application);
    Pellarvine::Window window;
    window.resize(1000, 760);
    window.show();
    return QApplication::exec();
}
