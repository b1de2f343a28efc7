// SPDX-License-Identifier: MIT
#include "protocol/spt.h"

#include "protocol/payload.h"

namespace protocol::spt {

quint32 decodeFrameCount(const QByteArray &payload)
{
    return PayloadReader(payload).u32be(0);
}

FaultRecord decodeFaultRecord(const QByteArray &payload)
{
    const PayloadReader read(payload);
    FaultRecord record;
    record.count = read.u8(0);
    for (int at = 1; at + 4 <= read.size(); at += 4)
        record.codes.push_back(read.u32be(at));
    return record;
}

QStringList describe(const FaultRecord &record)
{
    QStringList lines = {QStringLiteral("Fault number: %1\r\n").arg(record.count)};
    int number = 0;
    for (const quint32 code : record.codes)
        lines << QStringLiteral("Fault %1\r\nFault code: %2\r\n").arg(++number).arg(code);
    return lines;
}

} // namespace protocol::spt
