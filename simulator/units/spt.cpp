// SPDX-License-Identifier: MIT
// Signal processing accelerator: a frame counter that advances, and two memory faults.
#include "protocol/spt.h"

#include "protocol/payload.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <QElapsedTimer>

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace spt = protocol::spt;

constexpr int kFramesPerSecond = 20;
constexpr int kReportMs = 1000;

// The fault collection unit has no source for these two: the nearest ones are the memories of the accelerator.
struct MemoryFault {
    quint32 code;
    quint8 faultId;
};
constexpr MemoryFault kOram = {1, 121};
constexpr MemoryFault kTram = {2, 115};

class SignalProcessing : public Unit
{
public:
    explicit SignalProcessing(Board &board) : m_board(board)
    {
        board.addCommands({
            {"inject 10 1", "operand RAM parity error", [this] { detect(kOram); }},
            {"inject 10 2", "twiddle RAM content error", [this] { detect(kTram); }},
            {"spt 1", "signal processing fault record", [this] { sendRecord(); }},
            {"spt 2", "clear signal processing faults", [this] { clearFaults(); }},
        });
    }

    QString name() const override { return QStringLiteral("spt"); }
    void reset(ResetKind) override
    {
        m_record.clear();
        m_running.start();
        m_board.after(kReportMs, [this] { sendCount(); });
    }
    void announce() override
    {
        send(frames());
        sendRecord();
    }
    QString status() const override
    {
        return QStringLiteral("%1 radar frames, %2 faults recorded").arg(frames()).arg(m_record.size());
    }

private:
    quint32 frames() const { return static_cast<quint32>(m_running.elapsed() * kFramesPerSecond / 1000); }

    void send(quint32 count)
    {
        m_board.send(ModuleId::Spt, spt::FrameCountReport, PayloadWriter().u32be(count).take());
    }

    void sendCount()
    {
        send(frames());
        m_board.after(kReportMs, [this] { sendCount(); });
    }

    void detect(const MemoryFault &fault)
    {
        m_board.detect(fault.faultId, 0, [this, code = fault.code] { record(code); });
    }

    void record(quint32 code)
    {
        if (m_record.size() < kMaxRecord)
            m_record.push_back(code);
        sendRecord();
    }

    void sendRecord()
    {
        PayloadWriter payload;
        payload.u8(static_cast<unsigned>(m_record.size()));
        for (const quint32 code : m_record)
            payload.u32be(code);
        m_board.send(ModuleId::Spt, spt::FaultRecordReport, payload.take());
    }

    void clearFaults()
    {
        m_record.clear();
        m_board.clearFault(kOram.faultId);
        m_board.clearFault(kTram.faultId);
        sendRecord();
    }

    Board &m_board;
    std::vector<quint32> m_record;
    QElapsedTimer m_running;
};

} // namespace

std::unique_ptr<Unit> makeSignalProcessing(Board &board)
{
    return std::make_unique<SignalProcessing>(board);
}

} // namespace simulator
