// SPDX-License-Identifier: MIT
// The time line with many faults: a frame's painting at spans from everything to a microsecond, growth, and the log.
#include "benchmarks/windowbenchmarks.h"
#include "timeline/exports.h"
#include "timeline/picture.h"

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <random>

using namespace timeline;

namespace {

constexpr qint64 kStart = 1'790'000'000'000'000'000;
constexpr QSize kSize(1920, 400);

protocol::fccu::FaultEvent drawnFault(std::mt19937 &random)
{
    constexpr std::array ids = {28, 36, 47, 104, 17, 78, 2, 13, 115, 63};
    protocol::fccu::FaultEvent fault;
    fault.id = static_cast<quint8>(ids[random() % ids.size()]);
    fault.time = std::exp2(static_cast<float>(random() % 2000) / 100 - 6);
    return fault;
}

// A million faults, unevenly over an hour, with injections, clears and a restart per hundred of them.
const Chronicle &million()
{
    static const Chronicle chronicle = [] {
        Chronicle made;
        std::mt19937 random(3);
        qint64 time = kStart;
        for (int i = 0; i < 1'000'000; ++i) {
            time += static_cast<qint64>(random() % 1000 ? random() % 3'000'000 : random() % 1'000'000'000);
            made.addFault(time, drawnFault(random));
            if (i % 100 == 0) {
                made.addCommand(time, QStringLiteral("inject 7 1"));
                made.addCommand(time, QStringLiteral("xbic 5"));
                made.addRestart(time);
            }
        }
        return made;
    }();
    return chronicle;
}

// Pans while it measures, so that nothing is what it was in the frame before. The argument is the part of all shown, as a
// power of a tenth.
void paintMillion(benchmark::State &state)
{
    const Chronicle &chronicle = million();
    const qint64 whole = chronicle.last() - chronicle.first();
    const auto length = std::max<qint64>(
        static_cast<qint64>(static_cast<double>(whole) * std::pow(0.1, static_cast<double>(state.range(0)))), 1000);
    QImage image(kSize, QImage::Format_RGB32);
    QPainter painter(&image);
    qint64 from = chronicle.first();
    for (auto _ : state) {
        Picture(chronicle, {from, from + length}, kSize, 500'000).paint(painter);
        from += length / 40;
        if (from + length > chronicle.last())
            from = chronicle.first();
    }
    state.counters["faults"] = static_cast<double>(chronicle.faults().size());
}
BENCHMARK(paintMillion)->DenseRange(0, 6)->Unit(benchmark::kMillisecond);

void addFault(benchmark::State &state)
{
    std::mt19937 random(3);
    Chronicle chronicle;
    qint64 time = kStart;
    for (auto _ : state)
        chronicle.addFault(time += 1000, drawnFault(random));
}
BENCHMARK(addFault)->Iterations(3'000'000);

void saveMillionAsLog(benchmark::State &state)
{
    const QTemporaryDir folder;
    for (auto _ : state)
        saveLog(folder.filePath(QStringLiteral("log.csv")), million());
}
BENCHMARK(saveMillionAsLog)->Unit(benchmark::kSecond)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    return runWindowBenchmarks(argc, argv);
}
