// SPDX-License-Identifier: MIT
// Reset generation: reasons, and the escalation of repeated resets.
#include "protocol/reset.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/resetreason.h"
#include "simulator/unit.h"
#include "simulator/units.h"

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace reset = protocol::reset;

// What the chip starts with: functional escalation on, destructive escalation off.
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
        board.setResetRule([this](ResetKind kind, int reason, int source) { return rule(kind, reason, source); });
        board.addCommand({QStringLiteral("get 9"),
                          {},
                          QStringLiteral("reset reasons, escalation thresholds"),
                          0,
                          0,
                          [this](const QStringList &) { announce(); }});
        for (Counter *counter : {&m_functional, &m_destructive})
            addCommands(*counter, counter == &m_functional ? 1 : 2);
    }

    QString name() const override { return QStringLiteral("reset"); }

    void reset(ResetKind kind, int reason) override
    {
        m_reason = reason;
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
            .arg(reset::reasonText(m_reason))
            .arg(m_functional.count)
            .arg(m_functional.threshold)
            .arg(m_destructive.count)
            .arg(m_destructive.threshold);
    }

private:
    void addCommands(Counter &counter, int kind)
    {
        const QString head = QStringLiteral("resetEsca %1 ").arg(kind);
        const QString what = kind == 1 ? QStringLiteral("functional") : QStringLiteral("destructive");
        m_board.addCommand({head + QLatin1Char('1'),
                            {},
                            what + QStringLiteral(" escalation on or off"),
                            0,
                            0,
                            [this, &counter](const QStringList &) {
                                counter = {counter.threshold == 0 ? kDefaultThreshold : 0, 0};
                                sendThresholds();
                            }});
        m_board.addCommand({head + QLatin1Char('2'),
                            {},
                            QStringLiteral("clear the ") + what + QStringLiteral(" counter"),
                            0,
                            0,
                            [this, &counter](const QStringList &) {
                                counter.count = 0;
                                sendThresholds();
                            }});
        m_board.addCommand(
            {head + QLatin1Char('3'), QStringLiteral("<0-255>"), what + QStringLiteral(" threshold"), 1, 1,
             [this, &counter](const QStringList &arguments) { setThreshold(counter, arguments.first()); }});
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

    // Counts resets; the one that reaches a threshold becomes a destructive one, or keeps the chip in reset.
    bool rule(ResetKind kind, int, int source)
    {
        m_source = source;
        if (kind == ResetKind::Functional && m_functional.step()) {
            m_board.restart(ResetKind::Destructive, FunctionalEscalation);
            return true;
        }
        if (kind == ResetKind::Destructive && m_destructive.step()) {
            m_board.say(QStringLiteral("destructive reset escalation: held in reset until the next power-on"));
            m_board.holdInReset();
            return true;
        }
        return false;
    }

    void sendReasons()
    {
        QByteArray payload(1 + (reset::kReasonCount + reset::kSourceFlagCount) / 8, '\0');
        const auto setFlag = [&payload](int at, int flag) {
            payload[at + flag / 8] = static_cast<char>(payload[at + flag / 8] | 0x80 >> flag % 8);
        };
        setFlag(1, m_reason);
        if (m_source >= 0 && (m_reason == reset::kFccuShort || m_reason == reset::kFccuLong))
            setFlag(1 + reset::kReasonCount / 8, reset::faultOfFlag(m_source)); // the same reversal both ways
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
    int m_reason = PowerOnReset;
    int m_source = -1;
};

} // namespace

std::unique_ptr<Unit> makeResetGeneration(Board &board)
{
    return std::make_unique<ResetGeneration>(board);
}
