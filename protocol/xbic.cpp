// SPDX-License-Identifier: MIT
#include "protocol/xbic.h"

namespace protocol::xbic {

quint8 decodeEnables(const QByteArray &payload)
{
    return decode<Enables>(payload).mask;
}

std::vector<Fault> decodeFaults(const QByteArray &payload)
{
    return decode<FaultRecord>(payload).faults;
}

QString checkerName(quint8 checker)
{
    return QStringLiteral("XBIC%1").arg(checker);
}

QStringList describe(const std::vector<Fault> &faults)
{
    QStringList lines = {QStringLiteral("Fault Number: %1\r\n").arg(faults.size())};
    int number = 0;
    for (const Fault &fault : faults) {
        lines << QStringLiteral("Fault %1:").arg(++number) << QStringLiteral("Description:")
              << QStringLiteral("Master Port ID: M%1  ").arg(fault.master)
              << QStringLiteral("Slave Port ID: S%1").arg(fault.slave)
              << QStringLiteral("Syndrome: 0x%1h").arg(fault.syndrome, 2, 16, QLatin1Char('0'))
              << QStringLiteral("Error Address: 0x%1h\r\n").arg(fault.address, 0, 16);
    }
    return lines;
}

QString enableCommand(int checker, bool on)
{
    return QStringLiteral("xbic %1 %2").arg(on ? 1 : 2).arg(checker);
}

QString injectCommand(int checker)
{
    return QStringLiteral("inject 7 %1").arg(checker + 1);
}

} // namespace protocol::xbic
