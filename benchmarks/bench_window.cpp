// SPDX-License-Identifier: MIT
// Decoding and painting: frames through a real pseudo-terminal into the shown window, each pair different so that
// everything repaints. "line_rate" is the multiple of the real line's own rate for that frame (1958400 bit/s, ten bits a
// byte).
#include "benchmarks/windowbenchmarks.h"
#include "console/consoleform.h"
#include "link/serialline.h"
#include "protocol/fccu.h"
#include "protocol/payload.h"
#include "support/fixtures.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTabWidget>
#include <QTest>
#include <QTextDocument>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

namespace {

constexpr double kBytesPerSecond = 195840;
constexpr int kFaults = protocol::fccu::kSourceCount;

struct Report {
    const char *name;
    int module;
    int type;
    const char *first; // payload, hexadecimal
    const char *second;
    int page; // of the safety tab; beyond it the security tab's
};

// All reports but two, which take their time by design: a restart notice (a refresh with its animations) and an engine
// error (a blink and a box).
constexpr Report reports[] = {
    {"text", 0, 0, "6162", "6364", 0},
    {"mode", 1, 1, "04", "05", 0},
    {"version", 1, 4, "40200000 07E4 0C 1F", "40400000 07E5 0B 1E", 0},
    {"clock text", 2, 0, "4C6F7373206F66206C6F636B", "436C6F636B20697320676F6F64", 0},
    {"clock monitor", 2, 1, "01 50 5A 46", "00 50 5A 46", 0},
    {"clocks", 2, 4, "FA F42400", "00 F42410", 0},
    {"crossbars", 3, 1, "1F", "00", 1},
    {"region", 4, 1, "7F A8 0000 4000 FFFF 4000", "70 00 0001 5000 FFFE 5000", 2},
    {"register", 5, 1, "01 00010000 78563412 EFBEADDE", "00 00000000 00000000 00000000", 11},
    {"checksum", 6, 3, "00000009 313233343536373839 0000004B 3FC00000", "00000009 313233343536373839 0000004C 3FD00000",
     4},
    {"memory record", 7, 2, "01 04 20000100", "01 03 20000104", 3},
    {"interrupts", 8, 1, "01 0000 01 012D 004E20 0003E8", "01 0000 02 012E 000000 0003E9", 5},
    {"detectors", 10, 1, "01 DF", "01 00", 7},
    {"detector self-test", 10, 4, "00 01", "00 00", 7},
    {"voltage record", 10, 2, "02 01 02", "03 00 01 02", 7},
    {"watchdog", 11, 1, "58 00007D00 0000FA00", "40 0000FA00 00007D00", 8},
    {"fault state", 12, 1, "02", "03", 0},
    {"reset reasons", 13, 1, "00 004000", "00 000200", 0},
    {"escalation", 13, 4, "0F 00", "00 0F", 0},
    {"power chip", 14, 1, "00 00", "00 FF", 6},
    {"engine busy", 15, 1, "00", "", 10},
    {"engine result", 15, 4, "00 41C80000 0002 ABCD", "00 42C80000 0002 CDEF", 10},
    {"self-tests", 9, 1, "00FFFF 000000000000000000000000 0FFFFFFFFFFFFFFFFFFFFFFF",
     "000F0F 0FFFFFFFFFFFFFFFFFFFFFFF 000000000000000000000001", 0},
    {"radar frames", 16, 1, "00000100", "00000101", 9},
};

// Fault records of 255 entries: the entry that is repeated behind the count.
constexpr Report records[] = {
    {"255 clock faults", 2, 2, "31", "82", 0},
    {"255 crossbar faults", 3, 2, "00 00 03 20 F0E700FC", "01 02 01 10 00E700FC", 1},
    {"255 region faults", 4, 2, "00 00000040", "81 00100040", 2},
    {"255 memory faults", 7, 2, "04 20000100", "03 20000104", 3},
    {"255 interrupt faults", 8, 2, "00 00 01 012D 004E20 0003E8", "01 01 02 012E 000000 0003E9", 5},
    {"255 voltage faults", 10, 2, "01", "02", 7},
    {"255 radar faults", 16, 2, "00000001", "00000002", 9},
};

// A result over the largest block that a frame carries.
QByteArray largestChecksum()
{
    constexpr int size = protocol::kMaxPayloadSize - 12;
    return protocol::encodeFrame(
        protocol::ModuleId::Crc, 3,
        protocol::PayloadWriter().u32be(size).bytes(QByteArray(size, 'x')).u32be(1).f32be(1).take());
}

QByteArray encoded(const Report &report, const char *payload)
{
    return protocol::encodeFrame(static_cast<protocol::ModuleId>(report.module), static_cast<quint8>(report.type),
                                 QByteArray::fromHex(payload));
}

WindowFixture &bench()
{
    static auto *const window = new WindowFixture; // for the life of the program
    return *window;
}

void turnTo(int page)
{
    bench().find<QTabWidget>("tabWidget_function")->setCurrentIndex(page < 10 ? 0 : 1);
    bench().find<QTabWidget>(page < 10 ? "tabWidget_safety" : "tabWidget_security")->setCurrentIndex(page % 10);
    QTest::qWait(20);
}

// Sends the bytes from a thread of its own and processes events until the frame behind them has been decoded. A read that
// ends inside that frame's sync pair loses it: then it is sent again.
double secondsFor(const QByteArray &bytes)
{
    static const QByteArray last = QByteArray::fromHex("A5C3 0000 01 01 0001 06 0000 D4B2");
    auto *mode = bench().find<QLineEdit>("lineEdit_sysworkmode");
    mode->clear();
    QElapsedTimer clock;
    clock.start();
    std::thread writer([&bytes] { bench().line().write(bytes + last); });
    qint64 quietSince = 0;
    while (mode->text() != QLatin1String("RUN2")) {
        QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 100);
        if (gSerialPort->bytesAvailable() > 0 || clock.elapsed() - quietSince < 2000)
            continue;
        quietSince = clock.elapsed();
        bench().line().write(last);
    }
    const double seconds = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
    writer.join();
    return seconds;
}

// One round at a time, each when the line would have carried the ones before.
void writeAtLineRate(const QByteArray &round, int rounds)
{
    const auto start = std::chrono::steady_clock::now();
    const std::chrono::duration<double> roundTime(static_cast<double>(round.size()) / kBytesPerSecond);
    for (int i = 0; i < rounds; ++i) {
        std::this_thread::sleep_until(start + std::chrono::duration_cast<std::chrono::nanoseconds>(i * roundTime));
        bench().line().write(round);
    }
}

QByteArray encodedRecord(const Report &report, const char *entry)
{
    return protocol::encodeFrame(static_cast<protocol::ModuleId>(report.module), static_cast<quint8>(report.type),
                                 QByteArray(1, '\xFF') + QByteArray::fromHex(entry).repeated(255));
}

// `round` holds that many frames and is sent so many times.
void decoding(benchmark::State &state, int page, const QByteArray &round, int framesPerRound, int rounds)
{
    turnTo(page);
    double seconds = 0;
    for (auto _ : state) {
        const double taken = secondsFor(round.repeated(rounds));
        seconds += taken;
        state.SetIterationTime(taken);
    }
    const double sent = rounds * static_cast<double>(state.iterations());
    state.counters["us_a_frame"] = seconds / (sent * framesPerRound) * 1e6;
    state.counters["line_rate"] = sent * round.size() / kBytesPerSecond / seconds;
}

// Every fault of the table, none behind its like.
QByteArray differentFaults()
{
    QByteArray frames;
    for (int i = 0; i < kFaults; ++i) {
        frames += protocol::encodeFrame(
            protocol::ModuleId::Fccu, 2,
            protocol::PayloadWriter().u8(static_cast<unsigned>(i * 37 % kFaults)).f32be(static_cast<float>(i)).take());
    }
    return frames;
}

// The time from the first byte to the block in the log.
void largestBlock(benchmark::State &state)
{
    turnTo(4);
    const QByteArray bytes = largestChecksum();
    for (auto _ : state)
        state.SetIterationTime(secondsFor(bytes));
}

double residentMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    file.open(QIODevice::ReadOnly);
    return file.readAll().split(' ').value(1).toDouble() * 4096 / 1e6;
}

// Every report of the table.
QByteArray allReports()
{
    QByteArray round = differentFaults().left(2 * 17);
    for (const Report &report : reports)
        round += encoded(report, report.first) + encoded(report, report.second);
    return round;
}

// The line full for ten seconds with `round` again and again, a page in front: how long the event loop is away at a time,
// and how many of the text messages are missing at the end, of which a round has two.
void fullLine(benchmark::State &state, int page, const QByteArray &round)
{
    turnTo(page);
    auto *messages = bench().find<QTextEdit>("textBrowser_temp")->document();
    std::vector<double> gaps;
    QElapsedTimer sinceTurn;
    QTimer turn;
    turn.setTimerType(Qt::PreciseTimer);
    QObject::connect(&turn, &QTimer::timeout, [&] {
        gaps.push_back(static_cast<double>(sinceTurn.nsecsElapsed()) * 1e-6);
        sinceTurn.start();
    });
    for (auto _ : state) {
        messages->clear(); // only the latest 10,000 are kept
        const int rounds = static_cast<int>(10 * kBytesPerSecond / round.size());
        std::thread writer([&round, rounds] { writeAtLineRate(round, rounds); });
        sinceTurn.start();
        turn.start(1);
        QElapsedTimer clock;
        clock.start();
        while (messages->blockCount() < 2 * rounds && clock.elapsed() < 12000)
            QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 100);
        turn.stop();
        state.SetIterationTime(static_cast<double>(clock.elapsed()) * 1e-3);
        writer.join();
        std::sort(gaps.begin(), gaps.end());
        state.counters["median_ms"] = gaps[gaps.size() / 2];
        state.counters["p99_ms"] = gaps[gaps.size() * 99 / 100];
        state.counters["longest_ms"] = gaps.back();
        state.counters["lost"] = 2 * rounds - messages->blockCount();
    }
}

// Cost of a fault when there are few and when there are many, and the memory that one takes.
void growth(benchmark::State &state)
{
    constexpr int block = 1000;
    const int blocks = static_cast<int>(state.range(0)) / block;
    turnTo(0);
    const QByteArray faults = encoded({"", 12, 2, "", "", 0}, "1C 3F800000").repeated(block);
    for (auto _ : state) {
        const double before = residentMegabytes();
        double first = 0, last = 0, all = 0, longest = 0;
        for (int i = 0; i < blocks; ++i) {
            last = secondsFor(faults);
            all += last;
            longest = std::max(longest, last);
            if (i == 0)
                first = last;
        }
        state.SetIterationTime(all);
        state.counters["first_us"] = first / block * 1e6;
        state.counters["last_us"] = last / block * 1e6;
        state.counters["longest_thousand_ms"] = longest * 1e3; // the log's older half is folded away in it
        state.counters["bytes_a_fault"] = (residentMegabytes() - before) * 1e6 / (blocks * block);
    }
}

// A line on the console with an empty scroll-back and behind 200,000 lines.
void consoleLines(benchmark::State &state)
{
    bench().window().Serialport_close(); // the console opens the line for itself and hands it back
    consoleForm console;
    console.show();
    const QList<QString> line = {QStringLiteral("clock monitor 3: 160 MHz, limits 150 to 170 MHz\r\n")};
    QList<QString> thousand;
    for (int i = 0; i < 1000; ++i)
        thousand += line;
    const auto microsecondsFor = [&](int lines) {
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < lines; ++i) {
            console.consolePrint(line, 1);
            QApplication::processEvents();
        }
        return static_cast<double>(clock.nsecsElapsed()) * 1e-3 / lines;
    };
    for (auto _ : state) {
        state.counters["first_us"] = microsecondsFor(500);
        for (int i = 0; i < 198; ++i)
            console.consolePrint(thousand, thousand.size());
        state.counters["last_us"] = microsecondsFor(500);
        state.SetIterationTime(1);
    }
}

void registerReports()
{
    for (const Report &report : reports) {
        const QByteArray pair = encoded(report, report.first) + encoded(report, report.second);
        benchmark::RegisterBenchmark(report.name, decoding, report.page, pair, 2, 1500)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(3);
    }
    benchmark::RegisterBenchmark("fault", decoding, 0, differentFaults(), kFaults, 3000 / kFaults)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(3);
    for (const Report &report : records) {
        const QByteArray pair = encodedRecord(report, report.first) + encodedRecord(report, report.second);
        benchmark::RegisterBenchmark(report.name, decoding, report.page, pair, 2, 100)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(3);
    }
}

void registerFloods()
{
    benchmark::RegisterBenchmark("largest checksum", largestBlock)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(5);
    benchmark::RegisterBenchmark("full line", fullLine, 0, allReports())
        ->UseManualTime()
        ->Unit(benchmark::kSecond)
        ->Iterations(1);
    benchmark::RegisterBenchmark("full line with blocks", fullLine, 4, allReports() + largestChecksum())
        ->UseManualTime()
        ->Unit(benchmark::kSecond)
        ->Iterations(1);
    benchmark::RegisterBenchmark("console lines", consoleLines)->UseManualTime()->Iterations(1);
    benchmark::RegisterBenchmark("fault growth", growth)
        ->Arg(1000000)
        ->UseManualTime()
        ->Unit(benchmark::kSecond)
        ->Iterations(1);
}

} // namespace

int main(int argc, char **argv)
{
    registerReports();
    registerFloods();
    return runWindowBenchmarks(argc, argv);
}
