// SPDX-License-Identifier: MIT
// Self-test control: the results of the offline self-tests, reported after each restart.
#include "protocol/bist.h"

#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

namespace simulator {

namespace {

using protocol::ModuleId;
namespace bist = protocol::bist;

// All 92 memory cuts of a 96-bit number, most significant byte first.
const QByteArray kAllCuts = QByteArray::fromHex("0FFFFFFFFFFFFFFFFFFFFFFF");

class SelfTest : public Unit
{
public:
    explicit SelfTest(Board &board) : m_board(board) {}

    QString name() const override { return QStringLiteral("stcu"); }
    // The tests run while the chip is in a destructive or power-on reset; a functional one keeps their results.
    void reset(ResetKind kind) override { m_runs += kind == ResetKind::Functional ? 0 : 1; }
    void announce() override
    {
        const QByteArray partitions = QByteArray::fromHex("00FFFF"); // unused, executed, passed
        m_board.send(ModuleId::Bist, bist::ResultReport, partitions + kAllCuts + kAllCuts);
    }
    QString status() const override
    {
        return QStringLiteral("%1 runs, 8 logic partitions and 92 memory cuts passed").arg(m_runs);
    }

private:
    Board &m_board;
    int m_runs = 0;
};

} // namespace

std::unique_ptr<Unit> makeSelfTest(Board &board)
{
    return std::make_unique<SelfTest>(board);
}

} // namespace simulator
