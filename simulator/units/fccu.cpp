// SPDX-License-Identifier: MIT
// Fault collection and control unit: takes the faults of all units, and reacts.
#include "protocol/fccu.h"

#include "protocol/payload.h"
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

// Sources that mean more than a warning: the unit goes to FAULT at once.
constexpr quint8 severe[] = {6, 8, 10, 11, 12, 13, 14, 15, 17, 20, 23, 25, 26, 63, 64, 85, 86, 89, 90};
const char *stateName(fccu::State state)
{
    constexpr const char *names[] = {"CONFIG", "NORMAL", "ALARM", "FAULT"};
    return names[state];
}

class FaultCollection : public Unit
{
public:
    explicit FaultCollection(Board &board) : m_board(board)
    {
        board.addCommands({{"get 0", "", [this] { sendState(); }}});
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
    QString status() const override
    {
        return QStringLiteral("%1, %2 faults active").arg(QString::fromLatin1(stateName(m_state))).arg(m_active.size());
    }

    void faultReported(quint8 id) override
    {
        m_active.insert(id);
        const bool fault =
            m_state == fccu::Fault || std::find(std::begin(severe), std::end(severe), id) != std::end(severe);
        m_state = fault ? fccu::Fault : fccu::Alarm;
        sendState();
        m_board.send(ModuleId::Fccu, fccu::FaultReport, PayloadWriter().u8(id).f32be(detectionTime()).take());
    }

    void faultCleared(quint8 id) override
    {
        if (!m_active.remove(id) || !m_active.isEmpty())
            return;
        m_state = fccu::Normal;
        sendState();
    }

private:
    void sendState() { m_board.send(ModuleId::Fccu, fccu::StateReport, PayloadWriter().u8(m_state).take()); }

    // Microseconds: most mechanisms take some, a few take tens.
    float detectionTime() { return static_cast<float>(m_board.drawn(50, 4000)) / 100.0F; }

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
