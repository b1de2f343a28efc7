// SPDX-License-Identifier: MIT
// Interrupt monitor: nine channels that watch how long an interrupt takes.
#include "protocol/intcm.h"

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
namespace intcm = protocol::intcm;

constexpr quint8 kFirstFault = 75;
constexpr int kMaxReadOut = 60; // counts from the fault to the reading of the timer
constexpr unsigned kMaxLatency = 0xFFFFFF;
constexpr quint8 kNoMode = 0; // all channels of the core are off
constexpr quint8 kLastMode = 3;

// Core, index, mode, interrupt, latency and timer in counts of 120 MHz.
constexpr std::array defaults = std::to_array<intcm::Channel>({
    {0, 0, 1, 301, 20000, 1000},
    {0, 1, 1, 303, 150000, 3900},
    {0, 2, 1, 255, 0, 0},
    {1, 0, 2, 301, 20000, 2000},
    {1, 1, 2, 303, 150000, 2000},
    {1, 2, 2, 255, 0, 0},
    {2, 0, 3, 301, 20000, 1000},
    {2, 1, 3, 303, 150000, 10000},
    {2, 2, 3, 255, 0, 0},
});
static_assert(defaults.size() == intcm::kMonitorCount);

class InterruptMonitor : public Unit
{
public:
    explicit InterruptMonitor(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 7", "interrupt monitor", [this] { sendStatus(); }},
            {"intcm", "IACK|EOI|SW <core> <index> <latency> <irq>", "configure a channel",
             [this](const auto &a) { configure(a); }},
            {"intcm 1", "channels to their defaults", [this] { restore(); }},
            {"intcm 2", "interrupt fault record", [this] { sendRecord(); }},
            {"intcm 3", "clear interrupt faults", [this] { clearFaults(); }},
            {"intcm 4", "<core> <index>", "close a channel", [this](const auto &a) { closeChannel(a); }},
            {"inject 8", "<core+1>", "late interrupt", [this](const auto &a) { inject(a[0]); }},
        });
    }

    QString name() const override { return QStringLiteral("intcm"); }
    void reset(ResetKind) override
    {
        m_channels = defaults;
        m_record.clear();
    }
    void announce() override
    {
        sendStatus();
        sendRecord();
    }
    QString status() const override { return QStringLiteral("%1 faults recorded").arg(m_record.size()); }

private:
    intcm::Channel *channel(const QString &core, const QString &index)
    {
        const auto c = decimal(core, intcm::kCoreCount - 1);
        const auto i = decimal(index, intcm::kMonitorsPerCore - 1);
        return c && i ? &m_channels[*c * intcm::kMonitorsPerCore + *i] : nullptr;
    }

    void restore()
    {
        m_channels = defaults;
        sendStatus();
    }

    void configure(const QStringList &arguments)
    {
        intcm::Channel *wanted = channel(arguments[1], arguments[2]);
        const auto latency = decimal(arguments[3], kMaxLatency);
        const auto irq = decimal(arguments[4], 0xFFFF);
        int mode = 0;
        for (quint8 i = 1; i <= kLastMode; ++i)
            mode = arguments[0] == intcm::modeName(i) ? i : mode;
        if (!wanted || !latency || !irq || mode == 0) {
            m_board.say(
                QStringLiteral("usage: intcm IACK|EOI|SW <core 0-2> <index 0-2> <latency 0-16777215> <irq 0-65535>"));
            return;
        }
        *wanted = {wanted->core, wanted->index,        static_cast<quint8>(mode), static_cast<quint16>(*irq),
                   *latency,     timerWithin(*latency)};
        setMode(wanted->core, wanted->mode);
        sendStatus();
    }

    // The mode is the core's: its channels share it.
    void setMode(quint8 core, quint8 mode)
    {
        for (intcm::Channel &channel : m_channels) {
            if (channel.core == core)
                channel.mode = mode;
        }
    }

    void closeChannel(const QStringList &arguments)
    {
        intcm::Channel *wanted = channel(arguments[0], arguments[1]);
        if (!wanted) {
            m_board.say(QStringLiteral("usage: intcm 4 <core 0-2> <index 0-2>"));
            return;
        }
        wanted->latency = wanted->timer = 0;
        if (std::ranges::none_of(m_channels,
                                 [wanted](const auto &c) { return c.core == wanted->core && c.latency != 0; }))
            setMode(wanted->core, kNoMode);
        sendStatus();
    }

    // How long the last interrupt took, in time.
    quint32 timerWithin(quint32 latency)
    {
        return static_cast<quint32>(m_board.drawn(static_cast<int>(latency / 20), static_cast<int>(latency / 5)));
    }

    // The core's first channel that is on watches an interrupt that is served too late.
    void inject(const QString &text)
    {
        const auto number = decimal(text, intcm::kCoreCount);
        if (!number || *number == 0) {
            m_board.say(QStringLiteral("inject 8 takes a number from 1 to 3"));
            return;
        }
        const std::size_t first = std::size_t{*number - 1} * intcm::kMonitorsPerCore;
        for (std::size_t i = first; i < first + intcm::kMonitorsPerCore; ++i) {
            if (m_channels[i].latency != 0) {
                detect(i);
                return;
            }
        }
        m_board.say(QStringLiteral("all channels of this core are off: the delay goes unnoticed"));
    }

    // The fault is raised as the timer passes the latency; by the time the firmware reads the timer, it has run on.
    void detect(std::size_t i)
    {
        intcm::Channel &late = m_channels[i];
        late.timer = std::min(late.latency + static_cast<quint32>(m_board.drawn(1, kMaxReadOut)), kMaxLatency);
        m_board.detect(static_cast<quint8>(kFirstFault + i), static_cast<double>(late.latency) / intcm::kCountsPerUs,
                       [this, late] { record(late); });
    }

    void record(const intcm::Channel &late)
    {
        if (m_record.size() < kMaxRecord)
            m_record.push_back(late);
        sendStatus();
        sendRecord();
    }

    template <class Channels> void send(quint8 type, const Channels &channels)
    {
        PayloadWriter payload;
        payload.u8(static_cast<unsigned>(channels.size()));
        for (const intcm::Channel &c : channels)
            payload.u8(c.core).u8(c.index).u8(c.mode).u16be(c.irq).u24be(c.latency).u24be(c.timer);
        m_board.send(ModuleId::Intcm, type, payload.take());
    }
    void sendStatus() { send(intcm::StatusReport, m_channels); }
    void sendRecord() { send(intcm::FaultRecordReport, m_record); }

    void clearFaults()
    {
        m_record.clear();
        for (std::size_t i = 0; i < m_channels.size(); ++i) {
            m_board.clearFault(static_cast<quint8>(kFirstFault + i));
            if (m_channels[i].timer > m_channels[i].latency)
                m_channels[i].timer = timerWithin(m_channels[i].latency);
        }
        sendStatus();
        sendRecord();
    }

    Board &m_board;
    std::array<intcm::Channel, intcm::kMonitorCount> m_channels = defaults;
    std::vector<intcm::Channel> m_record;
};

} // namespace

std::unique_ptr<Unit> makeInterruptMonitor(Board &board)
{
    return std::make_unique<InterruptMonitor>(board);
}

} // namespace simulator
