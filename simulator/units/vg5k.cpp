// SPDX-License-Identifier: MIT
// The external safety power chip, as the firmware sees it over SPI.
#include "protocol/vg5k.h"

#include "protocol/payload.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace vg5k = protocol::vg5k;

constexpr int kStepMs = 150;

class PowerChip : public Unit
{
public:
    explicit PowerChip(Board &board) : m_board(board)
    {
        board.addCommands({{"get 10", "power chip", [this] { sendAll(); }}});
    }

    QString name() const override { return QStringLiteral("vg5k"); }
    void reset(ResetKind kind) override
    {
        if (kind == ResetKind::Functional)
            return;
        m_counter = 0;
        m_state = kind == ResetKind::PowerOn && !m_started ? vg5k::NormalFs : vg5k::InitFs;
        m_started = true;
    }
    // After a loss of supply the chip walks through its start-up tests.
    void announce() override
    {
        sendAll();
        if (m_state != vg5k::NormalFs)
            m_board.after(kStepMs, [this] { step(); });
    }
    QString status() const override
    {
        return QStringLiteral("fail-safe state %1, %2 faults counted").arg(m_state).arg(m_counter);
    }

    void faultReported(quint8) override
    {
        if (m_counter < 255)
            ++m_counter;
        sendItem(vg5k::FaultCounter, m_counter);
    }

private:
    void sendItem(vg5k::Item item, unsigned value)
    {
        m_board.send(ModuleId::Vg5k, vg5k::ItemReport,
                     PayloadWriter().u8(static_cast<unsigned>(item)).u8(value).take());
    }

    void sendAll()
    {
        sendItem(vg5k::Regulators, 0);
        sendItem(vg5k::FailSafeState, m_state);
        sendItem(vg5k::DebugMode, 0);
        sendItem(vg5k::FaultCounter, m_counter);
    }

    void step()
    {
        m_state = static_cast<vg5k::FailSafe>(m_state + 1);
        sendItem(vg5k::FailSafeState, m_state);
        if (m_state != vg5k::NormalFs)
            m_board.after(kStepMs, [this] { step(); });
    }

    Board &m_board;
    vg5k::FailSafe m_state = vg5k::NormalFs;
    unsigned m_counter = 0;
    bool m_started = false;
};

} // namespace

std::unique_ptr<Unit> makePowerChip(Board &board)
{
    return std::make_unique<PowerChip>(board);
}

} // namespace simulator
