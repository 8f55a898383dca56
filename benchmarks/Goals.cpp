// SPDX-License-Identifier: MIT
#include "Goals.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

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
            if (run.error_occurred)
                m_failures[plainName(run.run_name.str())] = run.error_message;
            if (run.run_type != Run::RT_Iteration || run.error_occurred)
                continue;
            m_times[plainName(run.run_name.str())].push_back(run.real_accumulated_time
                                                             / double(run.iterations));
            for (const auto &[name, counter] : run.counters)
                m_counters[{ plainName(run.run_name.str()), name }].push_back(counter.value);
        }
    }

    // The messages of the benchmarks that failed, by name.
    const std::map<std::string, std::string> &failures() const { return m_failures; }

    // Nothing if no repetition succeeded.
    std::optional<double> medianTime(const std::string &name) const
    {
        const auto found = m_times.find(name);
        return found == m_times.end() ? std::nullopt : std::optional(median(found->second));
    }

    std::optional<double> medianCounter(const std::string &name, const std::string &counter) const
    {
        const auto found = m_counters.find({ name, counter });
        return found == m_counters.end() ? std::nullopt : std::optional(median(found->second));
    }

private:
    static double median(std::vector<double> values)
    {
        const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    }

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

    std::map<std::string, std::string> m_failures;
    std::map<std::string, std::vector<double>> m_times;
    std::map<std::pair<std::string, std::string>, std::vector<double>> m_counters;
};

} // namespace

int runBenchmarks(int argc, char **argv, const std::vector<Goal> &goals)
{
    // Before the caller's flags, which override them.
    std::string defaults[] = { "--benchmark_repetitions=9", "--benchmark_min_time=0.05",
                               "--benchmark_enable_random_interleaving=true" };
    const bool isListing = std::any_of(argv + 1, argv + argc, [](std::string_view argument) {
        return argument.starts_with("--benchmark_list_tests") && !argument.ends_with("=false");
    });
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
    if (isListing)
        return 0;
    for (const auto &[name, message] : recorder.failures())
        std::fprintf(stderr, "error: %s: %s\n", name.c_str(), message.c_str());
    bool isComplete = recorder.failures().empty();
    const std::string filter = benchmark::GetBenchmarkFilter();
    const bool runsAll = filter.empty() || filter == "." || filter == "all";
    for (const Goal &goal : goals) {
        const bool isCounter = goal.kind == Goal::counterAtMost;
        const auto subject = isCounter ? recorder.medianCounter(goal.subject, goal.baseline)
                                       : recorder.medianTime(goal.subject);
        const auto baseline = isCounter ? 1.0 : recorder.medianTime(goal.baseline);
        if (!subject || !baseline) {
            if (runsAll) {
                isComplete = false;
                std::fprintf(stderr, "error: goal %s was not measured: there is no result of %s\n",
                             goal.name.c_str(), (subject ? goal.baseline : goal.subject).c_str());
            }
            continue;
        }
        const bool isSpeed = goal.kind == Goal::speedAtLeast;
        const double measured = isSpeed ? *baseline / *subject : *subject / *baseline;
        const bool isHeld = isSpeed ? measured >= goal.limit : measured <= goal.limit;
        std::printf("goal %s measured %.3f limit %.3f %s\n", goal.name.c_str(), measured,
                    goal.limit, isHeld ? "held" : "short");
    }
    return isComplete ? 0 : 1;
}
