// SPDX-License-Identifier: MIT
// Self-test control: the results of the offline self-tests, reported after each restart.
#include "protocol/bist.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <bitset>

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace bist = protocol::bist;

using Partitions = std::bitset<bist::kLbistCount>; // bit 0: partition 1
using Cuts = std::bitset<bist::kMbistShown>;       // bit 0: memory cut 1

constexpr quint8 kCriticalFault = 6;
constexpr quint8 kNonCriticalFault = 7;
constexpr int kEvaluationMs = 1000; // from the restart until the firmware has looked at the results

// The first partition is the most significant bit.
unsigned byteOf(const Partitions &partitions)
{
    unsigned byte = 0;
    for (std::size_t i = 0; i < partitions.size(); ++i)
        byte |= partitions[i] ? 0x80U >> i : 0;
    return byte;
}

// A 96-bit number, most significant byte first; the first cut is the least significant bit.
QByteArray bytesOf(const Cuts &cuts)
{
    QByteArray bytes(bist::kMbistCount / 8, '\0');
    for (int i = 0; i < bist::kMbistShown; ++i) {
        const int at = static_cast<int>(bytes.size()) - 1 - i / 8;
        if (cuts[static_cast<std::size_t>(i)])
            bytes[at] = static_cast<char>(bytes[at] | 1 << i % 8);
    }
    return bytes;
}

class SelfTest : public Unit
{
public:
    explicit SelfTest(Board &board) : m_board(board)
    {
        board.addCommands({
            {"sick lbist", "<1-8>", "a logic partition fails in the next self-test",
             [this](const auto &a) { breakOne(m_brokenLogic, a[0]); }},
            {"sick mbist", "<1-92>", "a memory cut fails in the next self-test",
             [this](const auto &a) { breakOne(m_brokenCuts, a[0]); }},
        });
    }

    QString name() const override { return QStringLiteral("stcu"); }
    // The tests run while the chip is in a destructive or power-on reset; a functional one keeps their results.
    void reset(ResetKind kind) override
    {
        m_ran = kind != ResetKind::Functional;
        if (!m_ran)
            return;
        ++m_runs;
        m_failedLogic = m_brokenLogic;
        m_failedCuts = m_brokenCuts;
    }
    void announce() override
    {
        const QByteArray executed = bytesOf(Cuts().set());
        m_board.send(ModuleId::Bist, bist::ResultReport,
                     PayloadWriter()
                         .u8(0) // unused
                         .u8(byteOf(Partitions().set()))
                         .u8(byteOf(~m_failedLogic))
                         .bytes(executed)
                         .bytes(bytesOf(~m_failedCuts))
                         .take());
        if (m_ran)
            m_board.after(kEvaluationMs, [this] { evaluate(); });
    }
    void heal() override
    {
        m_brokenLogic.reset();
        m_brokenCuts.reset();
    }
    QString status() const override
    {
        return QStringLiteral("%1 runs, %2 of 8 logic partitions and %3 of 92 memory cuts passed")
            .arg(m_runs)
            .arg((~m_failedLogic).count())
            .arg((~m_failedCuts).count());
    }

private:
    template <std::size_t count> void breakOne(std::bitset<count> &broken, const QString &text)
    {
        const auto number = decimal(text, count);
        if (number && *number > 0)
            broken.set(*number - 1);
        else
            m_board.say(QStringLiteral("a number from 1 to %1").arg(count));
    }

    void evaluate()
    {
        if (m_failedLogic.any())
            m_board.detect(kCriticalFault);
        else if (m_failedCuts.any())
            m_board.detect(kNonCriticalFault);
    }

    Board &m_board;
    Partitions m_brokenLogic, m_failedLogic;
    Cuts m_brokenCuts, m_failedCuts;
    bool m_ran = false; // in the last reset
    int m_runs = 0;
};

} // namespace

std::unique_ptr<Unit> makeSelfTest(Board &board)
{
    return std::make_unique<SelfTest>(board);
}

} // namespace simulator
