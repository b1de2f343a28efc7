// SPDX-License-Identifier: MIT
// The external safety power chip, as the firmware sees it over SPI.
#include "protocol/vg5k.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <algorithm>
#include <iterator>

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace vg5k = protocol::vg5k;

constexpr int kStepMs = 800; // each start-up step, slow enough to be followed by the audience
constexpr unsigned kMaxCount = 255;
constexpr unsigned kUnknownState = 5;

// By bit of the regulator report.
constexpr const char *regulators[] = {"vldo1", "vldo2", "vbuck3", "vbuck2", "vbuck1", "vboost", "vpre", "spi"};
constexpr unsigned kLink = 0x80; // no regulator: the line to the chip
constexpr unsigned kAllBad = 0xFF;

class PowerChip : public Unit
{
public:
    explicit PowerChip(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 10", "power chip", [this] { sendAll(); }},
            {"sick regulator", "vpre|vboost|vbuck1|vbuck2|vbuck3|vldo1|vldo2|spi|all", "a regulator fails",
             [this](const auto &a) { fail(a[0]); }},
            {"sick failsafe", "<0-5>", "a state of the fail-safe machine (5: unknown)",
             [this](const auto &a) { setState(a[0]); }},
            {"sick debug", "the power chip in debug mode", [this] { setDebug(true); }},
            {"sick count", "<0-255>", "the power chip's fault counter", [this](const auto &a) { setCount(a[0]); }},
        });
    }

    QString name() const override { return QStringLiteral("vg5k"); }
    void reset(ResetKind kind) override
    {
        if (kind == ResetKind::Functional)
            return;
        m_counter = 0;
        m_state = m_started ? vg5k::InitFs : vg5k::NormalFs;
        m_started = true;
    }
    // After a loss of supply the chip walks through its start-up tests.
    void announce() override
    {
        sendAll();
        if (m_state < goal())
            m_board.after(kStepMs, [this] { step(); });
    }
    void heal() override
    {
        m_bad = 0;
        m_debug = false;
        m_state = vg5k::NormalFs;
        sendAll();
    }
    QString status() const override
    {
        return QStringLiteral("fail-safe state %1, %2 faults counted").arg(m_state).arg(m_counter);
    }

    void faultReported(quint8, float) override
    {
        m_counter = std::min(m_counter + 1, kMaxCount);
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
        sendItem(vg5k::Regulators, m_bad);
        sendItem(vg5k::FailSafeState, m_state);
        sendItem(vg5k::DebugMode, m_debug);
        sendItem(vg5k::FaultCounter, m_counter);
    }

    // A chip with a bad supply goes on asserting its safety output.
    unsigned goal() const { return (m_bad & ~kLink) != 0 ? vg5k::AssertFs0b : vg5k::NormalFs; }

    void enter(unsigned state)
    {
        m_state = state;
        sendItem(vg5k::FailSafeState, m_state);
    }

    void step()
    {
        if (m_state >= goal())
            return;
        enter(m_state + 1);
        m_board.after(kStepMs, [this] { step(); });
    }

    void fail(const QString &name)
    {
        const auto found = std::ranges::find_if(
            regulators, [&name](const char *regulator) { return name == QLatin1String(regulator); });
        if (found == std::end(regulators) && name != QLatin1String("all")) {
            m_board.say(QStringLiteral("no such regulator: %1").arg(name));
            return;
        }
        m_bad |= found == std::end(regulators) ? kAllBad : 1U << std::distance(std::begin(regulators), found);
        sendItem(vg5k::Regulators, m_bad);
        if (goal() < m_state)
            enter(goal());
    }

    void setState(const QString &text)
    {
        if (const auto state = decimal(text, kUnknownState))
            enter(*state);
        else
            m_board.say(QStringLiteral("a state is a number from 0 to 5"));
    }

    void setDebug(bool on)
    {
        m_debug = on;
        sendItem(vg5k::DebugMode, m_debug);
    }

    void setCount(const QString &text)
    {
        if (const auto count = decimal(text, kMaxCount))
            sendItem(vg5k::FaultCounter, m_counter = *count);
        else
            m_board.say(QStringLiteral("a count is a number from 0 to 255"));
    }

    Board &m_board;
    unsigned m_state = vg5k::NormalFs;
    unsigned m_bad = 0; // regulators
    bool m_debug = false;
    unsigned m_counter = 0;
    bool m_started = false;
};

} // namespace

std::unique_ptr<Unit> makePowerChip(Board &board)
{
    return std::make_unique<PowerChip>(board);
}

} // namespace simulator
