// SPDX-License-Identifier: MIT
// Frame extraction in bytes per second: whole streams beside memcpy of the same bytes and beside the literal
// step-by-step model, then streams cut into arrivals as the window takes them.
#include "link/receivestate.h"
#include "support/literalextraction.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

namespace {

constexpr int kStreamSize = 65536;

// Good frames with payloads of this size; 0 stands for the hostile stream of starts that lie about their length.
QByteArray streamOf(int payload)
{
    QByteArray bytes;
    while (bytes.size() < kStreamSize) {
        bytes += payload > 0 ? protocol::encodeFrame(protocol::ModuleId::Cmu, 1, QByteArray(payload, 'x'))
                             : QByteArray::fromHex("A5C3FFFFFFFFFFFF");
    }
    return bytes;
}

using Extract = bool (*)(const QByteArray &, QList<frameData> &, QByteArray &, quint32 &);

void extraction(benchmark::State &state, Extract extract)
{
    const QByteArray bytes = streamOf(static_cast<int>(state.range(0)));
    QList<frameData> frames;
    QByteArray remainder;
    quint32 partial = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(extract(bytes, frames, remainder, partial));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * bytes.size());
}

// A false start that announces 65535 bytes, with good frames behind it that it would swallow.
QByteArray falseStart()
{
    return QByteArray::fromHex("A5C300000201FFFF") + QByteArray(8, '\x01');
}

// Nothing good ends inside a false start: it is carried until its announced end.
QByteArray longCarry(int)
{
    return falseStart() + QByteArray(kStreamSize - 16, 'x');
}

QByteArray denseStarts(int)
{
    return falseStart() + QByteArray::fromHex("A5C3").repeated(kStreamSize / 2 - 8);
}

// Starts whose announced ends are all different and fall into the carried bytes.
QByteArray staggeredStarts(int)
{
    QByteArray bytes = falseStart();
    while (bytes.size() < kStreamSize)
        bytes += QByteArray::fromHex("A5C300006000").append(static_cast<char>(bytes.size())).append('\x7F');
    return bytes;
}

void arrivals(benchmark::State &state, QByteArray (*makeStream)(int))
{
    const QByteArray bytes = makeStream(static_cast<int>(state.range(1)));
    const int size = static_cast<int>(state.range(0));
    ReceiveState receiver;
    for (auto _ : state) {
        for (int at = 0; at < bytes.size(); at += size) {
            receiver.take(QByteArray::fromRawData(bytes.constData() + at, std::min(size, bytes.size() - at)));
            receiver.rxFrames.clear();
        }
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * bytes.size());
}

void copying(benchmark::State &state)
{
    const QByteArray bytes = streamOf(static_cast<int>(state.range(0)));
    std::vector<char> target(static_cast<std::size_t>(bytes.size()));
    for (auto _ : state) {
        std::memcpy(target.data(), bytes.constData(), target.size());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * bytes.size());
}

} // namespace

BENCHMARK(copying)->Arg(4096);
BENCHMARK_CAPTURE(extraction, frames, protocol::extractFrames)->Arg(1)->Arg(16)->Arg(256)->Arg(4096)->Arg(0);
BENCHMARK_CAPTURE(extraction, literal, literal::extractFrames)->Arg(1)->Arg(16)->Arg(256)->Arg(4096);

// Arguments: bytes per arrival, payload.
BENCHMARK_CAPTURE(arrivals, frames, streamOf)->ArgsProduct({{1, 7, 64, 4096}, {1}});
BENCHMARK_CAPTURE(arrivals, long carry, longCarry)->ArgsProduct({{1, 7, 64, 4096}, {0}});
BENCHMARK_CAPTURE(arrivals, dense starts, denseStarts)->ArgsProduct({{1, 7, 64, 4096}, {0}});
BENCHMARK_CAPTURE(arrivals, staggered starts, staggeredStarts)->ArgsProduct({{1, 7, 64, 4096}, {0}});

BENCHMARK_MAIN();
