// SPDX-License-Identifier: MIT
#include "protocol/spt.h"

namespace protocol::spt {

quint32 decodeFrameCount(const QByteArray &payload)
{
    return decode<FrameCount>(payload).count;
}

FaultRecord decodeFaultRecord(const QByteArray &payload)
{
    return decode<FaultRecord>(payload);
}

QStringList describe(const FaultRecord &record)
{
    QStringList lines = {QStringLiteral("Fault number: %1\r\n").arg(record.count)};
    int number = 0;
    for (const Fault &fault : record.faults)
        lines << QStringLiteral("Fault %1\r\nFault code: %2\r\n").arg(++number).arg(fault.code);
    return lines;
}

} // namespace protocol::spt
