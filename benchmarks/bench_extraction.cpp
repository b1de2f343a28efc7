// SPDX-License-Identifier: MIT
// Frame extraction in bytes a second, beside memcpy of the same bytes and beside the literal step-by-step model.
#include "protocol/frame.h"
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

BENCHMARK_MAIN();
