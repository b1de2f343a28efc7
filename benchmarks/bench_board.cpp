// SPDX-License-Identifier: MIT
// The virtual board: commands per second with all frames that answer them, and what fifty boards at once cost.
#include "simulator/board.h"
#include "support/boardprocess.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <algorithm>

#include <fcntl.h>
#include <unistd.h>

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

constexpr int kBoards = 50;
constexpr int kPollsPerSecond = 10;
constexpr int kSeconds = 5;

// A board in a process of its own, its line held open.
struct Polled {
    Polled() : process({}), line(open(process.tty().toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}
    ~Polled() { close(line); }

    void poll()
    {
        char buffer[4096];
        while (read(line, buffer, sizeof buffer) > 0) {}
        for (const char *command : {"get 1\r\n", "get 3\r\n", "get 4\r\n"})
            failed |= write(line, command, qstrlen(command)) < 0;
    }

    BoardProcess process;
    int line;
    bool failed = false;
};

// Figures of a process: seconds of processor time, kilobytes of memory that it does not share.
double processorTime(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    const bool isOpen = file.open(QIODevice::ReadOnly);
    const QList<QByteArray> words = file.readAll().split(' ');
    return isOpen && words.size() > 14 ? (words[13].toDouble() + words[14].toDouble()) / double(sysconf(_SC_CLK_TCK))
                                       : 0;
}

double ownMemory(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(pid));
    double kilobytes = 0;
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("Private_"))
            kilobytes += line.simplified().split(' ').value(1).toDouble();
    }
    return kilobytes;
}

using Boards = std::vector<std::unique_ptr<Polled>>;

// Seconds that passed.
double pollAll(const Boards &boards)
{
    QElapsedTimer clock;
    clock.start();
    for (int round = 1; round <= kSeconds * kPollsPerSecond; ++round) {
        for (const auto &board : boards)
            board->poll();
        const qint64 left = round * 1000 / kPollsPerSecond - clock.elapsed();
        QThread::msleep(static_cast<unsigned long>(std::max<qint64>(0, left)));
    }
    return static_cast<double>(clock.elapsed()) / 1000;
}

double sumOf(const Boards &boards, double (*figure)(qint64))
{
    double sum = 0;
    for (const auto &board : boards)
        sum += figure(board->process.processId());
    return sum;
}

void fiftyBoards(benchmark::State &state)
{
    Boards boards;
    for (int i = 0; i < kBoards; ++i)
        boards.push_back(std::make_unique<Polled>());
    for (auto _ : state) {
        const double before = sumOf(boards, processorTime);
        const double seconds = pollAll(boards);
        state.SetIterationTime(seconds);
        state.counters["cpu_percent_each"] = 100 * (sumOf(boards, processorTime) - before) / seconds / kBoards;
        state.counters["kB_each"] = sumOf(boards, ownMemory) / kBoards;
    }
    if (std::ranges::any_of(boards, [](const auto &board) { return board->failed; }))
        state.SkipWithError("a board takes no commands");
}

} // namespace

BENCHMARK_CAPTURE(commands, mode, "get 1");
BENCHMARK_CAPTURE(commands, clock monitors, "get 4");
BENCHMARK_CAPTURE(commands, regions, "get 5");
BENCHMARK_CAPTURE(commands, voltage detectors, "pmc 3 10");
BENCHMARK_CAPTURE(commands, fault, "inject 7 1");
BENCHMARK_CAPTURE(commands, unknown, "no such command");
BENCHMARK(fiftyBoards)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
