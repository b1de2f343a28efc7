// SPDX-License-Identifier: MIT
// System memory protection: five regions whose rights are checked when an access is made.
#include "protocol/smpu.h"

#include "protocol/payload.h"
#include "simulator/addressmap.h"
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
namespace smpu = protocol::smpu;

constexpr quint8 kR = smpu::ReadOnly;
constexpr quint8 kRW = smpu::ReadWrite;
constexpr quint8 kNo = smpu::NoAccess;

// Selector, unit on, valid, rights of K4, K7a and K7b, cache inhibit, start, end.
constexpr std::array defaults = std::to_array<smpu::Region>({
    {7, true, true, {kRW, kR, kR}, true, addressmap::sramBank0.base, addressmap::sramBank0.last()}, // SMPU0
    {0, true, true, {kR, kR, kNo}, false, addressmap::mainFlash.base, addressmap::mainFlash.last()},
    {1, true, true, {kR, kNo, kNo}, false, addressmap::utestFlash.base, addressmap::utestFlash.last()},
    {4, true, true, {kR, kNo, kNo}, true, addressmap::eepromFlash.base, addressmap::eepromFlash.last()},
    {15, true, true, {kRW, kNo, kNo}, true, addressmap::k4Tcm.base, addressmap::k4Tcm.last()},
});
constexpr quint8 kSmpu0Region = 7;

struct Access {
    quint8 master;
    bool write;
    quint32 address;
};

// By number of the injection.
constexpr std::array accesses = std::to_array<Access>({
    {1, true, addressmap::sramBank0.base + 0x400},    // K7a writes system RAM
    {2, false, addressmap::mainFlash.base + 0x20000}, // K7b reads main flash
    {0, true, addressmap::utestFlash.base + 0x100},   // K4 writes UTEST flash
    {0, true, addressmap::eepromFlash.base + 0x40},   // K4 writes EEPROM flash
    {0, true, addressmap::mainFlash.base + 0x200},    // K4 writes main flash
    {1, true, addressmap::k4Tcm.base + 0x10},         // K7a writes the RAM of K4
});

constexpr quint8 kSmpu0Fault = 104;
constexpr quint8 kSmpu1Fault = 105;

class MemoryProtection : public Unit
{
public:
    explicit MemoryProtection(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 5", "memory protection regions", [this] { sendRegions(); }},
            {"smpu 1", "all protection on", [this] { turnAll(true); }},
            {"smpu 2", "all protection off", [this] { turnAll(false); }},
            {"smpu 3", "regions to their defaults", [this] { restore(); }},
            {"smpu 4", "memory protection fault record", [this] { sendRecord(); }},
            {"smpu 5", "clear memory protection faults", [this] { clearFaults(); }},
            {"sick rights", "<region> <core> <0-3>", "rights of a core (1: write only)",
             [this](const auto &a) { setRights(a); }},
            {"sick cache", "<region> <0|1>", "cache enabled or inhibited", [this](const auto &a) { setCache(a); }},
            {"inject 6", "<1-6>", "forbidden access", [this](const auto &a) { inject(a[0]); }},
        });
    }

    QString name() const override { return QStringLiteral("smpu"); }
    void reset(ResetKind) override
    {
        m_regions = defaults;
        m_record.clear();
    }
    void announce() override
    {
        sendRegions();
        sendRecord();
    }
    QString status() const override
    {
        return QStringLiteral("protection %1, %2 faults recorded")
            .arg(m_regions.front().unitOn ? QStringLiteral("on") : QStringLiteral("off"))
            .arg(m_record.size());
    }

private:
    static PayloadWriter &halves(PayloadWriter &payload, quint32 address)
    {
        return payload.u16be(address & 0xFFFF).u16be(address >> 16);
    }

    void sendRegions()
    {
        for (const smpu::Region &region : m_regions) {
            PayloadWriter payload;
            payload.u8(static_cast<unsigned>(region.selector << 4 | region.unitOn << 3 | region.valid << 2
                                             | region.rights[0]));
            payload.u8(static_cast<unsigned>(region.rights[1] << 6 | region.rights[2] << 4 | region.cacheInhibit << 3));
            halves(payload, region.start);
            halves(payload, region.end);
            m_board.send(ModuleId::Smpu, smpu::RegionReport, payload.take());
        }
    }

    void restore()
    {
        m_regions = defaults;
        sendRegions();
    }

    void turnAll(bool on)
    {
        for (smpu::Region &region : m_regions)
            region.unitOn = region.valid = on;
        sendRegions();
    }

    smpu::Region *find(const QString &text)
    {
        const auto found = std::ranges::find_if(
            m_regions, [&text](const smpu::Region &region) { return text == QString::number(region.selector); });
        if (found != m_regions.end())
            return &*found;
        m_board.say(QStringLiteral("a region is 0, 1, 4, 7 or 15"));
        return nullptr;
    }

    void setRights(const QStringList &arguments)
    {
        smpu::Region *region = find(arguments[0]);
        const auto core = decimal(arguments[1], smpu::kCoreCount - 1);
        const auto rights = decimal(arguments[2], smpu::ReadWrite);
        if (!region || !core || !rights) {
            m_board.say(QStringLiteral("usage: sick rights <region> <core 0-2> <rights 0-3>"));
            return;
        }
        region->rights[*core] = static_cast<quint8>(*rights);
        sendRegions();
    }

    void setCache(const QStringList &arguments)
    {
        smpu::Region *region = find(arguments[0]);
        const auto inhibit = decimal(arguments[1], 1);
        if (!region || !inhibit) {
            m_board.say(QStringLiteral("usage: sick cache <region> <0|1>"));
            return;
        }
        region->cacheInhibit = *inhibit;
        sendRegions();
    }

    const smpu::Region *forbidding(const Access &access) const
    {
        const quint8 needed = access.write ? smpu::WriteOnly : smpu::ReadOnly;
        for (const smpu::Region &region : m_regions) {
            const bool inside = access.address >= region.start && access.address <= region.end;
            if (inside && region.unitOn && region.valid && !(region.rights[access.master] & needed))
                return &region;
        }
        return nullptr;
    }

    void inject(const QString &text)
    {
        const auto number = decimal(text, accesses.size());
        if (!number || *number == 0) {
            m_board.say(QStringLiteral("inject 6 takes a number from 1 to 6"));
            return;
        }
        const Access &access = accesses[*number - 1];
        const smpu::Region *region = forbidding(access);
        if (!region) {
            m_board.say(
                QStringLiteral("access to 0x%1 allowed: no fault").arg(access.address, 8, 16, QLatin1Char('0')));
            return;
        }
        m_board.detect(region->selector == kSmpu0Region ? kSmpu0Fault : kSmpu1Fault, 0, [this, access] {
            record({access.master, access.write, access.address});
        });
    }

    void record(const smpu::Fault &fault)
    {
        if (m_record.size() < kMaxRecord)
            m_record.push_back(fault);
        sendRecord();
    }

    void sendRecord()
    {
        PayloadWriter payload;
        for (const smpu::Fault &fault : m_record)
            payload.u8(static_cast<unsigned>(fault.master | fault.write << 4)).u32le(fault.address);
        m_board.send(ModuleId::Smpu, smpu::FaultRecordReport, payload.take());
    }

    void clearFaults()
    {
        m_record.clear();
        m_board.clearFault(kSmpu0Fault);
        m_board.clearFault(kSmpu1Fault);
        sendRecord();
    }

    Board &m_board;
    std::array<smpu::Region, defaults.size()> m_regions = defaults;
    std::vector<smpu::Fault> m_record;
};

} // namespace

std::unique_ptr<Unit> makeMemoryProtection(Board &board)
{
    return std::make_unique<MemoryProtection>(board);
}

} // namespace simulator
