// SPDX-License-Identifier: MIT
#include "Screenshots.h"

#include "GalleryWindow.h"
#include "Page.h"
#include "Pages.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPixmap>

using namespace Qt::StringLiterals;

namespace {

// Lets layouts settle and timers of the page run.
void settle()
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 150)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

} // namespace

QString writeScreenshots(const QString &folder)
{
    if (!QDir().mkpath(folder))
        return QApplication::translate("Screenshots", "cannot create the folder %1").arg(folder);
    for (const PageEntry &entry : pages()) {
        GalleryWindow window;
        Page *const page = window.showPage(entry.name);
        window.show();
        settle();
        page->showExample();
        settle();
        const QString file = QDir(folder).filePath(entry.name + u".png"_s);
        if (!window.grab().save(file))
            return QApplication::translate("Screenshots", "cannot write %1").arg(file);
    }
    return {};
}
