// SPDX-License-Identifier: MIT
// Interrupt monitor: nine channels that watch how long an interrupt takes.
#include "protocol/intcm.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <array>

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace intcm = protocol::intcm;

constexpr quint8 kFirstFault = 75;
constexpr std::size_t kRecordLimit = 255;
constexpr unsigned kLargestLatency = 0xFFFFFF;
constexpr const char *modeWords[] = {"NONE", "IACK", "EOI", "SW"};

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
        const auto add = [&board](const char *words, const char *arguments, const char *help, int count,
                                  Board::Handler run) {
            board.addCommand({QString::fromLatin1(words), QString::fromLatin1(arguments), QString::fromLatin1(help),
                              count, count, std::move(run)});
        };
        add("get 7", "", "interrupt monitor", 0, [this](const QStringList &) { sendStatus(); });
        add("intcm", "IACK|EOI|SW <core> <index> <latency> <irq>", "configure a channel", 5,
            [this](const QStringList &a) { configure(a); });
        add("intcm 1", "", "channels to their defaults", 0, [this](const QStringList &) {
            m_channels = defaults;
            sendStatus();
        });
        add("intcm 2", "", "interrupt fault record", 0, [this](const QStringList &) { sendRecord(); });
        add("intcm 3", "", "clear interrupt faults", 0, [this](const QStringList &) { clearFaults(); });
        add("intcm 4", "<core> <index>", "close a channel", 2, [this](const QStringList &a) { closeChannel(a); });
        add("inject 8", "<core + 1>", "late interrupt", 1, [this](const QStringList &a) { inject(a.first()); });
    }

    QString name() const override { return QStringLiteral("intcm"); }
    void reset(ResetKind, int) override
    {
        m_channels = defaults;
        m_record.clear();
    }
    QString status() const override { return QStringLiteral("%1 faults recorded").arg(m_record.size()); }

private:
    intcm::Channel *channel(const QString &core, const QString &index)
    {
        const auto c = decimal(core, intcm::kCoreCount - 1);
        const auto i = decimal(index, intcm::kMonitorsPerCore - 1);
        return c && i ? &m_channels[*c * intcm::kMonitorsPerCore + *i] : nullptr;
    }

    void configure(const QStringList &arguments)
    {
        intcm::Channel *wanted = channel(arguments[1], arguments[2]);
        const auto latency = decimal(arguments[3], kLargestLatency);
        const auto irq = decimal(arguments[4], 0xFFFF);
        int mode = 0;
        for (int i = 1; i < static_cast<int>(std::size(modeWords)); ++i)
            mode = arguments[0] == QLatin1String(modeWords[i]) ? i : mode;
        if (!wanted || !latency || !irq || mode == 0) {
            m_board.say(
                QStringLiteral("usage: intcm IACK|EOI|SW <core 0-2> <index 0-2> <latency 0-16777215> <irq 0-65535>"));
            return;
        }
        *wanted = {wanted->core,
                   wanted->index,
                   static_cast<quint8>(mode),
                   static_cast<quint16>(*irq),
                   *latency,
                   static_cast<quint32>(m_board.drawn(500, 4000))};
        // The mode is the core's: its channels share it.
        for (intcm::Channel &other : m_channels) {
            if (other.core == wanted->core)
                other.mode = wanted->mode;
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
        sendStatus();
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

    void detect(std::size_t i)
    {
        intcm::Channel late = m_channels[i];
        late.timer = std::min(late.latency + static_cast<quint32>(m_board.drawn(120, 1200)), kLargestLatency);
        if (m_record.size() < kRecordLimit)
            m_record.push_back(late);
        m_board.reportFault(static_cast<quint8>(kFirstFault + i));
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
        for (quint8 i = 0; i < intcm::kMonitorCount; ++i)
            m_board.clearFault(static_cast<quint8>(kFirstFault + i));
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
