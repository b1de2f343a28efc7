// SPDX-License-Identifier: MIT
// Clock monitors: thirteen clocks with limits, a little drift, and ways to break them.
#include "protocol/cmu.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace cmu = protocol::cmu;

struct Clock {
    int nominal; // MHz
    int lower;
    int upper;
    quint8 faultId;
};

constexpr std::array clocks = std::to_array<Clock>({
    {80, 70, 90, 28},    // MC
    {240, 230, 250, 29}, // CORE0
    {40, 36, 44, 30},    // CAN
    {160, 150, 170, 31}, // ADC
    {120, 110, 130, 32}, // SYS
    {64, 58, 70, 33},    // LFAST
    {20, 17, 23, 34},    // CLK_OUT0
    {200, 190, 210, 35}, // SPT
    {80, 72, 88, 36},    // LIN, SPI
    {240, 230, 250, 37}, // CORE1
    {240, 230, 250, 38}, // CORE2
    {60, 54, 66, 39},    // PBRIDGE
    {100, 92, 108, 87},  // ACQN
});
static_assert(clocks.size() == cmu::kMonitorCount);

struct State {
    int value = 0;
    int lower = 0;
    int upper = 0;
    bool enabled = true;
    bool lost = false;
    bool forced = false; // a fault moved the value: it does not drift
};

constexpr int kMc = 0;
constexpr int kAdc = 3;
constexpr int kSpi = 8;
constexpr std::size_t kRecordLimit = 255;
constexpr int kIrcHz = 16000000;

class ClockMonitors : public Unit
{
public:
    explicit ClockMonitors(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 3", "clock generators, IRC measurement", [this] { sendClocks(); }},
            {"get 4", "all clock monitors", [this] { sendAll(); }},
            {"cmu 13", "<monitor>", "switch a clock monitor on", [this](auto &a) { enable(a[0], true); }},
            {"cmu 14", "<monitor>", "switch a clock monitor off", [this](auto &a) { enable(a[0], false); }},
            {"cmu", "<monitor> <upper> <lower>", "set limits in MHz", [this](auto &a) { setLimits(a); }},
            {"cmu 15", "clock monitors to their defaults", [this] { restoreAll(); }},
            {"cmu 16", "clock fault record", [this] { sendRecord(); }},
            {"cmu 17", "clear clock faults", [this] { clearFaults(); }},
            {"cmu lose", "xosc|spi", "lose the crystal or the SPI clock", [this](auto &a) { lose(a[0]); }},
            {"inject 5 1", "MC_CLK too slow", [this] { force(kMc, -20, cmu::TooLow); }},
            {"inject 5 2", "ADC_CLK too fast", [this] { force(kAdc, 20, cmu::TooHigh); }},
            {"inject 5 3", "SPI_CLK lost", [this] { loseClock(kSpi); }},
            {"inject 5 4", "MC_CLK below moved limits", [this] { moveLimits(20, cmu::TooLow); }},
            {"inject 5 5", "MC_CLK above moved limits", [this] { moveLimits(-20, cmu::TooHigh); }},
        });
    }

    QString name() const override { return QStringLiteral("cmu"); }
    void reset(ResetKind) override
    {
        restore();
        m_record.clear();
    }
    QString status() const override
    {
        const auto on = std::count_if(m_states.begin(), m_states.end(), [](const State &s) { return s.enabled; });
        return QStringLiteral("%1 of 13 monitors on, %2 faults recorded").arg(on).arg(m_record.size());
    }

private:
    State &at(int monitor) { return m_states[static_cast<std::size_t>(monitor)]; }

    void restore()
    {
        for (std::size_t i = 0; i < clocks.size(); ++i)
            m_states[i] = {clocks[i].nominal, clocks[i].lower, clocks[i].upper, true, false, false};
    }

    void restoreAll()
    {
        restore();
        sendAll();
    }

    void sendMonitor(int monitor)
    {
        State &state = at(monitor);
        if (!state.forced)
            state.value = clocks[static_cast<std::size_t>(monitor)].nominal + m_board.drawn(-1, 1);
        const unsigned flags = static_cast<unsigned>(monitor) << 4 | (monitor == kSpi && state.lost ? 4U : 0U)
            | (monitor == kMc && state.lost ? 2U : 0U) | (state.enabled ? 1U : 0U);
        m_board.send(ModuleId::Cmu, cmu::MonitorReport,
                     PayloadWriter()
                         .u8(flags)
                         .u8(static_cast<unsigned>(state.value))
                         .u8(static_cast<unsigned>(state.upper))
                         .u8(static_cast<unsigned>(state.lower))
                         .take());
    }

    void sendAll()
    {
        for (int i = 0; i < cmu::kMonitorCount; ++i)
            sendMonitor(i);
    }

    // Running from PLL0; without the crystal the loops lose their lock and the chip falls back to the IRC.
    void sendClocks()
    {
        const bool crystal = !at(kMc).lost;
        const unsigned flags = crystal ? 0xF8 | 2 : 0x08;
        const int hertz = kIrcHz + m_board.drawn(-40000, 40000);
        m_board.send(ModuleId::Cmu, cmu::ClockReport,
                     PayloadWriter().u8(flags).u24be(static_cast<quint32>(hertz)).take());
    }

    void sendRecord()
    {
        PayloadWriter payload;
        payload.u8(static_cast<unsigned>(m_record.size()));
        for (const cmu::FaultEntry &entry : m_record)
            payload.u8(static_cast<unsigned>(entry.monitor << 4 | entry.kind));
        m_board.send(ModuleId::Cmu, cmu::FaultRecordReport, payload.take());
    }

    void enable(const QString &text, bool on)
    {
        const auto monitor = decimal(text, cmu::kMonitorCount - 1);
        if (!monitor) {
            m_board.say(QStringLiteral("a monitor is a number from 0 to 12"));
            return;
        }
        at(static_cast<int>(*monitor)).enabled = on;
        sendMonitor(static_cast<int>(*monitor));
    }

    void setLimits(const QStringList &arguments)
    {
        const auto monitor = decimal(arguments[0], cmu::kMonitorCount - 1);
        const auto upper = decimal(arguments[1], 255);
        const auto lower = decimal(arguments[2], 255);
        if (!monitor || !upper || !lower) {
            m_board.say(QStringLiteral("usage: cmu <monitor 0-12> <upper 0-255> <lower 0-255>"));
            return;
        }
        State &state = at(static_cast<int>(*monitor));
        state.upper = static_cast<int>(*upper);
        state.lower = static_cast<int>(*lower);
        check(static_cast<int>(*monitor));
        sendMonitor(static_cast<int>(*monitor));
    }

    void check(int monitor)
    {
        const State &state = at(monitor);
        if (state.value > state.upper)
            detect(monitor, cmu::TooHigh);
        else if (state.value < state.lower)
            detect(monitor, cmu::TooLow);
    }

    void detect(int monitor, cmu::FaultKind kind)
    {
        if (!at(monitor).enabled) {
            m_board.say(QStringLiteral("CMU%1 is off: the fault goes unnoticed").arg(monitor));
            return;
        }
        if (m_record.size() < kRecordLimit)
            m_record.push_back({static_cast<quint8>(monitor), static_cast<quint8>(kind)});
        m_board.reportFault(clocks[static_cast<std::size_t>(monitor)].faultId);
    }

    void force(int monitor, int byMHz, cmu::FaultKind kind)
    {
        State &state = at(monitor);
        state.value = clocks[static_cast<std::size_t>(monitor)].nominal + byMHz;
        state.forced = true;
        detect(monitor, kind);
    }

    void loseClock(int monitor)
    {
        at(monitor).lost = true;
        detect(monitor, cmu::ClockLoss);
        sendMonitor(monitor);
    }

    void lose(const QString &clock)
    {
        if (clock == QLatin1String("spi"))
            loseClock(kSpi);
        else if (clock == QLatin1String("xosc"))
            loseClock(kMc);
        else
            m_board.say(QStringLiteral("usage: cmu lose xosc|spi"));
    }

    void moveLimits(int byMHz, cmu::FaultKind kind)
    {
        State &state = at(kMc);
        state.lower = clocks[kMc].lower + byMHz;
        state.upper = clocks[kMc].upper + byMHz;
        detect(kMc, kind);
    }

    // Clearing takes the cause away too, else the fault would be back at once.
    void clearFaults()
    {
        for (const cmu::FaultEntry &entry : m_record) {
            const Clock &clock = clocks[entry.monitor];
            State &state = at(entry.monitor);
            state = {clock.nominal, clock.lower, clock.upper, state.enabled, false, false};
            m_board.clearFault(clock.faultId);
        }
        m_record.clear();
    }

    Board &m_board;
    std::array<State, cmu::kMonitorCount> m_states;
    std::vector<cmu::FaultEntry> m_record;
};

} // namespace

std::unique_ptr<Unit> makeClockMonitors(Board &board)
{
    return std::make_unique<ClockMonitors>(board);
}

} // namespace simulator
