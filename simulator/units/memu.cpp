// SPDX-License-Identifier: MIT
// Memory errors: three memories with tables of limited length, and the data cache.
#include "protocol/memu.h"

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
namespace memu = protocol::memu;

struct Memory {
    const char *name;
    addressmap::Range range;
    bool takesData;
    std::size_t correctable;   // entries that the table holds
    std::size_t uncorrectable; // entries that the table holds
    quint8 correctableFault;
    quint8 uncorrectableFault;
    quint8 overflowFault;
};

// In the order of the injections and of the record's type codes.
constexpr std::array memories = std::to_array<Memory>({
    {"flash", addressmap::mainFlash, false, 20, 1, 22, 23, 24},
    {"peripheral RAM", addressmap::peripheralRam, true, 2, 1, 19, 20, 21},
    {"system RAM", addressmap::systemRam, true, 10, 1, 16, 17, 18},
});
constexpr quint8 kCacheFault = 96;
constexpr quint32 kCacheLine = 32; // bytes
constexpr int kCacheLines = 128;

class MemoryErrors : public Unit
{
public:
    explicit MemoryErrors(Board &board) : m_board(board)
    {
        board.addCommands({
            {"inject 9 1", "<offset>", "1-bit error in flash, hexadecimal", [this](const auto &a) { inject(0, a); }},
            {"inject 9 2", "<offset>", "2-bit error in flash", [this](const auto &a) { inject(1, a); }},
            {"inject 9 3", "<offset> <data>", "1-bit error in peripheral RAM", [this](const auto &a) { inject(2, a); }},
            {"inject 9 4", "<offset> <data>", "2-bit error in peripheral RAM", [this](const auto &a) { inject(3, a); }},
            {"inject 9 5", "<offset> <data>", "1-bit error in system RAM", [this](const auto &a) { inject(4, a); }},
            {"inject 9 6", "<offset> <data>", "2-bit error in system RAM", [this](const auto &a) { inject(5, a); }},
            {"inject 9 7", "data cache error", [this] { injectIntoCache(); }},
            {"memu 1", "memory fault record", [this] { sendRecord(); }},
            {"memu 2", "clear memory fault record", [this] { clearRecord(); }},
            {"memu 3", "clear memory fault status", [this] { clearStatus(); }},
        });
    }

    QString name() const override { return QStringLiteral("memu"); }
    void reset(ResetKind) override { m_record.clear(); }
    void announce() override { sendRecord(); }
    QString status() const override { return QStringLiteral("%1 errors recorded").arg(m_record.size()); }

private:
    void inject(unsigned type, const QStringList &arguments)
    {
        const Memory &memory = memories[type / 2];
        const auto offset = hexadecimal(arguments[0], memory.range.size - 1);
        if (!offset) {
            m_board.say(QStringLiteral("%1: the offset is hexadecimal, below %2")
                            .arg(QLatin1String(memory.name))
                            .arg(memory.range.size, 0, 16));
            return;
        }
        if (memory.takesData && !hexadecimal(arguments[1])) {
            m_board.say(QStringLiteral("%1: the data is a hexadecimal word").arg(QLatin1String(memory.name)));
            return;
        }
        detect(static_cast<quint8>(type), memory, memory.range.base + *offset);
    }

    // The cache is compared with the system RAM behind it: the error is recorded there.
    void injectIntoCache()
    {
        const quint32 line = kCacheLine * static_cast<quint32>(m_board.drawn(0, kCacheLines - 1));
        const memu::Fault fault = {memu::SramCorrectable, addressmap::systemRam.base + line};
        m_board.detect(kCacheFault, 0, [this, fault] { record(fault); });
    }

    std::size_t held(quint8 type) const
    {
        return static_cast<std::size_t>(
            std::ranges::count_if(m_record, [type](const memu::Fault &f) { return f.type == type; }));
    }

    // An address is recorded once; a full table reports its overflow instead.
    void detect(quint8 type, const Memory &memory, quint32 address)
    {
        const bool correctable = type % 2 == 0;
        const memu::Fault fault = {type, address};
        if (!isKnown(fault) && held(type) >= capacity(type))
            m_board.detect(memory.overflowFault);
        else
            m_board.detect(correctable ? memory.correctableFault : memory.uncorrectableFault, 0,
                           [this, fault] { record(fault); });
    }

    bool isKnown(const memu::Fault &fault) const
    {
        return std::find(m_record.begin(), m_record.end(), fault) != m_record.end();
    }

    static std::size_t capacity(quint8 type)
    {
        const Memory &memory = memories[type / 2];
        return type % 2 == 0 ? memory.correctable : memory.uncorrectable;
    }

    void record(const memu::Fault &fault)
    {
        if (!isKnown(fault) && held(fault.type) < capacity(fault.type))
            m_record.push_back(fault);
        sendRecord();
    }

    void sendRecord()
    {
        PayloadWriter payload;
        payload.u8(static_cast<unsigned>(m_record.size()));
        for (const memu::Fault &fault : m_record)
            payload.u8(fault.type).u32be(fault.address);
        m_board.send(ModuleId::Memu, memu::FaultRecordReport, payload.take());
    }

    void clearRecord()
    {
        m_record.clear();
        sendRecord();
    }

    void clearStatus()
    {
        for (const Memory &memory : memories) {
            for (const quint8 id : {memory.correctableFault, memory.uncorrectableFault, memory.overflowFault})
                m_board.clearFault(id);
        }
        m_board.clearFault(kCacheFault);
    }

    Board &m_board;
    std::vector<memu::Fault> m_record;
};

} // namespace

std::unique_ptr<Unit> makeMemoryErrors(Board &board)
{
    return std::make_unique<MemoryErrors>(board);
}

} // namespace simulator
