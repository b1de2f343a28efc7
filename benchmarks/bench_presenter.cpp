// SPDX-License-Identifier: MIT
// Presenter mode: from a fault frame's last byte on the line to the painted banner, at the line's full rate.
#include "benchmarks/windowbenchmarks.h"
#include "app/reportfeed.h"
#include "presenter/mode.h"
#include "protocol/frame.h"
#include "protocol/payload.h"
#include "support/fixtures.h"

#include <QApplication>
#include <QTest>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kBytesPerSecond = 195840;
constexpr int kSeconds = 10;
constexpr int kEvery = 5; // reports from one fault to the next

// Faults are told apart by their detection time.
QByteArray faultNumber(int number)
{
    constexpr std::array ids = {28, 36, 47, 104, 17, 78, 2, 13};
    const quint8 id = static_cast<quint8>(ids[static_cast<std::size_t>(number) % ids.size()]);
    return protocol::encodeFrame(protocol::ModuleId::Fccu, 2,
                                 protocol::PayloadWriter().u8(id).f32be(static_cast<float>(number)).take());
}

QByteArray reportNumber(int number)
{
    constexpr std::array reports = {"A5C300000101000104"
                                    "0000D4B2",
                                    "A5C30000020100040150"
                                    "5A460000D4B2",
                                    "A5C30000030100011F0000D4B2", "A5C300000C010001020000D4B2"};
    return QByteArray::fromHex(reports[static_cast<std::size_t>(number) % reports.size()]);
}

// Sees when the banner has been painted, and which fault its story told by then.
class Watcher : public QObject
{
public:
    Watcher(presenter::Mode &mode, const std::vector<std::atomic<Clock::rep>> &sent) : m_mode(mode), m_sent(sent)
    {
        mode.banner().canvas().installEventFilter(this);
    }

    std::vector<double> latencies; // ms
    int next = 1;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Paint || m_inside)
            return false;
        const int told = heard;
        m_inside = true;
        QCoreApplication::sendEvent(watched, event);
        m_inside = false;
        const auto now = Clock::now().time_since_epoch();
        for (; next <= told; ++next) {
            const Clock::duration then(m_sent[static_cast<std::size_t>(next)].load());
            latencies.push_back(std::chrono::duration<double, std::milli>(now - then).count());
        }
        return true;
    }

public:
    int heard = 0;

private:
    presenter::Mode &m_mode;
    const std::vector<std::atomic<Clock::rep>> &m_sent;
    bool m_inside = false;
};

void bannerAtFullLine(benchmark::State &state)
{
    WindowFixture bench;
    auto &mode = *bench.window().findChild<presenter::Mode *>(QStringLiteral("presenterMode"));
    mode.begin();
    QTest::qWait(500);
    const QByteArray round = reportNumber(0) + reportNumber(1) + reportNumber(2) + reportNumber(3) + faultNumber(1);
    const int rounds = static_cast<int>(kSeconds * kBytesPerSecond / round.size());
    std::vector<std::atomic<Clock::rep>> sent(static_cast<std::size_t>(rounds) + 1);
    Watcher watcher(mode, sent);
    QObject::connect(&reportFeed(), &ReportFeed::reported, &watcher, [&watcher](const protocol::Report &report) {
        if (const auto *fault = std::get_if<protocol::fccu::FaultEvent>(&report))
            watcher.heard = static_cast<int>(fault->time);
    });
    for (auto _ : state) {
        std::thread writer([&] {
            const auto start = Clock::now();
            const std::chrono::duration<double> pace(static_cast<double>(round.size()) / kBytesPerSecond);
            for (int n = 1; n <= rounds; ++n) {
                std::this_thread::sleep_until(start + std::chrono::duration_cast<Clock::duration>(n * pace));
                QByteArray bytes;
                for (int i = 0; i < kEvery - 1; ++i)
                    bytes += reportNumber(i);
                bytes += faultNumber(n);
                sent[static_cast<std::size_t>(n)] = Clock::now().time_since_epoch().count();
                bench.line().write(bytes);
            }
        });
        while (watcher.next <= rounds)
            QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
        writer.join();
    }
    std::sort(watcher.latencies.begin(), watcher.latencies.end());
    const auto at = [&](double part) {
        return watcher.latencies[static_cast<std::size_t>(part * static_cast<double>(watcher.latencies.size() - 1))];
    };
    state.counters["median_ms"] = at(0.5);
    state.counters["p99_ms"] = at(0.99);
    state.counters["worst_ms"] = at(1);
    mode.end();
}
BENCHMARK(bannerAtFullLine)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace

int main(int argc, char **argv)
{
    return runWindowBenchmarks(argc, argv);
}
