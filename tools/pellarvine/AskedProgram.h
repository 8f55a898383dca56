// SPDX-License-Identifier: MIT
#pragma once

#include "FileDescriptor.h"

#include <QByteArray>

#include <sys/types.h>

class Signals;

/// A program that asks for a passphrase in its own way, for example in a window, and prints it. Its
/// standard input is empty. The destructor ends a program that is still running.
class AskedProgram
{
public:
    /// Starts the program with the question as its argument. It is searched in PATH. Throws
    /// CommandError.
    AskedProgram(const QByteArray &program, const QByteArray &question, const Signals &signals);
    AskedProgram(const AskedProgram &) = delete;
    AskedProgram &operator=(const AskedProgram &) = delete;
    ~AskedProgram();

    /// Its output.
    const FileDescriptor &output() const { return m_output; }

    /// Waits until it has ended. Throws CommandError if its exit status is not 0, and Interrupted.
    void finish();

private:
    QByteArray m_program;
    const Signals &m_signals;
    FileDescriptor m_output;
    pid_t m_process = -1; // until its end has been seen
};
