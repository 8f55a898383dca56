// SPDX-License-Identifier: MIT
#include "AskedProgram.h"

#include "Command.h"
#include "Signals.h"
#include "SystemError.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

// glibc 2.36 declares these functions for C alone.
extern "C" {
#include <sys/pidfd.h>
}

AskedProgram::AskedProgram(const QByteArray &program, const QByteArray &question,
                           const Signals &signals)
    : m_program(program)
    , m_signals(signals)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throwSystemError(program, errno);
    m_output = FileDescriptor(ends[0]);
    const FileDescriptor input(ends[1]);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, input, STDOUT_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawnattr_setsigmask(&attributes, &signals.inheritedMask());
    posix_spawnattr_setsigdefault(&attributes, &signals.ignored());
    QByteArray name = program;
    QByteArray argument = question;
    char *const arguments[] = { name.data(), argument.data(), nullptr };
    const int error =
            posix_spawnp(&m_process, name.constData(), &files, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    if (error != 0) {
        m_process = -1;
        throwSystemError(program, error);
    }
}

AskedProgram::~AskedProgram()
{
    if (m_process > 0)
        kill(m_process, SIGTERM);
}

void AskedProgram::finish()
{
    const FileDescriptor end(pidfd_open(m_process, 0));
    if (!end.isOpen())
        throwSystemError(m_program, errno);
    m_signals.waitFor(end);
    int status = 0;
    waitpid(m_process, &status, 0);
    m_process = -1;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw CommandError(ExitStatus::systemError, m_program + ": failed to ask for a passphrase");
}
