// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/NSView+AutoLayout.h>
#include <pellarvine/Platform/NSView.h>

#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QWidget panel;
    panel.resize(100, 50);
    auto *const content = new QWidget;
    NS::addAndPin(&panel, content, 8);
    NS::layoutSubtreeIfNeeded(&panel);
    return content->geometry() == QRect(8, 8, 84, 34) ? 0 : 1;
}
