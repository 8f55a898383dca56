// SPDX-License-Identifier: MIT
#include "View/BusyCursor.h"

#include "View/Spinner.h"

#include <QCursor>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPointer>
#include <QThread>

#include <memory>

namespace Pellarvine::detail {

namespace {

// In milliseconds. Enough to decode 8 megapixels: JPEG and PNG files took 6 ms per megapixel.
constexpr int unnoticed = 60;

} // namespace

void runWithBusyCursor(QWidget *view, const std::function<void()> &work)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    thread->start();
    if (thread->wait(unnoticed))
        return;
    QGuiApplication::setOverrideCursor(QCursor(Qt::BusyCursor));
    const QPointer<Spinner> spinner(new Spinner(view));
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    thread->wait();
    delete spinner; // null if the view, which owns it, was destroyed
    QGuiApplication::restoreOverrideCursor();
}

bool isBusy(const QWidget *view)
{
    return view->findChild<Spinner *>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace Pellarvine::detail
