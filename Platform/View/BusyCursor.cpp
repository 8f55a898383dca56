// SPDX-License-Identifier: MIT
#include "View/BusyCursor.h"

#include <QCursor>
#include <QEventLoop>
#include <QGuiApplication>
#include <QThread>

#include <memory>

namespace Pellarvine::detail {

namespace {

constexpr int unnoticed = 60; // milliseconds

} // namespace

void runWithBusyCursor(const std::function<void()> &work)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    thread->start();
    if (thread->wait(unnoticed))
        return;
    QGuiApplication::setOverrideCursor(QCursor(Qt::BusyCursor));
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    thread->wait();
    QGuiApplication::restoreOverrideCursor();
}

} // namespace Pellarvine::detail
