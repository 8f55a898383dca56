// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

/// Turns the signals that ask a program to end into something to wait for, so that a run is broken
/// off at a place of its own choosing: with the terminal's echo back on and no partial file left.
/// Make it before any thread; threads inherit the blocked signals.
class Signals
{
public:
    Signals();
    ~Signals();
    Signals(const Signals &) = delete;
    Signals &operator=(const Signals &) = delete;

    /// Waits until `descriptor` can be read. Throws CommandError when a signal comes first. False
    /// if neither came within `timeout`; a negative one waits forever.
    bool waitFor(int descriptor, std::chrono::milliseconds timeout) const;

private:
    int m_descriptor;
};
