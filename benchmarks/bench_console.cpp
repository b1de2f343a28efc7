// SPDX-License-Identifier: MIT
// The console's search for text frames in reads of one size: good frames, and streams that look like frames all along.
#include "console/textframes.h"
#include "protocol/frame.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int kStreamSize = 128 * 1024;

// `first` once, then `repeated` until the stream is full.
void reads(benchmark::State &state, const QByteArray &first, const QByteArray &repeated)
{
    const QByteArray stream = first + repeated.repeated(kStreamSize / repeated.size());
    const auto step = static_cast<int>(state.range(0));
    for (auto _ : state) {
        TextFrames frames;
        for (int at = 0; at < stream.size(); at += step)
            benchmark::DoNotOptimize(frames.take(stream.mid(at, step)));
    }
    state.SetBytesProcessed(state.iterations() * stream.size());
}

void add(const char *name, const QByteArray &first, const QByteArray &repeated)
{
    benchmark::RegisterBenchmark(name, reads, first, repeated)->Arg(1)->Arg(62)->Arg(4096);
}

} // namespace

int main(int argc, char **argv)
{
    const QByteArray announced = QByteArray::fromHex("a5c300000000ffff");
    add("console/text of 16", {}, protocol::encodeFrame(protocol::ModuleId::Text, 0, QByteArray(16, 'x')));
    add("console/text of 1", {}, protocol::encodeFrame(protocol::ModuleId::Text, 0, "x"));
    add("console/65535 announced", announced, QByteArray(64, 'x'));
    add("console/dense starts", {}, announced);
    add("console/sync pairs", {}, announced.left(2));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
