// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/Worker.h>

#include <QBuffer>
#include <QCursor>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QThread>
#include <QUrl>

#include <memory>
#include <new>

namespace NS::detail {

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

QString ordinaryFilePath(const QUrl &url)
{
    if (!url.isLocalFile())
        return {};
    const QString path = url.toLocalFile();
    return QFileInfo(path).isFile() ? path : QString();
}

std::optional<QByteArray> contentsOfFile(const QUrl &url)
{
    const QString path = ordinaryFilePath(url);
    if (path.isEmpty())
        return std::nullopt;
    try {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return std::nullopt;
        QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError)
            return std::nullopt;
        return bytes;
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

QImage decodedImage(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    return reader.read();
}

} // namespace NS::detail
