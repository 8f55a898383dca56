// SPDX-License-Identifier: MIT
#include "Signals.h"

#include "SystemError.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <thread>

namespace {

constexpr int endingSignals[] = { SIGINT, SIGTERM, SIGHUP, SIGQUIT };

// Signals that the caller ignores, as nohup does, stay ignored.
bool isIgnored(int signal)
{
    struct sigaction inherited = {};
    sigaction(signal, nullptr, &inherited);
    return inherited.sa_handler == SIG_IGN;
}

} // namespace

Signals::Signals()
{
    // A closed pipe and a file beyond the size limit then are errors of write().
    sigemptyset(&m_ignored);
    for (const int signal : { SIGPIPE, SIGXFSZ }) {
        if (std::signal(signal, SIG_IGN) != SIG_IGN)
            sigaddset(&m_ignored, signal);
    }

    sigemptyset(&m_ending);
    for (const int signal : endingSignals) {
        if (!isIgnored(signal))
            sigaddset(&m_ending, signal);
    }
    pthread_sigmask(SIG_BLOCK, &m_ending, &m_inheritedMask);
    m_descriptor = FileDescriptor(signalfd(-1, &m_ending, SFD_CLOEXEC));
    if (!m_descriptor.isOpen())
        throwSystemError("signals", errno);
}

bool Signals::waitFor(int descriptor, std::chrono::milliseconds timeout) const
{
    pollfd polled[] = { { m_descriptor, POLLIN, 0 }, { descriptor, POLLIN, 0 } };
    int count = 0;
    do
        count = poll(polled, 2, int(timeout.count()));
    while (count < 0 && errno == EINTR && timeout < std::chrono::milliseconds(0));
    if (count < 0 && errno != EINTR)
        throwSystemError("poll", errno);
    if (count > 0 && polled[0].revents != 0) {
        sigset_t pending;
        sigpending(&pending);
        for (const int signal : endingSignals) {
            if (sigismember(&m_ending, signal) && sigismember(&pending, signal))
                throw Interrupted();
        }
        throw Suspended();
    }
    return count > 0 && polled[1].revents != 0;
}

FileDescriptor Signals::open(const QByteArray &path, int flags) const
{
    // The thread may outlive the call, when the process is about to end.
    struct Opening
    {
        FileDescriptor file;
        int error = 0;
        FileDescriptor done { eventfd(0, EFD_CLOEXEC) };
    };
    const auto opening = std::make_shared<Opening>();
    std::thread thread([opening, path, flags] {
        opening->file = FileDescriptor(::open(path.constData(), flags | O_CLOEXEC));
        opening->error = errno;
        eventfd_write(opening->done, 1);
    });
    try {
        waitFor(opening->done);
    } catch (...) {
        thread.detach();
        throw;
    }
    thread.join();
    if (!opening->file.isOpen())
        throwSystemError(path, opening->error);
    return std::move(opening->file);
}

void Signals::deliver()
{
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : endingSignals)
        sigaddset(&ending, signal);
    pthread_sigmask(SIG_UNBLOCK, &ending, nullptr);
}

SuspensionDelay::SuspensionDelay(const Signals &signals)
    : m_signals(signals)
{
    sigset_t stopping;
    sigemptyset(&stopping);
    if (!isIgnored(SIGTSTP))
        sigaddset(&stopping, SIGTSTP);
    pthread_sigmask(SIG_BLOCK, &stopping, &m_inherited);
    sigset_t awaited;
    sigorset(&awaited, &signals.m_ending, &stopping);
    signalfd(signals.m_descriptor, &awaited, 0);
}

SuspensionDelay::~SuspensionDelay()
{
    signalfd(m_signals.m_descriptor, &m_signals.m_ending, 0);
    pthread_sigmask(SIG_SETMASK, &m_inherited, nullptr);
}
