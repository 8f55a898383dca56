// SPDX-License-Identifier: MIT
#include "Pipeline.h"

#include "BoundedQueue.h"
#include "FileDescriptor.h"
#include "Progress.h"
#include "Signals.h"
#include "SystemError.h"

#include <QScopeGuard>

#include <atomic>
#include <cerrno>
#include <exception>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>

namespace {

// Large enough that waking threads takes little of the time.
constexpr qsizetype chunkLength = 1024 * 1024;
constexpr std::size_t waitingChunks = 4;
constexpr std::chrono::milliseconds progressInterval { 200 };

// Whether to repeat a failed read or write. Waits for a non-blocking descriptor, which some parent
// processes pass on.
bool isTransient(int descriptor, short event)
{
    if (errno == EAGAIN) {
        pollfd polled { descriptor, event, 0 };
        poll(&polled, 1, -1);
        return true;
    }
    return errno == EINTR;
}

// The shared state of the threads. It is reference-counted, because they may outlive the call.
struct Line
{
    Stream source;
    Stream sink;
    Transform transform;
    BoundedQueue<QByteArray> read { waitingChunks };
    BoundedQueue<QByteArray> transformed { waitingChunks };
    std::atomic<qint64> doneLength { 0 };

    // The first failure ends the run.
    std::mutex failureMutex;
    std::exception_ptr failure;
    FileDescriptor ended { eventfd(0, EFD_CLOEXEC) };

    void end() { eventfd_write(ended, 1); }

    bool hasFailed()
    {
        const std::lock_guard lock(failureMutex);
        return failure != nullptr;
    }

    // Runs one stage; a failure in it stops the others.
    template <typename Stage>
    void run(Stage stage)
    {
        try {
            stage();
        } catch (...) {
            const std::lock_guard lock(failureMutex);
            if (!failure)
                failure = std::current_exception();
            read.close();
            transformed.close();
            end();
        }
    }

    void readAll()
    {
        posix_fadvise(source.descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
        for (;;) {
            QByteArray chunk(chunkLength, Qt::Uninitialized);
            const ssize_t count =
                    ::read(source.descriptor, chunk.data(), std::size_t(chunk.size()));
            if (count < 0 && isTransient(source.descriptor, POLLIN))
                continue;
            if (count < 0)
                throwSystemError(source.name, errno);
            if (count == 0)
                break;
            chunk.resize(count);
            read.push(std::move(chunk));
        }
        read.close();
    }

    void transformAll()
    {
        // Once for nothing, so that an empty file has its header too.
        transformed.push(transform.feed({}));
        while (const auto chunk = read.pop()) {
            transformed.push(transform.feed(*chunk));
            doneLength += chunk->size();
        }
        // A failed source is not at its end.
        if (!hasFailed())
            transformed.push(transform.finalize());
        transformed.close();
    }

    void writeAll()
    {
        while (const auto chunk = transformed.pop())
            write(*chunk);
        end();
    }

    void write(QByteArrayView data) const
    {
        while (!data.isEmpty()) {
            const ssize_t count = ::write(sink.descriptor, data.data(), std::size_t(data.size()));
            if (count < 0 && isTransient(sink.descriptor, POLLOUT))
                continue;
            if (count < 0)
                throwSystemError(sink.name, errno);
            data = data.sliced(count);
        }
    }
};

} // namespace

void runPipeline(const Stream &source, const Stream &sink, Transform transform,
                 const Signals &signals, Progress &progress)
{
    const auto line = std::make_shared<Line>();
    line->source = source;
    line->sink = sink;
    line->transform = std::move(transform);
    std::thread stages[] = {
        std::thread([line] { line->run([&] { line->readAll(); }); }),
        std::thread([line] { line->run([&] { line->transformAll(); }); }),
        std::thread([line] { line->run([&] { line->writeAll(); }); }),
    };
    // After a failure a stage may be blocked in the system forever; otherwise all three have ended.
    auto detach = qScopeGuard([&] {
        for (std::thread &stage : stages)
            stage.detach();
    });
    while (!signals.waitFor(line->ended, progressInterval))
        progress.show(line->doneLength);
    {
        const std::lock_guard lock(line->failureMutex);
        if (line->failure)
            std::rethrow_exception(line->failure);
    }
    detach.dismiss();
    for (std::thread &stage : stages)
        stage.join();
}
