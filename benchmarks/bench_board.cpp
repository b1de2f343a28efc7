// SPDX-License-Identifier: MIT
// The virtual board alone: commands carried out a second, with all frames they are answered by.
#include "simulator/board.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

using namespace simulator;

namespace {

void commands(benchmark::State &state, const char *line)
{
    Board board;
    qint64 bytes = 0;
    QObject::connect(&board, &Board::output, [&bytes](const QByteArray &frame) { bytes += frame.size(); });
    const QString command = QString::fromLatin1(line);
    for (auto _ : state)
        board.execute(command);
    state.SetItemsProcessed(state.iterations());
    state.counters["bytes"] = static_cast<double>(bytes) / static_cast<double>(state.iterations());
}

} // namespace

BENCHMARK_CAPTURE(commands, mode, "get 1");
BENCHMARK_CAPTURE(commands, clock monitors, "get 4");
BENCHMARK_CAPTURE(commands, regions, "get 5");
BENCHMARK_CAPTURE(commands, voltage detectors, "pmc 3 10");
BENCHMARK_CAPTURE(commands, fault, "inject 7 1");
BENCHMARK_CAPTURE(commands, unknown, "no such command");

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
