// SPDX-License-Identifier: MIT
#include "protocol/cmu.h"

#include "protocol/frame.h"
#include "protocol/payload.h"

#include <algorithm>
#include <iterator>

namespace protocol::cmu {

namespace {

constexpr const char *descriptions[] = {
    "Description: Higher than CMU%1 reference frequency limit\r\n",
    "Description: Lower than CMU%1 reference frequency limit\r\n",
    "Description: CMU%1 clock loss\r\n",
};

} // namespace

Monitor decodeMonitor(const QByteArray &payload)
{
    const PayloadReader read(payload);
    const quint8 flags = read.u8(0);
    return {static_cast<quint8>(flags >> 4),
            (flags & 4) != 0,
            (flags & 2) != 0,
            (flags & 1) != 0,
            read.u8(1),
            read.u8(2),
            read.u8(3)};
}

ClockStatus decodeClock(const QByteArray &payload)
{
    const PayloadReader read(payload);
    const quint8 flags = read.u8(0);
    return {(flags & 0x80) != 0,
            (flags & 0x40) != 0,
            (flags & 0x20) != 0,
            (flags & 0x10) != 0,
            (flags & 0x08) != 0,
            static_cast<quint8>(flags & 7),
            static_cast<float>(read.u24be(1)) / 1000000.0F};
}

FaultRecord decodeFaultRecord(const QByteArray &payload, quint32 length)
{
    const PayloadReader read(payload);
    FaultRecord record;
    record.count = read.u8(0);
    const int end = static_cast<int>(std::min<quint32>(length, kMaxPayloadSize));
    for (int at = 1; at < end; ++at)
        record.entries.push_back({static_cast<quint8>(read.u8(at) >> 4), static_cast<quint8>(read.u8(at) & 0x0F)});
    return record;
}

QString clockSourceName(quint8 code)
{
    switch (code) { // 3 is no source: there is none between the two loops
    case 0:
        return QStringLiteral("IRC_CLK");
    case 1:
        return QStringLiteral("XOSC_CLK");
    case 2:
        return QStringLiteral("PLL0_PHI_CLK");
    case 4:
        return QStringLiteral("PLL1_PHI_CLK");
    default:
        return QStringLiteral("Error");
    }
}

QStringList describe(const FaultRecord &record)
{
    QStringList lines = {QStringLiteral("Fault number: %1 \r").arg(record.count)};
    int number = 0;
    for (const FaultEntry &entry : record.entries) {
        lines.append(QStringLiteral("Fault %1 ").arg(++number));
        lines.append(QStringLiteral("CMU ID: %1").arg(entry.monitor));
        if (entry.kind < std::size(descriptions))
            lines.append(QString::fromLatin1(descriptions[entry.kind]).arg(entry.monitor));
    }
    return lines;
}

QString enableCommand(int monitor, bool on)
{
    return QStringLiteral("cmu %1 %2").arg(on ? 13 : 14).arg(monitor);
}

QString limitCommand(const QString &selected, int upper, int lower)
{
    return selected + QStringLiteral(" %1 %2").arg(upper).arg(lower);
}

QString injectCommand(int fault)
{
    return QStringLiteral("inject 5 %1").arg(fault);
}

} // namespace protocol::cmu
