// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>

/// A line on standard error with progress, rate and remaining time. Shown only if standard error is
/// a terminal.
class Progress
{
public:
    /// `total` in bytes, or -1 if it is not known.
    Progress(bool isQuiet, qint64 total);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void show(qint64 done);

private:
    using Clock = std::chrono::steady_clock;

    bool m_isShown;
    qint64 m_total;
    Clock::time_point m_start = Clock::now();
};

/// The line's text for `done` bytes of `total` after `seconds`.
QString progressText(qint64 done, qint64 total, double seconds);
