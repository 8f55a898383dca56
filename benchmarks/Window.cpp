// SPDX-License-Identifier: MIT
// Compares the time from the start of the gallery until its window is painted with the time of a
// program with an empty QMainWindow. Needs a display.
#include "Goals.h"

#include <QProcess>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

void start(benchmark::State &state, const QString &program, const QStringList &arguments)
{
    for (auto _ : state) {
        QProcess process;
        process.start(program, arguments);
        if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit
            && process.exitCode() == 0)
            continue;
        const QByteArray firstLine = process.readAllStandardError().split('\n').constFirst();
        return state.SkipWithError(
                (program.toUtf8() + " did not end well: " + firstLine).constData());
    }
}

void emptyWindow(benchmark::State &state)
{
    start(state, QStringLiteral(PELLARVINE_EMPTY_WINDOW), {});
}

void ownWindow(benchmark::State &state)
{
    start(state, QStringLiteral(PELLARVINE_OWN_WINDOW), {});
}

void gallery(benchmark::State &state)
{
    start(state, QStringLiteral(PELLARVINE_GALLERY), { u"--exit-when-shown"_s });
}

// The window together with its first page, which is usually made after the window is painted.
void galleryWithPage(benchmark::State &state)
{
    start(state, QStringLiteral(PELLARVINE_GALLERY),
          { u"--exit-when-shown"_s, u"--page"_s, u"container"_s });
}

// Single starts differ by a third, so each repetition is the mean of several.
constexpr int starts = 5;

BENCHMARK(emptyWindow)
        ->Name("window/empty")
        ->Iterations(starts)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
BENCHMARK(ownWindow)
        ->Name("window/own")
        ->Iterations(starts)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
BENCHMARK(gallery)
        ->Name("window/gallery")
        ->Iterations(starts)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
BENCHMARK(galleryWithPage)
        ->Name("window/gallery_with_page")
        ->Iterations(starts)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    // Without one, the gallery would draw into memory, which takes another time.
    constexpr const char *displays[] = { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" };
    if (std::all_of(std::begin(displays), std::end(displays), qEnvironmentVariableIsEmpty)) {
        std::fputs("error: there is no display; set DISPLAY, WAYLAND_DISPLAY or QT_QPA_PLATFORM\n",
                   stderr);
        return 2;
    }
    return runBenchmarks(argc, argv,
                         { { .name = "window-start",
                             .subject = "window/gallery",
                             .baseline = "window/empty",
                             .kind = Goal::timeAtMost,
                             .limit = 1.15 },
                           { .name = "window-own-start",
                             .subject = "window/own",
                             .baseline = "window/empty",
                             .kind = Goal::timeAtMost,
                             .limit = 1.15 } });
}
