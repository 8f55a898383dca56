// SPDX-License-Identifier: MIT
// As EmptyWindow.cpp, with a window of the library, to measure what the library adds to the start.
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
