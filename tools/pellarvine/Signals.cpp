// SPDX-License-Identifier: MIT
#include "Signals.h"

#include "Command.h"
#include "SystemError.h"

#include <csignal>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

Signals::Signals()
{
    // A closed pipe and a file that grew too large then show as errors of write().
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);

    sigset_t set;
    sigemptyset(&set);
    for (const int number : { SIGINT, SIGTERM, SIGHUP }) {
        // What the caller had ignored, as nohup does, stays ignored.
        struct sigaction inherited = {};
        sigaction(number, nullptr, &inherited);
        if (inherited.sa_handler != SIG_IGN)
            sigaddset(&set, number);
    }
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    m_descriptor = signalfd(-1, &set, SFD_CLOEXEC);
    if (m_descriptor < 0)
        throwSystemError(u"signals"_s, errno);
}

Signals::~Signals()
{
    close(m_descriptor);
}

bool Signals::waitFor(int descriptor, std::chrono::milliseconds timeout) const
{
    pollfd polled[] = { { m_descriptor, POLLIN, 0 }, { descriptor, POLLIN, 0 } };
    const int count = poll(polled, 2, int(timeout.count()));
    if (count < 0 && errno != EINTR)
        throwSystemError(u"poll"_s, errno);
    if (count > 0 && polled[0].revents != 0)
        throw CommandError(ExitStatus::systemError, u"interrupted"_s);
    return count > 0 && polled[1].revents != 0;
}
