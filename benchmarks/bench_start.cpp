// SPDX-License-Identifier: MIT
// From the start of the process to the shown window, over a real pseudo-terminal. The waits that belong to the start-up
// (twice 50 ms and four times 120 ms between the first requests) are counted apart.
#include "app/application.h"
#include "app/mainwindow.h"
#include "app/startup.h"
#include "link/serialports.h"
#include "support/rawline.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <benchmark/benchmark.h>

namespace {

constexpr double kWaitSeconds = 0.580;
constexpr char kPortVariable[] = "BENCH_START_PORT";

// The process that is measured: says "shown" once the window stands painted.
int showWindow(int argc, char **argv)
{
    Application application(argc, argv);
    setAvailablePortNames([] { return QStringList{qEnvironmentVariable(kPortVariable)}; });
    return runWorkbench(application, [](MainWindow &) {
        QApplication::processEvents();
        puts("shown");
        fflush(stdout);
    });
}

void start(benchmark::State &state)
{
    RawLine line;
    qputenv(kPortVariable, line.tty().toLocal8Bit());
    for (auto _ : state) {
        QProcess process;
        QElapsedTimer clock;
        clock.start();
        process.start(QCoreApplication::applicationFilePath(), QStringList());
        if (!process.waitForReadyRead())
            state.SkipWithError("the window was not shown");
        const double seconds = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
        state.SetIterationTime(seconds);
        state.counters["less_waits_ms"] = (seconds - kWaitSeconds) * 1e3;
        process.kill();
        process.waitForFinished();
    }
}

} // namespace

BENCHMARK(start)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(9)->ReportAggregatesOnly();

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsSet(kPortVariable))
        return showWindow(argc, argv);
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
