// SPDX-License-Identifier: MIT
// System status: greeting, operating mode, firmware version, and the two resets by software.
#include "protocol/sys.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

namespace simulator {

namespace {

namespace sys = protocol::sys;
using protocol::ModuleId;
using protocol::PayloadWriter;

constexpr quint8 kRun0 = 4;
constexpr unsigned kMaxMode = 15;
constexpr int kMaxPayload = 65535;
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
            {"sick mode", "<0-15>", "another operating mode", [this](const auto &a) { setMode(a[0]); }},
            {"sick frame", "<module> <type> [<hex>]", "any report", [this](const auto &a) { sendAny(a); }},
        });
    }

    QString name() const override { return QStringLiteral("system"); }
    void reset(ResetKind) override { m_mode = kRun0; }
    void heal() override
    {
        m_mode = kRun0;
        sendMode();
    }
    void announce() override
    {
        m_board.send(
            ModuleId::Sys, sys::FirmwareVersionReport,
            PayloadWriter().f32be(kVersion.version).u16be(kVersion.year).u8(kVersion.month).u8(kVersion.day).take());
        sendMode();
    }
    QString status() const override
    {
        return QStringLiteral("mode %1, %2").arg(sys::modeName(m_mode), sys::versionText(kVersion));
    }

private:
    void sendMode() { m_board.send(ModuleId::Sys, sys::OperatingModeReport, PayloadWriter().u8(m_mode).take()); }

    void setMode(const QString &text)
    {
        const auto mode = decimal(text, kMaxMode);
        if (!mode) {
            m_board.say(QStringLiteral("a mode is a number from 0 to %1").arg(kMaxMode));
            return;
        }
        m_mode = static_cast<quint8>(*mode);
        sendMode();
    }

    void sendAny(const QStringList &arguments)
    {
        const auto module = decimal(arguments[0], protocol::kModuleCount - 1);
        const auto type = decimal(arguments[1], 255);
        const QByteArray payload = QByteArray::fromHex(arguments.value(2).toLatin1());
        if (module && type && payload.size() <= kMaxPayload)
            m_board.send(static_cast<ModuleId>(*module), static_cast<quint8>(*type), payload);
        else
            m_board.say(QStringLiteral("usage: sick frame <module 0-16> <type 0-255> [<hexadecimal payload>]"));
    }

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
