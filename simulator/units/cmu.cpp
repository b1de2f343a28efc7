// SPDX-License-Identifier: MIT
// Clock monitors: thirteen clocks with limits, a little drift, and ways to break them; the clock generators.
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

struct Limits {
    int lower; // MHz
    int upper;
};

struct Clock {
    int nominal; // MHz
    Limits limits;
    quint8 faultId;
};

// The window shows 80 for an MC_CLK that is too slow and 160 for an ADC_CLK that is too fast.
constexpr std::array clocks = std::to_array<Clock>({
    {120, {110, 130}, 28}, // MC
    {240, {230, 250}, 29}, // CORE0
    {40, {36, 44}, 30},    // CAN
    {80, {70, 90}, 31},    // ADC
    {120, {110, 130}, 32}, // SYS
    {64, {58, 70}, 33},    // LFAST
    {20, {17, 23}, 34},    // CLK_OUT0
    {200, {190, 210}, 35}, // SPT
    {80, {72, 88}, 36},    // LIN, SPI
    {240, {230, 250}, 37}, // CORE1
    {240, {230, 250}, 38}, // CORE2
    {60, {54, 66}, 39},    // PBRIDGE
    {100, {92, 108}, 87},  // ACQN
});
static_assert(clocks.size() == cmu::kMonitorCount);

constexpr int kMc = 0;
constexpr int kAdc = 3;
constexpr int kSpi = 8;
constexpr int kSlowMc = 80;
constexpr int kFastAdc = 160;
constexpr int kMovedBy = 20; // width of moved limits, MHz
constexpr quint8 kCrystalLost = 27;
constexpr quint8 kSpiLost = 88;
constexpr int kMaxMHz = 255;
constexpr int kIrcHz = 16000000;

struct Monitor {
    int value = 0;
    Limits limits = {};
    std::optional<Limits> moved; // by an injection: in force instead of `limits`
    bool enabled = true;
    bool lost = false;
    bool forced = false;  // a fault moved the value: it does not drift
    bool latched = false; // the present fault has been reported

    const Limits &inForce() const { return moved ? *moved : limits; }
    bool isDisturbed() const { return lost || forced || moved; }
};

// Clock generators by the bit of the clock report. Those that the fault collection unit hears of have a source there.
struct Generator {
    const char *name = nullptr;
    int bit = 0;
    std::optional<quint8> faultId = {};
};
constexpr Generator generators[] = {{"sdpll", 7, 89}, {"pll1", 6, 26}, {"pll0", 5, 25}, {"irc", 3, {}}};
constexpr unsigned kAllHealthy = 0xF8;
constexpr unsigned kIrcAlone = 0x08;
constexpr unsigned kFromPll0 = 2;

class ClockMonitors : public Unit
{
public:
    explicit ClockMonitors(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 3", "clock generators, IRC measurement", [this] { sendClocks(); }},
            {"get 4", "all clock monitors", [this] { sendAll(); }},
            {"cmu 13", "<monitor>", "switch a clock monitor on", [this](const auto &a) { enable(a[0], true); }},
            {"cmu 14", "<monitor>", "switch a clock monitor off", [this](const auto &a) { enable(a[0], false); }},
            {"cmu", "<monitor> <upper> <lower>", "set limits in MHz", [this](const auto &a) { setLimits(a); }},
            {"cmu 15", "clock monitors to their defaults", [this] { restoreAll(); }},
            {"cmu 16", "clock fault record", [this] { sendRecord(); }},
            {"cmu 17", "clear clock faults", [this] { clearFaults(); }},
            {"inject 5 1", "MC_CLK too slow", [this] { force(kMc, kSlowMc); }},
            {"inject 5 2", "ADC_CLK too fast", [this] { force(kAdc, kFastAdc); }},
            {"inject 5 3", "SPI_CLK lost", [this] { lose(kSpi); }},
            {"inject 5 4", "MC_CLK below moved limits", [this] { moveUp(kMc); }},
            {"inject 5 5", "MC_CLK above moved limits", [this] { moveDown(kMc); }},
            {"sick clock", "xosc|spi|sdpll|pll0|pll1|irc", "a clock fails", [this](const auto &a) { fail(a[0]); }},
            {"sick source", "<0-7>", "another system clock source", [this](const auto &a) { setSource(a[0]); }},
        });
    }

    QString name() const override { return QStringLiteral("cmu"); }
    void reset(ResetKind) override
    {
        restore();
        m_record.clear();
    }
    void announce() override
    {
        sendClocks();
        sendAll();
        sendRecord();
    }
    void heal() override
    {
        m_generators = kAllHealthy;
        m_source = kFromPll0;
        clearFaults();
        sendClocks();
    }
    QString status() const override
    {
        const auto on = std::count_if(m_monitors.begin(), m_monitors.end(), [](const Monitor &m) { return m.enabled; });
        return QStringLiteral("%1 of 13 monitors on, %2 faults recorded").arg(on).arg(m_record.size());
    }

private:
    Monitor &at(int monitor) { return m_monitors[static_cast<std::size_t>(monitor)]; }
    static const Clock &clockOf(int monitor) { return clocks[static_cast<std::size_t>(monitor)]; }

    void restore()
    {
        m_generators = kAllHealthy;
        m_source = kFromPll0;
        for (int i = 0; i < cmu::kMonitorCount; ++i) {
            at(i) = {};
            at(i).value = clockOf(i).nominal;
            at(i).limits = clockOf(i).limits;
        }
    }

    void restoreAll()
    {
        restore();
        sendClocks();
        sendAll();
    }

    // The value that is reported is the one that is checked.
    void sendMonitor(int monitor)
    {
        Monitor &state = at(monitor);
        if (!state.forced)
            state.value = clockOf(monitor).nominal + m_board.drawn(-1, 1);
        check(monitor);
        const unsigned flags = static_cast<unsigned>(monitor) << 4 | (monitor == kSpi && state.lost ? 4U : 0U)
            | (monitor == kMc && state.lost ? 2U : 0U) | (state.enabled ? 1U : 0U);
        m_board.send(ModuleId::Cmu, cmu::MonitorReport,
                     PayloadWriter()
                         .u8(flags)
                         .u8(static_cast<unsigned>(state.value))
                         .u8(static_cast<unsigned>(state.inForce().upper))
                         .u8(static_cast<unsigned>(state.inForce().lower))
                         .take());
    }

    void sendAll()
    {
        for (int i = 0; i < cmu::kMonitorCount; ++i)
            sendMonitor(i);
    }

    // The internal oscillator is measured against the crystal: without it there is nothing to measure.
    void sendClocks()
    {
        const bool crystal = !at(kMc).lost;
        const unsigned flags = crystal ? m_generators | m_source : m_generators & kIrcAlone; // source 0: IRC
        const int hertz = crystal ? kIrcHz + m_board.drawn(-40000, 40000) : 0;
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
        const auto upper = decimal(arguments[1], kMaxMHz);
        const auto lower = decimal(arguments[2], kMaxMHz);
        if (!monitor || !upper || !lower) {
            m_board.say(QStringLiteral("usage: cmu <monitor 0-12> <upper 0-255> <lower 0-255>"));
            return;
        }
        Monitor &state = at(static_cast<int>(*monitor));
        state.limits = {static_cast<int>(*lower), static_cast<int>(*upper)};
        state.moved.reset();
        state.latched = false;
        sendMonitor(static_cast<int>(*monitor));
    }

    static std::optional<cmu::FaultKind> faultOf(const Monitor &state)
    {
        if (state.lost)
            return cmu::ClockLoss;
        if (state.value > state.inForce().upper)
            return cmu::TooHigh;
        if (state.value < state.inForce().lower)
            return cmu::TooLow;
        return {};
    }

    // Reports a fault once, until it is cleared or caused anew. A monitor that is off notices it when switched on.
    void check(int monitor)
    {
        Monitor &state = at(monitor);
        const auto kind = faultOf(state);
        if (!kind || !state.enabled || state.latched)
            return;
        state.latched = true;
        const quint8 lossId = monitor == kMc ? kCrystalLost : kSpiLost;
        m_board.detect(*kind == cmu::ClockLoss ? lossId : clockOf(monitor).faultId, 0,
                       [this, entry = cmu::FaultEntry{static_cast<quint8>(monitor), *kind}] { record(entry); });
    }

    void record(const cmu::FaultEntry &entry)
    {
        if (m_record.size() < kMaxRecord)
            m_record.push_back(entry);
        sendRecord();
    }

    // After an injection.
    void checkAnew(int monitor)
    {
        at(monitor).latched = false;
        if (!faultOf(at(monitor)))
            m_board.say(QStringLiteral("CMU%1: the clock is within its limits, no fault").arg(monitor));
        else if (!at(monitor).enabled)
            m_board.say(QStringLiteral("CMU%1 is off: the fault goes unnoticed").arg(monitor));
        check(monitor);
    }

    void force(int monitor, int value)
    {
        at(monitor).value = value;
        at(monitor).forced = true;
        checkAnew(monitor);
    }

    void lose(int monitor)
    {
        at(monitor).lost = true;
        checkAnew(monitor);
        if (monitor == kMc)
            sendClocks();
        sendMonitor(monitor);
    }

    void moveUp(int monitor)
    {
        const int upper = at(monitor).limits.upper;
        at(monitor).moved = Limits{upper, std::min(upper + kMovedBy, kMaxMHz)};
        checkAnew(monitor);
    }

    void moveDown(int monitor)
    {
        const int lower = at(monitor).limits.lower;
        at(monitor).moved = Limits{std::max(lower - kMovedBy, 0), lower};
        checkAnew(monitor);
    }

    void fail(const QString &clock)
    {
        if (clock == QLatin1String("xosc"))
            return lose(kMc);
        if (clock == QLatin1String("spi"))
            return lose(kSpi);
        for (const Generator &generator : generators) {
            if (clock != QLatin1String(generator.name))
                continue;
            m_generators &= ~(1U << generator.bit);
            if (generator.faultId)
                m_board.detect(*generator.faultId);
            sendClocks();
            return;
        }
        m_board.say(QStringLiteral("a clock is xosc, spi, sdpll, pll0, pll1 or irc"));
    }

    void setSource(const QString &text)
    {
        const auto source = decimal(text, 7);
        if (!source) {
            m_board.say(QStringLiteral("a source is a number from 0 to 7"));
            return;
        }
        m_source = *source;
        sendClocks();
    }

    // Takes the injected causes away too, else each fault would be back at once; limits that were set by hand stay.
    void clearFaults()
    {
        m_record.clear();
        for (int i = 0; i < cmu::kMonitorCount; ++i)
            m_board.clearFault(clockOf(i).faultId);
        for (const quint8 id : {kCrystalLost, kSpiLost})
            m_board.clearFault(id);
        for (const Generator &generator : generators) {
            if (generator.faultId)
                m_board.clearFault(*generator.faultId);
        }
        sendRecord();
        for (int i = 0; i < cmu::kMonitorCount; ++i)
            clear(i);
    }

    void clear(int monitor)
    {
        Monitor &state = at(monitor);
        const bool disturbed = state.isDisturbed() || state.latched;
        const bool crystalBack = monitor == kMc && state.lost;
        state.forced = state.lost = state.latched = false;
        state.moved.reset();
        if (crystalBack)
            sendClocks();
        if (disturbed)
            sendMonitor(monitor);
    }

    Board &m_board;
    std::array<Monitor, cmu::kMonitorCount> m_monitors;
    unsigned m_generators = kAllHealthy;
    unsigned m_source = kFromPll0;
    std::vector<cmu::FaultEntry> m_record;
};

} // namespace

std::unique_ptr<Unit> makeClockMonitors(Board &board)
{
    return std::make_unique<ClockMonitors>(board);
}

} // namespace simulator
