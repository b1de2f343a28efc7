// SPDX-License-Identifier: MIT
// Fault collection and control unit: takes the faults of all units, and reacts.
#include "protocol/fccu.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <QSet>

#include <algorithm>
#include <iterator>

namespace simulator {

namespace {

namespace fccu = protocol::fccu;
using protocol::ModuleId;
using protocol::PayloadWriter;

// The unit goes to FAULT at once for these sources, to ALARM for all others.
constexpr quint8 severe[] = {6, 8, 10, 11, 12, 13, 14, 15, 17, 20, 23, 25, 26, 63, 64, 85, 86, 89, 90};

const char *stateName(fccu::State state)
{
    constexpr const char *names[] = {"CONFIG", "NORMAL", "ALARM", "FAULT"};
    return names[state];
}

bool isSevere(quint8 source)
{
    return std::find(std::begin(severe), std::end(severe), source) != std::end(severe);
}

class FaultCollection : public Unit
{
public:
    explicit FaultCollection(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 0", "", [this] { sendState(); }},
            {"sick fault", "<0-255>", "a fault of any source", [this](const auto &a) { raise(a[0]); }},
            {"sick fccu", "<0-3>", "CONFIG, NORMAL, ALARM or FAULT", [this](const auto &a) { setState(a[0]); }},
        });
    }

    QString name() const override { return QStringLiteral("fccu"); }
    void reset(ResetKind) override
    {
        m_active.clear();
        m_state = fccu::Normal;
    }
    void announce() override
    {
        m_board.send(ModuleId::Fccu, fccu::StateReport, PayloadWriter().u8(fccu::Config).take());
        sendState();
    }
    void heal() override
    {
        m_active.clear();
        enter(fccu::Normal);
    }
    QString status() const override
    {
        return QStringLiteral("%1, %2 faults active").arg(QString::fromLatin1(stateName(m_state))).arg(m_active.size());
    }

    void faultReported(quint8 id, float timeUs) override
    {
        m_active.insert(id);
        enter(m_state == fccu::Fault || isSevere(id) ? fccu::Fault : fccu::Alarm);
        m_board.send(ModuleId::Fccu, fccu::FaultReport, PayloadWriter().u8(id).f32be(timeUs).take());
    }

    void faultCleared(quint8 id) override
    {
        if (m_active.remove(id) && m_active.isEmpty())
            enter(fccu::Normal);
    }

private:
    void enter(fccu::State state)
    {
        m_state = state;
        sendState();
    }
    void sendState() { m_board.send(ModuleId::Fccu, fccu::StateReport, PayloadWriter().u8(m_state).take()); }

    void raise(const QString &text)
    {
        if (const auto source = decimal(text, 255))
            m_board.detect(static_cast<quint8>(*source));
        else
            m_board.say(QStringLiteral("a fault source is a number from 0 to 255"));
    }

    void setState(const QString &text)
    {
        if (const auto state = decimal(text, fccu::Fault))
            enter(static_cast<fccu::State>(*state));
        else
            m_board.say(QStringLiteral("a state is a number from 0 to 3"));
    }

    Board &m_board;
    QSet<quint8> m_active;
    fccu::State m_state = fccu::Normal;
};

} // namespace

std::unique_ptr<Unit> makeFaultCollection(Board &board)
{
    return std::make_unique<FaultCollection>(board);
}

} // namespace simulator
