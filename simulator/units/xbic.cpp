// SPDX-License-Identifier: MIT
// Crossbar integrity checkers: enables, and errors injected on one path of each.
#include "protocol/xbic.h"

#include "protocol/payload.h"
#include "simulator/addressmap.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <array>

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace xbic = protocol::xbic;

struct Path {
    quint8 master;
    quint8 slave;
    addressmap::Range range; // that the slave answers
    quint8 faultId;
};

constexpr std::array paths = std::to_array<Path>({
    {0, 3, addressmap::peripherals1, 47}, // data crossbar: K4 to PBRIDGE_1
    {0, 0, addressmap::mainFlash, 46},    // instruction crossbar: K4 to the flash
    {3, 0, addressmap::sramBank0, 50},    // SRAM port 3 to bank 0
    {4, 4, addressmap::radarData, 48},    // splitter: eDMA to master port 4
    {4, 6, addressmap::k7aTcm, 107},      // splitter: slave port 4 to the TCM of K7a
});
static_assert(paths.size() == xbic::kCheckerCount);

class CrossbarCheckers : public Unit
{
public:
    explicit CrossbarCheckers(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 11", "crossbar checkers", [this] { sendEnables(); }},
            {"xbic 1", "<checker>", "switch a crossbar checker on", [this](const auto &a) { turn(a[0], true); }},
            {"xbic 2", "<checker>", "switch a crossbar checker off", [this](const auto &a) { turn(a[0], false); }},
            {"xbic 3", "crossbar checkers to their defaults", [this] { restore(); }},
            {"xbic 4", "crossbar fault record", [this] { sendRecord(); }},
            {"xbic 5", "clear crossbar faults", [this] { clearFaults(); }},
            {"inject 7", "<checker+1>", "crossbar error", [this](const auto &a) { inject(a[0]); }},
        });
    }

    QString name() const override { return QStringLiteral("xbic"); }
    void reset(ResetKind) override
    {
        m_enabled = xbic::kCheckerMask;
        m_record.clear();
    }
    void announce() override
    {
        sendEnables();
        sendRecord();
    }
    QString status() const override
    {
        return QStringLiteral("enabled 0x%1, %2 faults recorded")
            .arg(m_enabled, 2, 16, QLatin1Char('0'))
            .arg(m_record.size());
    }

private:
    void sendEnables() { m_board.send(ModuleId::Xbic, xbic::EnableReport, PayloadWriter().u8(m_enabled).take()); }

    void restore()
    {
        m_enabled = xbic::kCheckerMask;
        sendEnables();
    }

    void turn(const QString &text, bool on)
    {
        const auto checker = decimal(text, xbic::kCheckerCount - 1);
        if (!checker) {
            m_board.say(QStringLiteral("a checker is a number from 0 to 4"));
            return;
        }
        m_enabled = on ? m_enabled | 1U << *checker : m_enabled & ~(1U << *checker);
        sendEnables();
    }

    void inject(const QString &text)
    {
        const auto number = decimal(text, xbic::kCheckerCount);
        if (!number || *number == 0) {
            m_board.say(QStringLiteral("inject 7 takes a number from 1 to 5"));
            return;
        }
        const unsigned checker = *number - 1;
        if (!(m_enabled >> checker & 1)) {
            m_board.say(QStringLiteral("XBIC%1 is off: the error goes unnoticed").arg(checker));
            return;
        }
        const Path &path = paths[checker];
        const auto syndrome = static_cast<quint8>(1U << m_board.drawn(0, 7));
        const quint32 address =
            path.range.base + 4 * static_cast<quint32>(m_board.drawn(0, static_cast<int>(path.range.size / 4) - 1));
        m_board.detect(path.faultId, 0, [this, checker, path, syndrome, address] {
            record({static_cast<quint8>(checker), path.master, path.slave, syndrome, address});
        });
    }

    void record(const xbic::Fault &fault)
    {
        if (m_record.size() < kMaxRecord)
            m_record.push_back(fault);
        sendRecord();
    }

    void sendRecord()
    {
        PayloadWriter payload;
        payload.u8(static_cast<unsigned>(m_record.size()));
        for (const xbic::Fault &fault : m_record)
            payload.u8(fault.index).u8(fault.master).u8(fault.slave).u8(fault.syndrome).u32le(fault.address);
        m_board.send(ModuleId::Xbic, xbic::FaultRecordReport, payload.take());
    }

    void clearFaults()
    {
        m_record.clear();
        for (const Path &path : paths)
            m_board.clearFault(path.faultId);
        sendRecord();
    }

    Board &m_board;
    unsigned m_enabled = xbic::kCheckerMask;
    std::vector<xbic::Fault> m_record;
};

} // namespace

std::unique_ptr<Unit> makeCrossbarCheckers(Board &board)
{
    return std::make_unique<CrossbarCheckers>(board);
}

} // namespace simulator
