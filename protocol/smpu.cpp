// SPDX-License-Identifier: MIT
#include "protocol/smpu.h"

#include "protocol/hextext.h"

namespace protocol::smpu {

Region decodeRegion(const QByteArray &payload)
{
    return decode<Region>(payload);
}

std::vector<Fault> decodeFaults(const QByteArray &payload)
{
    return decode<FaultRecord>(payload).faults;
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
