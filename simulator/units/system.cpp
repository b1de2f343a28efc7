// SPDX-License-Identifier: MIT
// System status: greeting, operating mode, firmware version, and the two resets by software.
#include "protocol/sys.h"

#include "protocol/payload.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

namespace simulator {

namespace {

namespace sys = protocol::sys;
using protocol::ModuleId;
using protocol::PayloadWriter;

constexpr quint8 kRun0 = 4;
constexpr sys::FirmwareVersion kVersion = {1.40F, 2026, 11, 2};

class System : public Unit
{
public:
    explicit System(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 0", "greeting, state of the fault collection unit", [this] { greet(); }},
            {"get 1", "operating mode, firmware version", [this] { announce(); }},
            {"inject 1", "functional reset", [&board] { board.restart(Reason::SoftwareFunctional); }},
            {"inject 2", "destructive reset", [&board] { board.restart(Reason::SoftwareDestructive); }},
        });
    }

    QString name() const override { return QStringLiteral("system"); }
    void reset(ResetKind) override { m_mode = kRun0; }
    void announce() override
    {
        m_board.send(
            ModuleId::Sys, sys::FirmwareVersionReport,
            PayloadWriter().f32be(kVersion.version).u16be(kVersion.year).u8(kVersion.month).u8(kVersion.day).take());
        m_board.send(ModuleId::Sys, sys::OperatingModeReport, PayloadWriter().u8(m_mode).take());
    }
    QString status() const override
    {
        return QStringLiteral("mode %1, %2").arg(sys::modeName(m_mode), sys::versionText(kVersion));
    }

private:
    void greet() { m_board.say(QStringLiteral("QM7D305 safety demonstration, %1").arg(sys::versionText(kVersion))); }

    Board &m_board;
    quint8 m_mode = kRun0;
};

} // namespace

std::unique_ptr<Unit> makeSystem(Board &board)
{
    return std::make_unique<System>(board);
}

} // namespace simulator
