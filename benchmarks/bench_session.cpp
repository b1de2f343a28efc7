// SPDX-License-Identifier: MIT
// Recordings and the tool: how fast they are written, read and decoded, what the tool takes to start, to ask a board for
// everything and to compare 1000 answers, and how exactly a recording is served.
#include "protocol/report.h"
#include "session/flightrecorder.h"
#include "session/framestream.h"
#include "session/pcapng.h"
#include "support/boardprocess.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <vector>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kLineBytes = 64 * 1024 * 1024;

double seconds(Clock::duration time)
{
    return std::chrono::duration<double>(time).count();
}

const QTemporaryDir &folder()
{
    static const QTemporaryDir made;
    return made;
}

// As a board at work sends them: module, type, size of the payload.
struct Kind {
    int module, type, size;
};
constexpr Kind kinds[] = {{2, 1, 4}, {12, 2, 5}, {4, 1, 10}, {11, 1, 9},  {14, 1, 2}, {3, 2, 17},
                          {2, 4, 4}, {16, 1, 4}, {8, 1, 12}, {15, 4, 40}, {0, 0, 60}, {12, 1, 1}};

// Frames of all those kinds, 64 MiB of them.
const QByteArray &lineData()
{
    static const QByteArray data = [] {
        QByteArray bytes;
        bytes.reserve(kLineBytes + 100);
        for (quint32 i = 0; bytes.size() < kLineBytes; ++i) {
            const Kind &kind = kinds[i % std::size(kinds)];
            QByteArray payload(kind.size, static_cast<char>(1 + i % 100));
            if (kind.module == 8 || kind.module == 3)
                payload[0] = 1; // one record
            bytes += protocol::encodeFrame(static_cast<protocol::ModuleId>(kind.module), static_cast<quint8>(kind.type),
                                           payload);
        }
        return bytes;
    }();
    return data;
}

// A recording of the line data in arrivals of `piece` bytes.
QString recordingOf(int piece)
{
    QString path = folder().filePath(QStringLiteral("line-%1.pcapng").arg(piece));
    QFile file(path);
    if (file.exists() || !file.open(QIODevice::WriteOnly))
        return path;
    file.write(session::encodeStart(QStringLiteral("benchmark"), {QStringLiteral("p")}));
    QByteArray bytes;
    qint64 time = 1'700'000'000'000'000'000;
    for (int at = 0; at < lineData().size(); at += piece) {
        bytes.resize(0);
        session::appendPacket(bytes,
                              {time += piece * 5106LL, session::Direction::Received, lineData().mid(at, piece), {}, 0});
        file.write(bytes);
    }
    return path;
}

enum Depth { Packets, Frames, Reports };

void reading(benchmark::State &state, Depth depth)
{
    const QString path = recordingOf(static_cast<int>(state.range(0)));
    quint64 frames = 0;
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        session::Reader reader(file);
        session::FrameStream stream;
        frames = 0;
        for (session::PacketView packet; reader.next(packet);) {
            if (depth == Packets)
                continue;
            const auto bytes = QByteArray::fromRawData(packet.bytes.data(), static_cast<int>(packet.bytes.size()));
            for (const frameData &frame : stream.take(bytes)) {
                ++frames;
                if (depth == Reports)
                    benchmark::DoNotOptimize(protocol::decode(frame.moduleId, frame.dataType, frame.data));
            }
        }
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * lineData().size());
    state.counters["frames"] = static_cast<double>(frames);
}

void recording(benchmark::State &state)
{
    session::FlightRecorder recorder;
    const session::Packet packet{
        1, session::Direction::Received, lineData().left(static_cast<int>(state.range(0))), {}, 0};
    for (auto _ : state)
        recorder.add(packet);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * packet.bytes.size());
}

QString tool()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/safety-workbench-cli");
}

// Runs a program to its end, reading what it says. Returns the time to its first output, or to its end.
double timed(const QString &program, const QStringList &arguments, bool toFirst, QByteArray *output = nullptr)
{
    QProcess process;
    const auto start = Clock::now();
    process.start(program, arguments);
    process.waitForStarted(-1);
    process.waitForReadyRead(-1);
    const auto first = Clock::now();
    QByteArray all;
    do
        all += process.readAllStandardOutput();
    while (process.waitForReadyRead(-1) || process.state() == QProcess::Running);
    process.waitForFinished(-1);
    all += process.readAllStandardOutput();
    if (output)
        *output = all;
    return seconds((toFirst ? first : Clock::now()) - start);
}

void toolStart(benchmark::State &state)
{
    for (auto _ : state)
        state.SetIterationTime(timed(tool(), {QStringLiteral("--version")}, true));
}

void toolStatus(benchmark::State &state)
{
    BoardProcess board({});
    QByteArray output;
    for (auto _ : state)
        state.SetIterationTime(
            timed(tool(), {QStringLiteral("status"), QStringLiteral("--port"), board.tty(), QStringLiteral("--json")},
                  false, &output));
    state.counters["reports"] = static_cast<double>(output.count('\n'));
}

// The whole tool: reports to text, with nobody who looks.
void toolDecode(benchmark::State &state, bool json)
{
    const QString path = recordingOf(512);
    for (auto _ : state) {
        QProcess process;
        process.setStandardOutputFile(QStringLiteral("/dev/null"));
        const auto start = Clock::now();
        process.start(tool(),
                      QStringList{QStringLiteral("decode"), path}
                          + (json ? QStringList{QStringLiteral("--json")} : QStringList()));
        process.waitForFinished(-1);
        state.SetIterationTime(seconds(Clock::now() - start));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * lineData().size());
}

// 1 MiB of the same line data through tshark with the dissector: as an ordinary user, since root's tshark loads none.
void dissector(benchmark::State &state)
{
    const QString script = QStringLiteral(SOURCE_FOLDER "/packaging/wireshark/safety-workbench.lua");
    if (!QFile::exists(script) || QStandardPaths::findExecutable(QStringLiteral("tshark")).isEmpty()) {
        state.SkipWithError("no tshark or no dissector");
        return;
    }
    constexpr int part = 1024 * 1024;
    QTemporaryDir own;
    QFile::setPermissions(own.path(), QFile::Permissions(0x7777));
    const QString path = own.filePath(QStringLiteral("part.pcapng"));
    QByteArray bytes = session::encodeStart(QStringLiteral("benchmark"), {QStringLiteral("p")});
    for (int at = 0; at < part; at += 512)
        session::appendPacket(bytes, {at, session::Direction::Received, lineData().mid(at, 512), {}, 0});
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
    file.close();
    file.setPermissions(QFile::Permissions(0x7777));
    QFile::copy(script, own.filePath(QStringLiteral("dissector.lua")));
    QStringList command{QStringLiteral("tshark"),
                        QStringLiteral("-X"),
                        QStringLiteral("lua_script:") + own.filePath(QStringLiteral("dissector.lua")),
                        QStringLiteral("-r"),
                        path,
                        QStringLiteral("-V")};
    if (geteuid() == 0)
        command =
            QStringList{QStringLiteral("runuser"), QStringLiteral("-u"), QStringLiteral("nobody"), QStringLiteral("--")}
            + command;
    QByteArray output;
    for (auto _ : state)
        state.SetIterationTime(timed(command.first(), command.mid(1), false, &output));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * part);
    state.counters["dissected"] = static_cast<double>(output.count("Fault ID") > 0 || output.contains("afety"));
}

// 1000 commands recorded from a virtual board, checked against another one with another seed.
void toolCheck(benchmark::State &state)
{
    constexpr int count = 1000;
    const char *const commands[] = {"get 1",      "get 2",      "get 3",     "get 4",     "get 5",  "get 6",
                                    "get 7",      "get 8",      "get 9",     "get 10",    "get 11", "get 0",
                                    "cmu 16",     "inject 7 1", "xbic 4",    "xbic 5",    "memu 1", "pmc 6",
                                    "inject 5 2", "cmu 17",     "crc 1 0 0", "cse 2 1 00"};
    QByteArray script = session::encodeStart(QStringLiteral("benchmark"), {QStringLiteral("p")});
    for (int i = 0; i < count; ++i)
        session::appendPacket(script,
                              {i * 20'000'000LL,
                               session::Direction::Sent,
                               QByteArray(commands[i % std::size(commands)]) + "\r\n",
                               {},
                               0});
    const QString questions = folder().filePath(QStringLiteral("questions"));
    QFile file(questions);
    file.open(QIODevice::WriteOnly);
    file.write(script);
    file.close();
    const QString answers = folder().filePath(QStringLiteral("answers"));
    const QStringList check{QStringLiteral("check"), QStringLiteral("--virtual"), QStringLiteral("--json")};
    timed(tool(), check + QStringList{questions, QStringLiteral("--record"), answers}, false);
    QByteArray output;
    for (auto _ : state)
        state.SetIterationTime(
            timed(tool(), check + QStringList{answers, QStringLiteral("--seed"), QStringLiteral("2")}, false, &output));
    const auto number = [&output](const char *name) {
        const QRegularExpression pattern(QStringLiteral("\"%1\":(\\d+)\\D[^\\n]*\\n$").arg(QLatin1String(name)));
        return pattern.match(QString::fromUtf8(output)).captured(1).toDouble();
    };
    state.counters["commands"] = number("commands");
    state.counters["reports"] = number("reports");
    state.counters["differences"] = number("differences");
}

int openRaw(const QString &tty)
{
    const int file = open(tty.toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    termios settings = {};
    tcgetattr(file, &settings);
    cfmakeraw(&settings);
    tcsetattr(file, TCSANOW, &settings);
    return file;
}

constexpr std::size_t kServed = 2000;
constexpr qint64 kApart = 5'000'000; // ns

// One arrival each 5 ms for ten seconds, numbered.
QString servedTape()
{
    QByteArray tape = session::encodeStart(QStringLiteral("benchmark"), {QStringLiteral("p")});
    for (std::size_t i = 0; i < kServed; ++i)
        session::appendPacket(tape,
                              {static_cast<qint64>(i) * kApart,
                               session::Direction::Received,
                               QByteArray(1, static_cast<char>(i)),
                               {},
                               0});
    QFile file(folder().filePath(QStringLiteral("tape")));
    file.open(QIODevice::WriteOnly);
    file.write(tape);
    return file.fileName();
}

// When each byte of the served tape is read, in seconds.
std::vector<double> arrivalsOf(const QString &tape)
{
    QProcess server;
    server.start(tool(), {QStringLiteral("serve"), tape});
    while (!server.canReadLine())
        server.waitForReadyRead(-1);
    const int line = openRaw(QString::fromUtf8(server.readLine()).trimmed().mid(5));
    std::vector<double> at;
    char bytes[64];
    while (at.size() < kServed) {
        const ssize_t got = read(line, bytes, sizeof bytes);
        const double now = seconds(Clock::now().time_since_epoch());
        at.insert(at.end(), static_cast<std::size_t>(std::max<ssize_t>(got, 0)), now);
        if (got <= 0)
            break;
    }
    close(line);
    server.waitForFinished(-1);
    return at;
}

// How far each is from its moment, in milliseconds. The moment of the first is unknown by its own lateness: the earliest
// of all tells the schedule.
std::vector<double> lateness(std::vector<double> at)
{
    double start = 1e18;
    for (std::size_t i = 0; i < at.size(); ++i) {
        at[i] = (at[i] - static_cast<double>(i) * kApart / 1e9) * 1e3;
        start = std::min(start, at[i]);
    }
    for (double &time : at)
        time -= start;
    return at;
}

double medianOf(std::vector<double>::const_iterator from, std::vector<double>::const_iterator to)
{
    std::vector<double> part(from, to);
    const auto middle = part.begin() + static_cast<std::ptrdiff_t>(part.size() / 2);
    std::nth_element(part.begin(), middle, part.end());
    return *middle;
}

void serving(benchmark::State &state)
{
    const QString tape = servedTape();
    std::vector<double> off;
    for (auto _ : state) {
        off = lateness(arrivalsOf(tape));
        state.SetIterationTime(medianOf(off.begin(), off.end()) / 1e3);
    }
    const auto tenth = static_cast<std::ptrdiff_t>(off.size() / 10);
    state.counters["ms_drift"] = medianOf(off.end() - tenth, off.end()) - medianOf(off.begin(), off.begin() + tenth);
    std::sort(off.begin(), off.end());
    state.counters["ms_p99"] = off[off.size() * 99 / 100];
    state.counters["ms_max"] = off.back();
}

} // namespace

BENCHMARK_CAPTURE(reading, packets, Packets)->Arg(64)->Arg(512)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reading, frames, Frames)->Arg(64)->Arg(512)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reading, reports, Reports)->Arg(64)->Arg(512)->Unit(benchmark::kMillisecond);
BENCHMARK(recording)->Arg(64)->Arg(512);
BENCHMARK(toolStart)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(toolStatus)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(toolDecode, text, false)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(toolDecode, json, true)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(dissector)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(toolCheck)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(serving)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
