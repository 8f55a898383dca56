// SPDX-License-Identifier: MIT
#pragma once

#include "FileDescriptor.h"

#include <QByteArray>

#include <sys/types.h>

class Signals;

/// A program that asks for a passphrase in its own way, such as in a window, and prints it. Its
/// standard input is empty. A program that still runs when the object goes is told to end.
class AskedProgram
{
public:
    /// Starts the program, which is looked for in PATH, with the question as its one argument.
    /// Throws CommandError.
    AskedProgram(const QByteArray &program, const QByteArray &question, const Signals &signals);
    AskedProgram(const AskedProgram &) = delete;
    AskedProgram &operator=(const AskedProgram &) = delete;
    ~AskedProgram();

    /// What it prints.
    const FileDescriptor &output() const { return m_output; }

    /// Waits for its end. Throws CommandError unless its exit status is 0, and Interrupted.
    void finish();

private:
    QByteArray m_program;
    const Signals &m_signals;
    FileDescriptor m_output;
    pid_t m_process = -1; // until its end has been seen
};
