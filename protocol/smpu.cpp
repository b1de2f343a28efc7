// SPDX-License-Identifier: MIT
#include "protocol/smpu.h"

#include "protocol/hextext.h"
#include "protocol/payload.h"

namespace protocol::smpu {

namespace {

constexpr int kFaultSize = 5;

quint32 swappedHalves(const PayloadReader &read, int at)
{
    return static_cast<quint32>(read.u16be(at + 2)) << 16 | read.u16be(at);
}

} // namespace

Region decodeRegion(const QByteArray &payload)
{
    const PayloadReader read(payload);
    const unsigned first = read.u8(0);
    const unsigned second = read.u8(1);
    const auto rights = [](unsigned bits) { return static_cast<quint8>(bits & 3); };
    return {static_cast<quint8>(first >> 4),
            (first & 8) != 0,
            (first & 4) != 0,
            {rights(first), rights(second >> 6), rights(second >> 4)},
            (second & 8) != 0,
            swappedHalves(read, 2),
            swappedHalves(read, 6)};
}

std::vector<Fault> decodeFaults(const QByteArray &payload)
{
    const PayloadReader read(payload);
    std::vector<Fault> faults;
    for (int at = 0; at + kFaultSize <= read.size(); at += kFaultSize) {
        const unsigned flags = read.u8(at);
        faults.push_back({static_cast<quint8>(flags & 0x0F), (flags & 0x10) != 0, read.u32le(at + 1)});
    }
    return faults;
}

QString rightsText(quint8 rights)
{
    const auto word = [](bool allowed) { return allowed ? QStringLiteral("OK") : QStringLiteral("NO"); };
    return QStringLiteral("r:%1  w:%2").arg(word(rights & ReadOnly), word(rights & WriteOnly));
}

QStringList describe(const std::vector<Fault> &faults)
{
    QStringList lines = {QStringLiteral("Fault Number:%1\r\n").arg(faults.size())};
    int number = 0;
    for (const Fault &fault : faults) {
        lines << QStringLiteral("Fault %1").arg(++number) << QStringLiteral("Description:")
              << (fault.write ? QStringLiteral("Type: Write") : QStringLiteral("Type: Read"))
              << QStringLiteral("Master ID: %1").arg(fault.master)
              << QStringLiteral("Fault Address: %1\r\n").arg(hexText(fault.address, 8));
    }
    return lines;
}

QString injectCommand(int fault)
{
    return QStringLiteral("inject 6 %1").arg(fault);
}

} // namespace protocol::smpu
