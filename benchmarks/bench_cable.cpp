// SPDX-License-Identifier: MIT
// What arrives over a cable: numbered text messages among reports of all modules, cut into packets, then damaged. The
// counters say how many frames and how many messages came out as they were sent; on a good cable, all of them.
#include "link/receivestate.h"
#include "simulator/badcable.h"

#include <benchmark/benchmark.h>

#include <QSet>

#include <random>

namespace {

constexpr int kMessages = 4000;

// The number twice, so that a damaged one does not pass for another.
QByteArray textOf(int message)
{
    return QByteArray::number(message) + '=' + QByteArray::number(message);
}

struct Stream {
    QByteArray bytes;
    int frames = 0;
    int messages = 0;
};

// A message, then three reports with random payloads, and so on.
Stream streamOf(int messages)
{
    std::mt19937 random(2026);
    Stream stream;
    for (; stream.messages < messages; ++stream.messages) {
        stream.bytes += protocol::encodeFrame(protocol::ModuleId::Text, 1, textOf(stream.messages));
        for (int k = 0; k < 3; ++k) {
            QByteArray payload;
            for (auto size = random() % 40; size > 0; --size)
                payload.append(static_cast<char>(random()));
            stream.bytes += protocol::encodeFrame(static_cast<protocol::ModuleId>(1 + random() % 16), 1, payload);
        }
        stream.frames += 4;
    }
    stream.bytes += protocol::encodeFrame(protocol::ModuleId::Text, 1, "end");
    ++stream.frames;
    return stream;
}

struct Arrived {
    int frames = 0;
    QSet<int> messages;

    void take(ReceiveState &receiver)
    {
        for (; !receiver.rxFrames.isEmpty(); ++frames) {
            const frameData frame = receiver.rxFrames.takeFirst();
            const int number = frame.data.split('=').constFirst().toInt();
            if (frame.moduleId == 0 && frame.data == textOf(number))
                messages.insert(number);
        }
    }
};

void report(benchmark::State &state, const Stream &stream, const Arrived &arrived)
{
    state.counters["frames"] = stream.frames;
    state.counters["not shown"] = stream.frames - arrived.frames;
    state.counters["messages"] = stream.messages;
    state.counters["lost"] = stream.messages - arrived.messages.size();
}

void damaged(benchmark::State &state, const simulator::CableFaults &faults)
{
    const Stream stream = streamOf(kMessages);
    Arrived arrived;
    for (auto _ : state) {
        arrived = {};
        ReceiveState receiver;
        simulator::BadCable cable;
        cable.setFaults(faults);
        QObject::connect(&cable, &simulator::BadCable::reachedProgram, [&](const QByteArray &bytes) {
            receiver.take(bytes);
            arrived.take(receiver);
        });
        for (int at = 0; at < stream.bytes.size(); at += 62)
            cable.sendToProgram(stream.bytes.mid(at, 62));
    }
    report(state, stream, arrived);
}

// Every read size a chance of its own, 1 to 4096 bytes.
void undamaged(benchmark::State &state)
{
    const Stream stream = streamOf(static_cast<int>(state.range(0)) / 4);
    Arrived arrived;
    for (auto _ : state) {
        arrived = {};
        ReceiveState receiver;
        std::mt19937 random(1);
        for (int at = 0, size = 0; at < stream.bytes.size(); at += size) {
            size = 1 + static_cast<int>(random() % (1U << random() % 13));
            receiver.take(stream.bytes.mid(at, size));
            arrived.take(receiver);
        }
    }
    report(state, stream, arrived);
}

void cable(const char *name, const simulator::CableFaults &faults)
{
    benchmark::RegisterBenchmark(name, damaged, faults)->Unit(benchmark::kMillisecond)->Iterations(1);
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    benchmark::RegisterBenchmark("undamaged", undamaged)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);
    cable("good cable", {});
    cable("noise 0.00001", {0.00001});
    cable("noise 0.0001", {0.0001});
    cable("noise 0.001", {0.001});
    cable("noise 0.005", {0.005});
    cable("drop 0.0001", {0, 0.0001});
    cable("drop 0.001", {0, 0.001});
    cable("drop 0.01", {0, 0.01});
    cable("duplicate 0.0001", {0, 0, 0.0001});
    cable("duplicate 0.001", {0, 0, 0.001});
    cable("duplicate 0.01", {0, 0, 0.01});
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
