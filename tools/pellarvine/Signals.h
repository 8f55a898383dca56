// SPDX-License-Identifier: MIT
#pragma once

#include "FileDescriptor.h"

#include <chrono>
#include <csignal>

/// Thrown after a signal that ends the process. The signal is still pending, and ends the process
/// when everything is cleaned up and `Signals::deliver()` is called.
class Interrupted
{ };

/// Thrown when the process is to be stopped, under SuspensionDelay only.
class Suspended
{ };

/// Blocks the signals that end a program and lets it wait for them. A run can then stop at a safe
/// place: with the terminal's echo on and without a partial file. Construct it before any thread;
/// threads inherit the blocked signals.
class Signals
{
public:
    Signals();
    Signals(const Signals &) = delete;
    Signals &operator=(const Signals &) = delete;

    static constexpr std::chrono::milliseconds unlimited { -1 };

    /// Waits until `descriptor` can be read. Throws Interrupted if a signal comes first. Returns
    /// false after `timeout`.
    bool waitFor(int descriptor, std::chrono::milliseconds timeout = unlimited) const;

    /// open(2) with O_CLOEXEC. It can block, for example on a FIFO without a writer. Throws
    /// Interrupted if a signal comes first, and CommandError with the path if the file cannot be
    /// opened.
    FileDescriptor open(const QByteArray &path, int flags) const;

    /// Restores the signals of the caller, for programs that this one starts.
    const sigset_t &inheritedMask() const { return m_inheritedMask; }
    const sigset_t &ignored() const { return m_ignored; }

    /// Delivers the signal of Interrupted.
    static void deliver();

private:
    friend class SuspensionDelay;

    sigset_t m_ending;
    sigset_t m_ignored;
    sigset_t m_inheritedMask;
    FileDescriptor m_descriptor;
};

/// Delays Ctrl+Z: `waitFor` throws Suspended, and the destructor stops the process, which continues
/// after it.
class SuspensionDelay
{
public:
    explicit SuspensionDelay(const Signals &signals);
    ~SuspensionDelay();
    SuspensionDelay(const SuspensionDelay &) = delete;
    SuspensionDelay &operator=(const SuspensionDelay &) = delete;

private:
    const Signals &m_signals;
    sigset_t m_inherited;
};
