// SPDX-License-Identifier: MIT
#pragma once

#include "SealFolder.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <vector>

/// The command with a terminal of its own, which takes what a person would type.
class Terminal
{
public:
    explicit Terminal(const QStringList &arguments,
                      const QString &program = programPath(u"pellarvine"_s))
    {
        QList<QByteArray> words { program.toUtf8() };
        for (const QString &argument : arguments)
            words.append(argument.toUtf8());
        std::vector<char *> pointers;
        for (QByteArray &word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        m_child = forkpty(&m_descriptor, nullptr, nullptr, nullptr);
        if (m_child == 0) {
            execv(pointers[0], pointers.data());
            _exit(127);
        }
        if (m_child < 0)
            ADD_FAILURE() << "forkpty: " << std::strerror(errno);
    }
    ~Terminal()
    {
        // kill() takes -1 for every process. After finish() the number may be another process's.
        if (m_child > 0) {
            kill(m_child, SIGKILL);
            waitpid(m_child, nullptr, 0);
        }
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    // Reads until `text` has been shown so often; false if the command ended without.
    bool sees(const QByteArray &text, int times = 1)
    {
        while (m_shown.count(text) < times) {
            char byte = 0;
            if (::read(m_descriptor, &byte, 1) != 1)
                return false;
            m_shown += byte;
        }
        return true;
    }

    void type(const QByteArray &text) const
    {
        EXPECT_EQ(::write(m_descriptor, text.data(), std::size_t(text.size())), text.size());
    }

    bool hasEcho() const
    {
        termios attributes = {};
        EXPECT_EQ(tcgetattr(m_descriptor, &attributes), 0);
        return (attributes.c_lflag & ECHO) != 0;
    }

    // Reads to the end and gives the exit status; 128 and the signal's number, as a shell does.
    int finish()
    {
        char byte = 0;
        while (::read(m_descriptor, &byte, 1) == 1)
            m_shown += byte;
        int status = 0;
        if (m_child < 0 || waitpid(m_child, &status, 0) != m_child)
            return -1;
        m_child = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    const QByteArray &shown() const { return m_shown; }

private:
    int m_descriptor = -1;
    pid_t m_child = -1;
    QByteArray m_shown;
};

/// Skips where there can be no terminal.
class SealFolderOnTerminal : public SealFolder
{
protected:
    void SetUp() override
    {
        int terminal = -1;
        int other = -1;
        if (openpty(&terminal, &other, nullptr, nullptr, nullptr) != 0)
            GTEST_SKIP() << "no pseudo-terminal can be made: " << std::strerror(errno);
        close(terminal);
        close(other);
        SealFolder::SetUp();
    }
};
