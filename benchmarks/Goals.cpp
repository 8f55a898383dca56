// SPDX-License-Identifier: MIT
#include "Goals.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string_view>

namespace {

// Prints as Google Benchmark does, and keeps each repetition's seconds per iteration.
class Recorder : public benchmark::ConsoleReporter
{
public:
    Recorder()
        : ConsoleReporter(OO_None)
    { }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred)
                continue;
            m_times[plainName(run.run_name.str())].push_back(run.real_accumulated_time
                                                             / double(run.iterations));
        }
    }

    double median(const std::string &name) const
    {
        const auto found = m_times.find(name);
        if (found == m_times.end())
            return 0.0;
        std::vector<double> times = found->second;
        const auto middle = times.begin() + std::ptrdiff_t(times.size() / 2);
        std::nth_element(times.begin(), middle, times.end());
        return *middle;
    }

private:
    static std::string plainName(std::string name)
    {
        for (const std::string_view part : { "/iterations:", "/repeats:", "/min_time:" }) {
            const std::size_t start = name.find(part);
            if (start != std::string::npos)
                name.erase(start, name.find('/', start + 1) - start);
        }
        for (const std::string_view suffix : { "/real_time", "/manual_time" }) {
            if (name.ends_with(suffix))
                name.resize(name.size() - suffix.size());
        }
        return name;
    }

    std::map<std::string, std::vector<double>> m_times;
};

} // namespace

int runBenchmarks(int argc, char **argv, const std::vector<Goal> &goals)
{
    // In front, so that the caller's own flags win.
    std::string defaults[] = { "--benchmark_repetitions=9", "--benchmark_min_time=0.05",
                               "--benchmark_enable_random_interleaving=true" };
    std::vector<char *> arguments { argv[0] };
    for (std::string &flag : defaults)
        arguments.push_back(flag.data());
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = int(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;

    Recorder recorder;
    benchmark::RunSpecifiedBenchmarks(&recorder);
    for (const Goal &goal : goals) {
        const double subject = recorder.median(goal.subject);
        const double baseline = recorder.median(goal.baseline);
        if (subject <= 0.0 || baseline <= 0.0)
            continue;
        const bool isTime = goal.kind == Goal::timeAtMost;
        const double measured = isTime ? subject / baseline : baseline / subject;
        const bool isHeld = isTime ? measured <= goal.limit : measured >= goal.limit;
        std::printf("goal %s measured %.3f limit %.3f %s\n", goal.name.c_str(), measured,
                    goal.limit, isHeld ? "held" : "short");
    }
    return 0;
}
