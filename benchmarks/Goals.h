// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// A limit for the ratio of two benchmarks of one run. Both have their full names, as Google
/// Benchmark prints them, without "/real_time" or "/manual_time" at the end.
struct Goal
{
    enum Kind {
        timeAtMost, ///< time of `subject` / time of `baseline` is at most `limit`
        speedAtLeast, ///< speed of `subject` / speed of `baseline` is at least `limit`
        counterAtMost, ///< the counter named `baseline` of `subject` is at most `limit`
    };

    std::string name;
    std::string subject;
    std::string baseline;
    Kind kind = timeAtMost;
    double limit = 1.0;
};

/// Runs the registered benchmarks several times in random order, so that a slow moment of the
/// machine affects subject and baseline. Then prints a line for each goal whose two benchmarks
/// ran: "goal NAME measured R limit G held", or "short". R is the ratio of the medians, or the
/// counter's median. Returns 1 if a benchmark failed, or if a goal was not measured although no
/// --benchmark_filter leaves it out; prints the reason. For main().
int runBenchmarks(int argc, char **argv, const std::vector<Goal> &goals);
