// SPDX-License-Identifier: MIT
// Register protection: one register with a soft and a hard lock, in two address spaces.
#include "protocol/regp.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace regp = protocol::regp;

constexpr quint32 kResetValue = 0x00000000;
constexpr quint32 kLockBits = 0x0000000F; // one a byte of the register

class RegisterProtection : public Unit
{
public:
    explicit RegisterProtection(Board &board) : m_board(board)
    {
        const auto write = [this](void (RegisterProtection::*way)(quint32)) {
            return [this, way](const QStringList &arguments) { take(arguments[0], way); };
        };
        board.addCommands({
            {"get 8", "register protection", [this] { sendStatus(); }},
            {"regP 1", "soft lock off", [this] { unlock(); }},
            {"regP 2", "<data>", "soft lock by writing the mirror space", write(&RegisterProtection::writeMirror)},
            {"regP 3", "<data>", "soft lock by its bit, then write", write(&RegisterProtection::lockThenWrite)},
            {"regP 4", "<data>", "hard lock, then write the mirror space",
             write(&RegisterProtection::hardLockThenWrite)},
            {"regP 5", "<data>", "write the register", write(&RegisterProtection::write)},
            {"sick lock", "<soft:0|1> <hard:0|1>", "set both locks", [this](const auto &a) { setLocks(a); }},
        });
    }

    QString name() const override { return QStringLiteral("regp"); }
    // The locks outlive a functional reset.
    void reset(ResetKind kind) override
    {
        if (kind == ResetKind::Functional)
            return;
        m_value = kResetValue;
        m_softLock = 0;
        m_hardLock = false;
    }
    void announce() override { sendStatus(); }
    QString status() const override
    {
        return QStringLiteral("register 0x%1, soft lock %2, hard lock %3")
            .arg(m_value, 8, 16, QLatin1Char('0'))
            .arg(m_softLock ? QStringLiteral("on") : QStringLiteral("off"),
                 m_hardLock ? QStringLiteral("on") : QStringLiteral("off"));
    }

private:
    void take(const QString &text, void (RegisterProtection::*write)(quint32))
    {
        const auto value = hexadecimal(text);
        if (!value) {
            m_board.say(QStringLiteral("the data is a hexadecimal word"));
            return;
        }
        (this->*write)(*value);
        sendStatus();
    }

    void write(quint32 value)
    {
        if (m_softLock)
            m_board.say(QStringLiteral("the register is locked: write ignored"));
        else
            m_value = value;
    }

    void setSoftLock(quint32 bits)
    {
        if (m_hardLock)
            m_board.say(QStringLiteral("the lock bits are hard-locked: change ignored"));
        else
            m_softLock = bits;
    }

    void setLocks(const QStringList &arguments)
    {
        const auto soft = decimal(arguments[0], 1);
        const auto hard = decimal(arguments[1], 1);
        if (!soft || !hard) {
            m_board.say(QStringLiteral("usage: sick lock <0|1> <0|1>"));
            return;
        }
        m_softLock = *soft ? kLockBits : 0;
        m_hardLock = *hard;
        sendStatus();
    }

    // A write through the mirror space writes the register and locks it.
    void writeMirror(quint32 value)
    {
        write(value);
        setSoftLock(kLockBits);
    }

    void lockThenWrite(quint32 value)
    {
        setSoftLock(kLockBits);
        write(value);
    }

    void hardLockThenWrite(quint32 value)
    {
        m_hardLock = true;
        writeMirror(value);
    }

    void unlock()
    {
        setSoftLock(0);
        sendStatus();
    }

    void sendStatus()
    {
        m_board.send(ModuleId::RegProt, regp::StatusReport,
                     PayloadWriter().u8(m_hardLock).u32le(m_softLock).u32le(m_value).u32le(m_value).take());
    }

    Board &m_board;
    quint32 m_value = kResetValue;
    quint32 m_softLock = 0;
    bool m_hardLock = false;
};

} // namespace

std::unique_ptr<Unit> makeRegisterProtection(Board &board)
{
    return std::make_unique<RegisterProtection>(board);
}

} // namespace simulator
