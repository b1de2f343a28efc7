// SPDX-License-Identifier: MIT
// Checksum unit: the four hard-wired polynomials over blocks that the board owns.
#include "protocol/crc.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

#include <boost/crc.hpp>

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace crc = protocol::crc;

template <class Algorithm> quint32 checksum(const QByteArray &block)
{
    Algorithm algorithm;
    algorithm.process_bytes(block.constData(), static_cast<std::size_t>(block.size()));
    return static_cast<quint32>(algorithm.checksum());
}

// By polynomial. Check values over "123456789": 4B, 29B1, CBF43926, DF.
quint32 calculate(unsigned polynomial, const QByteArray &block)
{
    switch (polynomial) {
    case crc::Crc8Vda:
        return checksum<boost::crc_optimal<8, 0x1D, 0xFF, 0xFF, false, false>>(block);
    case crc::Crc16Ccitt:
        return checksum<boost::crc_ccitt_type>(block);
    case crc::Crc32Itu:
        return checksum<boost::crc_32_type>(block);
    default:
        return checksum<boost::crc_optimal<8, 0x2F, 0xFF, 0xFF, false, false>>(block);
    }
}

// A channel has a block of its own: the usual check string, a short run of flash, a longer one.
QByteArray blockOf(unsigned channel)
{
    if (channel == 0)
        return QByteArrayLiteral("123456789");
    QByteArray block;
    for (unsigned i = 0; i < (channel == 1 ? 64U : 1024U); ++i)
        block.append(static_cast<char>(i * 37 + channel));
    return block;
}

constexpr int kAnswerMs = 5;
constexpr int kSetUpCycles = 50;
constexpr int kBytesPerCycle = 4; // a word per cycle of the bus
constexpr int kCyclesPerUs = 120;

float timeOf(int bytes)
{
    const int cycles = kSetUpCycles + (bytes + kBytesPerCycle - 1) / kBytesPerCycle;
    return static_cast<float>(cycles) / kCyclesPerUs;
}

class ChecksumUnit : public Unit
{
public:
    explicit ChecksumUnit(Board &board) : m_board(board)
    {
        board.addCommands({
            {"crc", "<polynomial> <instance> <channel>", "checksum of a channel's block",
             [this](const auto &a) { run(a); }},
        });
    }

    QString name() const override { return QStringLiteral("crc"); }
    void reset(ResetKind) override { m_runs = 0; }
    QString status() const override { return QStringLiteral("%1 calculations").arg(m_runs); }

private:
    void run(const QStringList &arguments)
    {
        const auto polynomial = decimal(arguments[0], 4);
        const auto instance = decimal(arguments[1], 1);
        const auto channel = decimal(arguments[2], 2);
        if (!polynomial || *polynomial == 0 || !instance || !channel) {
            m_board.say(QStringLiteral("usage: crc <polynomial 1-4> <instance 0-1> <channel 0-2>"));
            return;
        }
        ++m_runs;
        m_board.after(kAnswerMs,
                      [this, polynomial = *polynomial - 1, channel = *channel] { send(polynomial, channel); });
    }

    void send(unsigned polynomial, unsigned channel)
    {
        const QByteArray block = blockOf(channel);
        m_board.send(ModuleId::Crc, crc::ResultReport,
                     PayloadWriter()
                         .u32be(static_cast<quint32>(block.size()))
                         .bytes(block)
                         .u32be(calculate(polynomial, block))
                         .f32be(timeOf(block.size()))
                         .take());
    }

    Board &m_board;
    int m_runs = 0;
};

} // namespace

std::unique_ptr<Unit> makeChecksumUnit(Board &board)
{
    return std::make_unique<ChecksumUnit>(board);
}

} // namespace simulator
