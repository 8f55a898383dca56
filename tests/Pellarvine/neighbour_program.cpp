// SPDX-License-Identifier: MIT
// A window that follows the desktop's colour scheme. A drag from it carries the file that the first
// argument names.
#include <pellarvine/Platform/NSApplication.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

namespace {

class Neighbour : public NS::Window
{
protected:
    void mousePressEvent(QMouseEvent *event) override { event->accept(); }
    void mouseMoveEvent(QMouseEvent *) override
    {
        auto *const files = new QMimeData;
        files->setUrls({ QUrl::fromLocalFile(QCoreApplication::arguments().value(1)) });
        auto *const drag = new QDrag(this);
        drag->setMimeData(files);
        drag->exec(Qt::CopyAction);
    }
};

} // namespace

int main(int argc, char **argv)
{
    NS::Application application(argc, argv);
    application.setFollowsColorScheme(true);
    Neighbour neighbour;
    neighbour.setWindowTitle(QStringLiteral("Neighbour"));
    neighbour.setFixedSize(100, 120);
    neighbour.show();
    return NS::Application::exec();
}
