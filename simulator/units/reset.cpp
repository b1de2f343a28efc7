// SPDX-License-Identifier: MIT
// Reset generation: reasons, and the escalation of repeated resets.
#include "protocol/reset.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace reset = protocol::reset;

// State after power-on: functional escalation on, destructive escalation off.
constexpr unsigned kDefaultThreshold = 15;

struct Counter {
    unsigned threshold = 0; // 0: off
    unsigned count = 0;

    // True when this reset is the one that escalates.
    bool step()
    {
        ++count;
        if (threshold == 0 || count < threshold)
            return false;
        count = 0;
        return true;
    }
};

class ResetGeneration : public Unit
{
public:
    explicit ResetGeneration(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 9", "reset reasons, escalation thresholds", [this] { announce(); }},
            {"resetEsca 1 1", "functional escalation on or off", [this] { toggle(m_functional); }},
            {"resetEsca 1 2", "clear the functional counter", [this] { clear(m_functional); }},
            {"resetEsca 1 3", "<0-255>", "functional threshold",
             [this](const auto &a) { setThreshold(m_functional, a[0]); }},
            {"resetEsca 2 1", "destructive escalation on or off", [this] { toggle(m_destructive); }},
            {"resetEsca 2 2", "clear the destructive counter", [this] { clear(m_destructive); }},
            {"resetEsca 2 3", "<0-255>", "destructive threshold",
             [this](const auto &a) { setThreshold(m_destructive, a[0]); }},
            {"sick reset", "<reason> [<source>]", "a reset for any reason", [this](const auto &a) { force(a); }},
            {"sick hold", "the end of escalation: held in reset until the next power-on", [this] { hold(); }},
        });
    }

    QString name() const override { return QStringLiteral("reset"); }

    void reset(ResetKind kind) override
    {
        if (kind == ResetKind::PowerOn)
            m_destructive = {};
        if (kind != ResetKind::Functional)
            m_functional = {kDefaultThreshold, 0};
    }

    void announce() override
    {
        sendReasons();
        sendThresholds();
    }

    QString status() const override
    {
        return QStringLiteral("last: %1; functional %2 of %3, destructive %4 of %5")
            .arg(reset::reasonText(static_cast<int>(m_reason)))
            .arg(m_functional.count)
            .arg(m_functional.threshold)
            .arg(m_destructive.count)
            .arg(m_destructive.threshold);
    }

    // Counts resets; the one that reaches a threshold becomes a destructive one, or keeps the chip in reset.
    bool replacesReset(Reason reason) override
    {
        const ResetKind kind = kindOf(reason);
        if (kind == ResetKind::Functional && m_functional.step()) {
            m_board.restart(Reason::FunctionalEscalation);
            return true;
        }
        if (kind == ResetKind::Destructive && m_destructive.step()) {
            hold();
            return true;
        }
        return false;
    }

    void restartBegins(Reason reason, std::optional<quint8> source) override
    {
        m_reason = reason;
        m_source = source;
    }

private:
    void hold()
    {
        m_board.say(QStringLiteral("destructive reset escalation: held in reset until the next power-on"));
        m_board.holdInReset();
    }

    void force(const QStringList &arguments)
    {
        const auto reason = decimal(arguments[0], reset::kReasonCount - 1);
        const auto source = decimal(arguments.value(1, QStringLiteral("0")), reset::kSourceFlagCount - 1);
        if (reason && source)
            m_board.restart(static_cast<Reason>(*reason), static_cast<quint8>(*source));
        else
            m_board.say(QStringLiteral("usage: sick reset <reason 0-23> [<source 0-127>]"));
    }

    void toggle(Counter &counter)
    {
        counter = {counter.threshold == 0 ? kDefaultThreshold : 0, 0};
        sendThresholds();
    }

    void clear(Counter &counter)
    {
        counter.count = 0;
        sendThresholds();
    }

    void setThreshold(Counter &counter, const QString &text)
    {
        const auto threshold = decimal(text, 255);
        if (!threshold) {
            m_board.say(QStringLiteral("a threshold is a number from 0 to 255"));
            return;
        }
        counter = {*threshold, 0};
        sendThresholds();
    }

    void sendReasons()
    {
        QByteArray payload(1 + (reset::kReasonCount + reset::kSourceFlagCount) / 8, '\0');
        const auto setFlag = [&payload](int at, int flag) {
            payload[at + flag / 8] = static_cast<char>(payload[at + flag / 8] | 0x80 >> flag % 8);
        };
        setFlag(1, static_cast<int>(m_reason));
        if (m_source && hasSources(m_reason))
            setFlag(1 + reset::kReasonCount / 8, reset::faultOfFlag(*m_source)); // the same reversal both ways
        m_board.send(ModuleId::Reset, reset::ReasonReport, payload);
    }

    void sendThresholds()
    {
        m_board.send(ModuleId::Reset, reset::EscalationReport,
                     PayloadWriter().u8(m_functional.threshold).u8(m_destructive.threshold).take());
    }

    Board &m_board;
    Counter m_functional;
    Counter m_destructive;
    Reason m_reason = Reason::PowerOn;
    std::optional<quint8> m_source;
};

} // namespace

std::unique_ptr<Unit> makeResetGeneration(Board &board)
{
    return std::make_unique<ResetGeneration>(board);
}

} // namespace simulator
