// SPDX-License-Identifier: MIT
#pragma once

#include "FileDescriptor.h"

#include <chrono>
#include <csignal>

/// Thrown when a signal that ends the process has come. It is still pending then, so that it ends
/// the process once everything is cleaned up and `Signals::deliver()` is called.
class Interrupted
{ };

/// Thrown when the process is to be stopped, under SuspensionDelay only.
class Suspended
{ };

/// Turns the signals that ask a program to end into something to wait for, so that a run is broken
/// off at a place of its own choosing: with the terminal's echo back on and no partial file left.
/// Make it before any thread; threads inherit the blocked signals.
class Signals
{
public:
    Signals();
    Signals(const Signals &) = delete;
    Signals &operator=(const Signals &) = delete;

    static constexpr std::chrono::milliseconds unlimited { -1 };

    /// Waits until `descriptor` can be read. Throws Interrupted when a signal comes first. False
    /// if neither came within `timeout`.
    bool waitFor(int descriptor, std::chrono::milliseconds timeout = unlimited) const;

    /// open(2) with O_CLOEXEC. It may wait for long, as for a FIFO's other end; throws Interrupted
    /// when a signal comes first, CommandError that names the path if the file cannot be opened.
    FileDescriptor open(const QByteArray &path, int flags) const;

    /// For programs that this one starts: the signals that were blocked before, and those that only
    /// this process ignores.
    const sigset_t &inheritedMask() const { return m_inheritedMask; }
    const sigset_t &ignored() const { return m_ignored; }

    /// Lets the signal behind Interrupted do its work.
    static void deliver();

private:
    friend class SuspensionDelay;

    sigset_t m_ending;
    sigset_t m_ignored;
    sigset_t m_inheritedMask;
    FileDescriptor m_descriptor;
};

/// Keeps Ctrl+Z from stopping the process while it lives: `waitFor` throws Suspended instead. The
/// process is stopped when the object goes, and carries on behind it.
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
